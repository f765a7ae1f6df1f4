-- An int or a smallint would go to the functions of floats, which the server prefers: their own hand them to those of
-- bigint.
DO $do$
DECLARE
    type text;
    name text;
    result text;
BEGIN
    FOREACH type IN ARRAY ARRAY['smallint', 'integer'] LOOP
        FOR name, result IN VALUES ('ts_text', 'text'), ('ts_bigint', 'bigint'), ('ts_numeric', 'numeric'),
                ('ts_float', 'double precision'), ('ts_datetime', 'timestamp'), ('ts_time', 'time'),
                ('ts_binary', 'bytea') LOOP
            EXECUTE format('CREATE OR REPLACE FUNCTION orven.%I(v %s, "from" text, "to" text, style integer DEFAULT 0) '
                           'RETURNS %s LANGUAGE sql IMMUTABLE PARALLEL SAFE '
                           'RETURN orven.%1$I(v::bigint, "from", "to", style)', name, type, result);
        END LOOP;
    END LOOP;
    -- No number is too long for an assignment in another way than for a conversion.
    FOREACH type IN ARRAY ARRAY['smallint', 'integer', 'bigint', 'numeric', 'double precision'] LOOP
        EXECUTE format('CREATE OR REPLACE FUNCTION orven.ts_store_text(v %s, "from" text, "to" text, "table" text, '
                       '"column" text) RETURNS text LANGUAGE sql IMMUTABLE PARALLEL SAFE '
                       'RETURN orven.ts_text(v, "from", "to")', type);
    END LOOP;
END $do$;
