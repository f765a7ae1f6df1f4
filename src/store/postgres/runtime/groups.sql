-- A group of texts that compare as equal shows its first one.
CREATE OR REPLACE FUNCTION orven.first_text(seen text, v text) RETURNS text
LANGUAGE sql IMMUTABLE STRICT PARALLEL SAFE RETURN seen;

CREATE OR REPLACE AGGREGATE orven.ts_first(text)
    (SFUNC = orven.first_text, STYPE = text, COMBINEFUNC = orven.first_text, PARALLEL = SAFE);
