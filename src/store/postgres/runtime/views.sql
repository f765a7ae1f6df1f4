-- Definitions under views. PostgreSQL binds a view when it is made and then refuses to drop what it reads; the dialect
-- binds it when it is read, so that a table under a view may lose a column, and a view may be dropped and made anew
-- while another reads it.
--
--   SELECT orven.define('titem', 'ALTER TABLE titem DROP COLUMN fnote')
--
-- The views that stand in the way are dropped and made again behind it. One that can't be made, since it reads what is
-- gone, is kept as a view of two columns: "orven.definition", whose comment is its definition, and "orven.rights", whose
-- comment is what was given on single columns; reading it fails.
-- mend_views tries such views once more, and is called when anything was added.

CREATE OR REPLACE FUNCTION orven.view_fails(view text) RETURNS text
LANGUAGE plpgsql VOLATILE AS $$
BEGIN
    RAISE EXCEPTION 'the view "%" reads what is not there any more', view USING ERRCODE = 'undefined_column';
END $$;

-- A column that isn't there any more has taken its rights along.
CREATE OR REPLACE FUNCTION orven.give(command text) RETURNS void
LANGUAGE plpgsql VOLATILE AS $$
BEGIN
    EXECUTE command;
EXCEPTION WHEN undefined_column THEN
    NULL;
END $$;

CREATE OR REPLACE FUNCTION orven.receiver(grantee oid) RETURNS text
LANGUAGE sql STABLE AS $$
    SELECT CASE grantee WHEN 0 THEN 'PUBLIC' ELSE grantee::regrole::text END
$$;

-- Statements that give what was given on an object, and behind a chr(31) what was on its columns; null for none.
CREATE OR REPLACE FUNCTION orven.rights_of(object oid) RETURNS text
LANGUAGE sql STABLE AS $$
    WITH given(columns, command) AS (
        SELECT '', format('GRANT %s ON %I TO %s', r.privilege_type, c.relname, orven.receiver(r.grantee))
                   || CASE WHEN r.is_grantable THEN ' WITH GRANT OPTION' ELSE '' END
        FROM pg_class c, aclexplode(c.relacl) r WHERE c.oid = object
        UNION ALL
        SELECT 'each', format('SELECT orven.give(%L)',
                              format('GRANT %s (%I) ON %I TO %s', r.privilege_type, a.attname, c.relname,
                                     orven.receiver(r.grantee))
                              || CASE WHEN r.is_grantable THEN ' WITH GRANT OPTION' ELSE '' END)
        FROM pg_class c JOIN pg_attribute a ON a.attrelid = c.oid, aclexplode(a.attacl) r WHERE c.oid = object
        UNION ALL
        SELECT 'each', col_description(object, a.attnum)
        FROM pg_attribute a WHERE a.attrelid = object AND a.attname = 'orven.rights'
    )
    SELECT coalesce(string_agg(command, '; ') FILTER (WHERE columns = ''), '') || chr(31)
           || coalesce(string_agg(command, '; ') FILTER (WHERE columns = 'each'), '')
    FROM given HAVING count(command) > 0
$$;

-- Gives a new view the rights of the one that it stands for, and no others: new objects may have some by themselves.
CREATE OR REPLACE FUNCTION orven.give_rights(view text, rights text) RETURNS void
LANGUAGE plpgsql VOLATILE AS $$
DECLARE
    receiver text;
BEGIN
    IF rights IS NULL THEN
        RETURN;
    END IF;
    FOR receiver IN
        SELECT DISTINCT orven.receiver(r.grantee) FROM pg_class c, aclexplode(c.relacl) r
        WHERE c.oid = to_regclass(quote_ident(view)) AND r.grantee <> c.relowner
    LOOP
        EXECUTE format('REVOKE ALL ON %I FROM %s', view, receiver);
    END LOOP;
    EXECUTE split_part(rights, chr(31), 1);
    EXECUTE split_part(rights, chr(31), 2);
END $$;

-- Makes a view with its comment and its rights, or what stands for it.
CREATE OR REPLACE FUNCTION orven.make_view(view text, definition text, comment text, rights text) RETURNS boolean
LANGUAGE plpgsql VOLATILE AS $$
DECLARE
    made boolean := true;
BEGIN
    BEGIN
        EXECUTE format('CREATE VIEW %I AS %s', view, definition);
    EXCEPTION WHEN syntax_error_or_access_rule_violation THEN
        made := false;
        EXECUTE format('CREATE VIEW %I AS SELECT orven.view_fails(%L) AS "orven.definition", '''' AS "orven.rights"',
                       view, view);
        EXECUTE format('COMMENT ON COLUMN %I."orven.definition" IS %L', view, definition);
        EXECUTE format('COMMENT ON COLUMN %I."orven.rights" IS %L', view, split_part(rights, chr(31), 2));
    END;
    EXECUTE format('COMMENT ON VIEW %I IS %L', view, comment);
    PERFORM orven.give_rights(view, rights);
    RETURN made;
END $$;

-- The views that read an object, those that others read first.
CREATE OR REPLACE FUNCTION orven.views_over(object regclass)
RETURNS TABLE (view text, definition text, comment text, rights text)
LANGUAGE sql STABLE AS $$
    WITH RECURSIVE reader(oid, depth) AS (
        SELECT w.ev_class, 1 FROM pg_depend d JOIN pg_rewrite w ON w.oid = d.objid
        WHERE d.classid = 'pg_rewrite'::regclass AND d.refclassid = 'pg_class'::regclass AND d.refobjid = object
              AND w.ev_class <> object
        UNION
        SELECT w.ev_class, r.depth + 1
        FROM reader r JOIN pg_depend d ON d.refobjid = r.oid JOIN pg_rewrite w ON w.oid = d.objid
        WHERE d.classid = 'pg_rewrite'::regclass AND d.refclassid = 'pg_class'::regclass AND w.ev_class <> r.oid
    )
    SELECT c.relname, pg_get_viewdef(c.oid), obj_description(c.oid, 'pg_class'), orven.rights_of(c.oid)
    FROM reader r JOIN pg_class c ON c.oid = r.oid
    WHERE c.relkind = 'v'
    GROUP BY c.oid, c.relname ORDER BY max(r.depth), c.relname
$$;

-- What is dropped and made anew among the commands keeps the rights on it.
CREATE OR REPLACE FUNCTION orven.define(object text, VARIADIC commands text[]) RETURNS void
LANGUAGE plpgsql VOLATILE AS $$
DECLARE
    before oid := to_regclass(quote_ident(object));
    own text := orven.rights_of(before);
    command text;
    views text[];
    definitions text[];
    comments text[];
    rights text[];
BEGIN
    BEGIN
        FOREACH command IN ARRAY commands LOOP
            EXECUTE command;
        END LOOP;
        IF to_regclass(quote_ident(object)) <> before THEN
            PERFORM orven.give_rights(object, own);
        END IF;
        RETURN;
    EXCEPTION WHEN dependent_objects_still_exist THEN
        NULL;
    END;
    SELECT array_agg(v.view), array_agg(v.definition), array_agg(v.comment), array_agg(v.rights)
    INTO views, definitions, comments, rights FROM orven.views_over(to_regclass(quote_ident(object))) v;
    FOR place IN REVERSE coalesce(array_length(views, 1), 0) .. 1 LOOP
        EXECUTE format('DROP VIEW %I', views[place]);
    END LOOP;
    FOREACH command IN ARRAY commands LOOP
        EXECUTE command;
    END LOOP;
    IF to_regclass(quote_ident(object)) <> before THEN
        PERFORM orven.give_rights(object, own);
    END IF;
    FOR place IN 1 .. coalesce(array_length(views, 1), 0) LOOP
        PERFORM orven.make_view(views[place], definitions[place], comments[place], rights[place]);
    END LOOP;
END $$;

-- A column goes only when no index, key or check of the table reads it; the store's own index goes with it.
CREATE OR REPLACE FUNCTION orven.refuse_use("table" text, "column" text) RETURNS void
LANGUAGE plpgsql VOLATILE AS $$
DECLARE
    reader record;
BEGIN
    FOR reader IN
        SELECT i.relname AS name, obj_description(i.oid, 'pg_class') AS declared, k.oid IS NOT NULL
               OR i.relname LIKE '%.constraint.%' AS is_key
        FROM pg_attribute a JOIN pg_depend d ON d.refobjid = a.attrelid AND d.refobjsubid = a.attnum
             JOIN pg_class c ON c.oid = a.attrelid
             LEFT JOIN pg_constraint k ON d.classid = 'pg_constraint'::regclass AND k.oid = d.objid
             JOIN pg_class i ON i.relkind = 'i'
                             AND i.oid = CASE WHEN k.oid IS NULL THEN d.objid ELSE k.conindid END
        WHERE a.attrelid = to_regclass(quote_ident("table")) AND a.attname = "column"
              AND d.classid IN ('pg_class'::regclass, 'pg_constraint'::regclass)
              AND i.relname <> c.relname || '.orven.' || a.attname
        UNION ALL
        SELECT k.conname, obj_description(k.oid, 'pg_constraint'), true
        FROM pg_constraint k JOIN pg_attribute a ON a.attrelid = k.conrelid AND a.attnum = ANY (k.conkey)
        WHERE k.contype = 'c' AND k.conrelid = to_regclass(quote_ident("table")) AND a.attname = "column"
    LOOP
        PERFORM orven.ts_fail(kDependsOnColumn, CASE WHEN reader.is_key THEN 'constraint' ELSE 'index' END,
                              coalesce(reader.declared, reader.name), "column");
    END LOOP;
END $$;

CREATE OR REPLACE FUNCTION orven.mend_views() RETURNS void
LANGUAGE plpgsql VOLATILE AS $$
DECLARE
    broken record;
    mended boolean;
BEGIN
    LOOP
        mended := false;
        FOR broken IN
            SELECT c.relname AS view, col_description(c.oid, a.attnum) AS definition,
                   obj_description(c.oid, 'pg_class') AS comment, orven.rights_of(c.oid) AS rights
            FROM pg_class c JOIN pg_attribute a ON a.attrelid = c.oid AND a.attname = 'orven.definition'
            WHERE c.relkind = 'v' AND c.relnamespace = to_regnamespace(current_schema())
        LOOP
            EXECUTE format('DROP VIEW %I', broken.view);
            mended := orven.make_view(broken.view, broken.definition, broken.comment, broken.rights) OR mended;
        END LOOP;
        EXIT WHEN NOT mended;
    END LOOP;
END $$;
