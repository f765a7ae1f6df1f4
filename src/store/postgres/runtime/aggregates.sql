-- Aggregates. ts_single stands around a query in the place of a value: its only row's value, null for none.
CREATE OR REPLACE FUNCTION orven.single_step(seen anyarray, v anyelement) RETURNS anyarray
LANGUAGE plpgsql IMMUTABLE PARALLEL SAFE AS $$
BEGIN
    IF seen IS NOT NULL THEN
        PERFORM orven.ts_fail(kSubqueryRows);
    END IF;
    RETURN ARRAY[v];
END $$;

CREATE OR REPLACE FUNCTION orven.single_value(seen anyarray) RETURNS anyelement
LANGUAGE sql IMMUTABLE PARALLEL SAFE AS $$ SELECT seen[1] $$;

CREATE OR REPLACE AGGREGATE orven.ts_single(anyelement)
    (SFUNC = orven.single_step, STYPE = anyarray, FINALFUNC = orven.single_value);

CREATE OR REPLACE AGGREGATE orven.ts_stdev(double precision)
    (SFUNC = float8_accum, STYPE = double precision[], INITCOND = '{0,0,0}', FINALFUNC = float8_stddev_samp,
     COMBINEFUNC = float8_combine, PARALLEL = SAFE);
CREATE OR REPLACE AGGREGATE orven.ts_stdevp(double precision)
    (SFUNC = float8_accum, STYPE = double precision[], INITCOND = '{0,0,0}', FINALFUNC = float8_stddev_pop,
     COMBINEFUNC = float8_combine, PARALLEL = SAFE);
CREATE OR REPLACE AGGREGATE orven.ts_var(double precision)
    (SFUNC = float8_accum, STYPE = double precision[], INITCOND = '{0,0,0}', FINALFUNC = float8_var_samp,
     COMBINEFUNC = float8_combine, PARALLEL = SAFE);
CREATE OR REPLACE AGGREGATE orven.ts_varp(double precision)
    (SFUNC = float8_accum, STYPE = double precision[], INITCOND = '{0,0,0}', FINALFUNC = float8_var_pop,
     COMBINEFUNC = float8_combine, PARALLEL = SAFE);

-- The least and the greatest text by ts_order; of two that are equal the first.
CREATE OR REPLACE FUNCTION orven.lesser_text(a text, b text) RETURNS text
LANGUAGE plpgsql IMMUTABLE STRICT PARALLEL SAFE AS $$
BEGIN
    RETURN CASE WHEN orven.ts_order(b) < orven.ts_order(a) THEN b ELSE a END;
END $$;

CREATE OR REPLACE FUNCTION orven.greater_text(a text, b text) RETURNS text
LANGUAGE plpgsql IMMUTABLE STRICT PARALLEL SAFE AS $$
BEGIN
    RETURN CASE WHEN orven.ts_order(b) > orven.ts_order(a) THEN b ELSE a END;
END $$;

CREATE OR REPLACE AGGREGATE orven.ts_min(text)
    (SFUNC = orven.lesser_text, STYPE = text, COMBINEFUNC = orven.lesser_text, PARALLEL = SAFE);
CREATE OR REPLACE AGGREGATE orven.ts_max(text)
    (SFUNC = orven.greater_text, STYPE = text, COMBINEFUNC = orven.greater_text, PARALLEL = SAFE);
