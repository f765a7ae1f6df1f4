-- Failures by number, with their arguments in the detail behind one another; the client words them.
CREATE OR REPLACE FUNCTION orven.ts_fail(number integer, VARIADIC arguments text[] DEFAULT '{}') RETURNS text
LANGUAGE plpgsql VOLATILE PARALLEL SAFE AS $$
BEGIN
    RAISE EXCEPTION USING ERRCODE = 'OV000', MESSAGE = number::text,
        DETAIL = array_to_string(arguments, chr(31), '');
END $$;

-- The same where another type than a text is expected.
CREATE OR REPLACE FUNCTION orven.ts_fail_as(result anyelement, number integer, VARIADIC arguments text[] DEFAULT '{}')
RETURNS anyelement LANGUAGE plpgsql VOLATILE PARALLEL SAFE AS $$
BEGIN
    PERFORM orven.ts_fail(number, VARIADIC arguments);
    RETURN NULL;
END $$;

-- A failure in a branch of an expression, null for a null anchor. The planner calls functions of constants while it
-- simplifies, also in a branch that will not be taken: the anchor is what the branch depends on, so that both are
-- constant or neither. Hence it may be immutable, and what calls it stays one that is put in its call's place.
CREATE OR REPLACE FUNCTION orven.refuse(result anyelement, anchor anycompatible, number integer,
                                        VARIADIC arguments text[] DEFAULT '{}')
RETURNS anyelement LANGUAGE plpgsql IMMUTABLE PARALLEL SAFE COST 1 AS $$
BEGIN
    IF anchor IS NULL THEN
        RETURN NULL;
    END IF;
    RAISE EXCEPTION USING ERRCODE = 'OV000', MESSAGE = number::text,
        DETAIL = array_to_string(arguments, chr(31), '');
END $$;

-- A value that the planner must not ask for: a constant whose conversion may fail, in a branch that may never be taken.
CREATE OR REPLACE FUNCTION orven.ts_later(value anyelement) RETURNS anyelement
LANGUAGE plpgsql VOLATILE PARALLEL SAFE COST 1 AS $$
BEGIN
    RETURN value;
END $$;

-- The number, or the failure where it is greater, by its amount, than the greatest. What uses its argument more than
-- once is such a function of its own: SQL in the place of its call calculates the argument again for each use, and
-- where that is dear the planner doesn't put it there, and a call takes ten times as long as one of plpgsql.
CREATE OR REPLACE FUNCTION orven.within(v numeric, most numeric, number integer,
                                        VARIADIC arguments text[] DEFAULT '{}')
RETURNS numeric LANGUAGE plpgsql IMMUTABLE STRICT PARALLEL SAFE AS $$
BEGIN
    IF abs(v) > most THEN
        RETURN orven.refuse(v, v, number, VARIADIC arguments);
    END IF;
    RETURN v;
END $$;
