-- The server's LIKE has sets, and lets blanks at the text's end be left over, since a char column pads with them.
--
--   'abc'   like 'A[a-c]%'              true
--   'abc  ' like '%c'                   true
--   'a%c'   like 'a!%c' escape '!'      true
--
-- A pattern becomes a regular expression, once where it is a constant. Case is folded for ASCII letters only.

-- The pattern as a regular expression over folded texts, without its anchors. A set that is not closed matches nothing.
CREATE OR REPLACE FUNCTION orven.like_body(pattern text, escape text) RETURNS text
LANGUAGE plpgsql IMMUTABLE PARALLEL SAFE AS $$
DECLARE
    characters constant text[] := string_to_array(pattern, NULL);
    size constant integer := coalesce(array_length(characters, 1), 0);
    at integer := 1;
    c text;
    low text;
    high text;
    negated boolean;
    first boolean;
    ranges text;
    result text := '';
BEGIN
    WHILE at <= size LOOP
        c := characters[at];
        at := at + 1;
        IF c = '%' AND escape IS DISTINCT FROM '%' THEN
            result := result || '.*';
        ELSIF c = escape AND at <= size THEN
            result := result || orven.like_literal(characters[at]);
            at := at + 1;
        ELSIF c = '_' THEN
            result := result || '.';
        ELSIF c <> '[' THEN
            result := result || orven.like_literal(c);
        ELSE
            negated := characters[at] = '^';
            IF negated THEN
                at := at + 1;
            END IF;
            ranges := '';
            -- A ] in front is a member of the set.
            first := true;
            WHILE at <= size AND (characters[at] <> ']' OR first) LOOP
                low := characters[at];
                at := at + 1;
                IF low = escape AND at <= size THEN
                    low := characters[at];
                    at := at + 1;
                END IF;
                first := false;
                high := low;
                IF at + 1 <= size AND characters[at] = '-' AND characters[at + 1] <> ']' THEN
                    high := characters[at + 1];
                    at := at + 2;
                END IF;
                IF ascii(orven.folded(low)) <= ascii(orven.folded(high)) THEN
                    ranges := ranges || orven.like_member(low) || '-' || orven.like_member(high);
                END IF;
            END LOOP;
            IF at > size THEN
                RETURN result || '(?!)';
            END IF;
            at := at + 1;
            result := result || CASE WHEN ranges = '' THEN CASE WHEN negated THEN '.' ELSE '(?!)' END
                                     WHEN negated THEN '[^' || ranges || ']' ELSE '[' || ranges || ']' END;
        END IF;
    END LOOP;
    RETURN result;
END $$;

CREATE OR REPLACE FUNCTION orven.like_literal(c text) RETURNS text
LANGUAGE sql IMMUTABLE PARALLEL SAFE
RETURN CASE WHEN c ~ '^[]\\[^$.|?*+(){}]$' THEN '\' || c ELSE lower(c COLLATE "C") END;

CREATE OR REPLACE FUNCTION orven.like_member(c text) RETURNS text
LANGUAGE sql IMMUTABLE PARALLEL SAFE
RETURN CASE WHEN c ~ '^[]\\[^-]$' THEN '\' || c ELSE lower(c COLLATE "C") END;

CREATE OR REPLACE FUNCTION orven.like_expression(pattern text, escape text) RETURNS text
LANGUAGE plpgsql IMMUTABLE PARALLEL SAFE AS $$
DECLARE
    result text;
BEGIN
    IF length(escape) <> 1 THEN
        RETURN orven.ts_fail(kEscapeCharacter, escape);
    END IF;
    IF pattern IS NULL THEN
        RETURN NULL;
    END IF;
    -- A % at an end is no end at all.
    result := '^' || orven.like_body(pattern, escape) || ' *$';
    RETURN regexp_replace(regexp_replace(result, '^\^[.][*]', ''), '[.][*] [*][$]$', '');
END $$;

CREATE OR REPLACE FUNCTION orven.ts_like(v text, pattern text) RETURNS boolean
LANGUAGE sql IMMUTABLE PARALLEL SAFE RETURN lower(v COLLATE "C") ~ orven.like_expression(pattern, NULL);

CREATE OR REPLACE FUNCTION orven.ts_like(v text, pattern text, escape text) RETURNS boolean
LANGUAGE sql IMMUTABLE PARALLEL SAFE
RETURN lower(v COLLATE "C") ~ CASE WHEN escape IS NOT NULL THEN orven.like_expression(pattern, escape) END;

CREATE OR REPLACE FUNCTION orven.ts_patindex(pattern text, t text) RETURNS integer
LANGUAGE plpgsql IMMUTABLE STRICT PARALLEL SAFE AS $$
DECLARE
    place integer;
BEGIN
    IF pattern LIKE '\%%' THEN
        place := regexp_instr(lower(t COLLATE "C"), '(?:' || orven.like_body(substr(pattern, 2), NULL) || ') *$');
    ELSE
        place := regexp_instr(lower(t COLLATE "C"), '^(?:' || orven.like_body(pattern, NULL) || ') *$');
    END IF;
    RETURN CASE WHEN place > length(t) THEN 0 ELSE place END;
END $$;
