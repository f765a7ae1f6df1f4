-- Functions of texts. Positions count characters from 1, and the server's borders differ: a start below 1 counts the
-- places in front of the text, and a count beyond its end is no failure. Comparison ignores the case of ASCII letters,
-- which is what lower does under the collation "C".
--
--   substring('abc', 0, 2)    a
--   right('abc', 5)           abc
--   quotename('a]b')          [a]]b]
CREATE OR REPLACE FUNCTION orven.as_count(n bigint) RETURNS integer
LANGUAGE sql IMMUTABLE PARALLEL SAFE RETURN orven.bounded(n, -1000000000, 1000000000);

CREATE OR REPLACE FUNCTION orven.folded(t text) RETURNS text
LANGUAGE sql IMMUTABLE PARALLEL SAFE RETURN lower(t COLLATE "C");

CREATE OR REPLACE FUNCTION orven.ts_left(t text, n bigint) RETURNS text
LANGUAGE plpgsql IMMUTABLE STRICT PARALLEL SAFE AS $$
BEGIN
    RETURN CASE WHEN n < 0 THEN orven.refuse(t, n::text || t, kNegativeLength, 'left') ELSE left(t, orven.as_count(n)) END;
END $$;

CREATE OR REPLACE FUNCTION orven.ts_right(t text, n bigint) RETURNS text
LANGUAGE plpgsql IMMUTABLE STRICT PARALLEL SAFE AS $$
BEGIN
    RETURN CASE WHEN n < 0 THEN orven.refuse(t, n::text || t, kNegativeLength, 'right') ELSE right(t, orven.as_count(n)) END;
END $$;

CREATE OR REPLACE FUNCTION orven.ts_substring(t text, start bigint, n bigint) RETURNS text
LANGUAGE plpgsql IMMUTABLE STRICT PARALLEL SAFE AS $$
BEGIN
    RETURN CASE WHEN n < 0 THEN orven.refuse(t, start::text || n::text || t, kNegativeSubstringLength, 'substring')
                ELSE substr(t, orven.as_count(start), orven.as_count(n)) END;
END $$;

CREATE OR REPLACE FUNCTION orven.ts_replace(t text, old text, new text) RETURNS text
LANGUAGE plpgsql IMMUTABLE STRICT PARALLEL SAFE AS $$
BEGIN
    RETURN CASE WHEN old = '' THEN t || left(new, 0)
                WHEN lower(old COLLATE "C") = upper(old COLLATE "C") THEN replace(t, old, new)
                ELSE regexp_replace(t COLLATE "C", '***=' || old, replace(new, '\', '\\'), 'gi') END;
END $$;

CREATE OR REPLACE FUNCTION orven.ts_charindex(find text, t text) RETURNS integer
LANGUAGE plpgsql IMMUTABLE STRICT PARALLEL SAFE AS $$
BEGIN
    RETURN CASE WHEN find = '' THEN CASE WHEN t IS NOT NULL THEN 0 END
                ELSE strpos(lower(t COLLATE "C"), lower(find COLLATE "C")) END;
END $$;

CREATE OR REPLACE FUNCTION orven.ts_charindex(find text, t text, start bigint) RETURNS integer
LANGUAGE plpgsql IMMUTABLE STRICT PARALLEL SAFE AS $$
DECLARE
    skipped constant integer := greatest(orven.as_count(start) - 1, 0);
    place constant integer := strpos(lower(substr(t, skipped + 1) COLLATE "C"), lower(find COLLATE "C"));
BEGIN
    RETURN CASE WHEN find = '' OR place = 0 THEN 0 ELSE skipped + place END;
END $$;

CREATE OR REPLACE FUNCTION orven.ts_reverse(t text) RETURNS text
LANGUAGE sql IMMUTABLE PARALLEL SAFE RETURN reverse(t);

-- The server cuts at 8000.
CREATE OR REPLACE FUNCTION orven.ts_replicate(t text, n bigint) RETURNS text
LANGUAGE plpgsql IMMUTABLE STRICT PARALLEL SAFE AS $$
BEGIN
    IF n < 0 THEN
        RETURN NULL;
    END IF;
    RETURN CASE WHEN t = '' THEN t
                ELSE orven.code_page_prefix(
                         repeat(t, least(n, (7999 + octet_length(t)) / octet_length(t))::integer), 8000) END;
END $$;

CREATE OR REPLACE FUNCTION orven.ts_space(n bigint) RETURNS text
LANGUAGE sql IMMUTABLE PARALLEL SAFE RETURN CASE WHEN n >= 0 THEN repeat(' ', least(n, 8000)::integer) END;

CREATE OR REPLACE FUNCTION orven.ts_stuff(t text, start bigint, n bigint, new text) RETURNS text
LANGUAGE plpgsql IMMUTABLE PARALLEL SAFE AS $$
BEGIN
    RETURN CASE WHEN start >= 1 AND n >= 0 AND start <= length(t)
                THEN left(t, orven.as_count(start - 1)) || coalesce(new, '')
                     || substr(t, orven.as_count(start) + orven.as_count(n)) END;
END $$;

-- Decimals give way first: str(12345.6, 6, 1) is " 12346", and only str(12345.6, 4, 1) is "****".
CREATE OR REPLACE FUNCTION orven.ts_str(v double precision, length bigint DEFAULT 10, decimals bigint DEFAULT 0)
RETURNS text LANGUAGE plpgsql IMMUTABLE STRICT PARALLEL SAFE AS $$
DECLARE
    width constant integer := greatest(least(length, 8000), 0)::integer;
    behind integer := greatest(least(decimals, 16), 0)::integer;
    number numeric;
    written text;
BEGIN
    IF abs(v) < 1e300 THEN
        number := orven.decimal_of(v);
        written := round(number, behind)::text;
        IF octet_length(written) > width THEN
            behind := greatest(0, width - octet_length(trunc(round(number, behind))::text)
                                  - CASE WHEN written LIKE '-0%' THEN 1 ELSE 0 END - 1);
            written := round(number, behind)::text;
        END IF;
        IF octet_length(written) <= width THEN
            RETURN lpad(written, width);
        END IF;
    END IF;
    RETURN repeat('*', width);
END $$;

-- Beyond ASCII those letters of Latin, Greek, Cyrillic and the wide forms that have both cases, in one order.
CREATE OR REPLACE FUNCTION orven.capital_letters() RETURNS text
LANGUAGE sql IMMUTABLE PARALLEL SAFE
RETURN 'ÀÁÂÃÄÅÆÇÈÉÊËÌÍÎÏÐÑÒÓÔÕÖØÙÚÛÜÝÞ'
       'ΑΒΓΔΕΖΗΘΙΚΛΜΝΞΟΠΡΣΤΥΦΧΨΩ'
       'ЀЁЂЃЄЅІЇЈЉЊЋЌЍЎЏАБВГДЕЖЗИЙКЛМНОПРСТУФХЦЧШЩЪЫЬЭЮЯ'
       'ＡＢＣＤＥＦＧＨＩＪＫＬＭＮＯＰＱＲＳＴＵＶＷＸＹＺ';

CREATE OR REPLACE FUNCTION orven.small_letters() RETURNS text
LANGUAGE sql IMMUTABLE PARALLEL SAFE
RETURN 'àáâãäåæçèéêëìíîïðñòóôõöøùúûüýþ'
       'αβγδεζηθικλμνξοπρστυφχψω'
       'ѐёђѓєѕіїјљњћќѝўџабвгдежзийклмнопрстуфхцчшщъыьэюя'
       'ａｂｃｄｅｆｇｈｉｊｋｌｍｎｏｐｑｒｓｔｕｖｗｘｙｚ';

CREATE OR REPLACE FUNCTION orven.ts_lower(t text) RETURNS text
LANGUAGE plpgsql IMMUTABLE STRICT PARALLEL SAFE AS $$
BEGIN
    IF t COLLATE "C" !~ '[À-ÖØ-ÞΑ-ΡΣ-ΩЀ-ЯＡ-Ｚ]' THEN
        RETURN lower(t COLLATE "C");
    END IF;
    RETURN translate(lower(t COLLATE "C"), orven.capital_letters(), orven.small_letters());
END $$;

CREATE OR REPLACE FUNCTION orven.ts_upper(t text) RETURNS text
LANGUAGE plpgsql IMMUTABLE STRICT PARALLEL SAFE AS $$
BEGIN
    IF t COLLATE "C" !~ '[à-öø-þα-ρσ-ωа-џａ-ｚ]' THEN
        RETURN upper(t COLLATE "C");
    END IF;
    RETURN translate(upper(t COLLATE "C"), orven.small_letters(), orven.capital_letters());
END $$;

-- Beyond ASCII the code page would decide; '?' is what it gives for a character that it lacks.
CREATE OR REPLACE FUNCTION orven.ts_ascii(t text) RETURNS integer
LANGUAGE plpgsql IMMUTABLE STRICT PARALLEL SAFE AS $$
BEGIN
    RETURN CASE WHEN t <> '' THEN CASE WHEN ascii(t) < 128 THEN ascii(t) ELSE 63 END END;
END $$;

CREATE OR REPLACE FUNCTION orven.ts_unicode(t text) RETURNS integer
LANGUAGE plpgsql IMMUTABLE STRICT PARALLEL SAFE AS $$
BEGIN
    RETURN CASE WHEN t <> '' THEN ascii(t) END;
END $$;

-- A text here holds no zero and no half of a pair.
CREATE OR REPLACE FUNCTION orven.character_of(n bigint, most bigint) RETURNS text
LANGUAGE sql IMMUTABLE PARALLEL SAFE
RETURN CASE WHEN n = 0 THEN '' WHEN n BETWEEN 55296 AND 57343 AND most > 255 THEN U&'\FFFD'
            WHEN n BETWEEN 1 AND most THEN chr(n::integer) END;

CREATE OR REPLACE FUNCTION orven.ts_char(n bigint) RETURNS text
LANGUAGE sql IMMUTABLE PARALLEL SAFE RETURN orven.character_of(n, 255);

CREATE OR REPLACE FUNCTION orven.ts_nchar(n bigint) RETURNS text
LANGUAGE sql IMMUTABLE PARALLEL SAFE RETURN orven.character_of(n, 65535);

CREATE OR REPLACE FUNCTION orven.ts_quotename(t text, quote text DEFAULT '[') RETURNS text
LANGUAGE plpgsql IMMUTABLE STRICT PARALLEL SAFE AS $$
DECLARE
    pair text;
BEGIN
    IF octet_length(quote) <> 1 OR length(t) > 128 THEN
        RETURN NULL;
    END IF;
    FOREACH pair IN ARRAY ARRAY['[]', '''''', '""', '()', '<>', '{}', '``'] LOOP
        IF strpos(pair, quote) > 0 THEN
            RETURN left(pair, 1) || replace(t, right(pair, 1), repeat(right(pair, 1), 2)) || right(pair, 1);
        END IF;
    END LOOP;
    RETURN NULL;
END $$;

CREATE OR REPLACE FUNCTION orven.ts_concat(VARIADIC parts text[]) RETURNS text
LANGUAGE plpgsql IMMUTABLE PARALLEL SAFE AS $$
BEGIN
    RETURN array_to_string(parts, '');
END $$;

-- The server lets every sign alone pass: '-', '.' and '$' are numbers.
CREATE OR REPLACE FUNCTION orven.ts_isnumeric(t text) RETURNS integer
LANGUAGE plpgsql IMMUTABLE PARALLEL SAFE AS $$
BEGIN
    RETURN coalesce(
        btrim(t, E' \t\r\n') <> ''
            AND btrim(t, E' \t\r\n') ~ '^([-+]?|[-+]?[$¥￥€£]|[$¥￥€£][-+]?)([0-9][0-9,]*)?[.]?[0-9]*$'
        OR btrim(t, E' \t\r\n') ~ '^[-+]?([0-9][0-9,]*[.]?[0-9]*|[.][0-9]+)[eEdD][-+]?[0-9]+$', false)::integer;
END $$;

CREATE OR REPLACE FUNCTION orven.ts_isdate(t text) RETURNS integer
LANGUAGE plpgsql IMMUTABLE PARALLEL SAFE AS $$
DECLARE
    moment timestamp;
BEGIN
    IF t IS NULL OR btrim(t, E' \t\r\n') = '' THEN
        RETURN 0;
    END IF;
    moment := orven.read_date(t, 'datetime', 0);
    RETURN (isfinite(moment) AND moment >= timestamp '1753-01-01'
            AND orven.ticked(moment) < timestamp '10000-01-01')::integer;
END $$;

-- Two letters of one code count once, also across an h or w: Ashcraft is A261.
CREATE OR REPLACE FUNCTION orven.ts_soundex(t text) RETURNS text
LANGUAGE plpgsql IMMUTABLE STRICT PARALLEL SAFE AS $$
DECLARE
    letter text;
    code text;
    last text := '0';
    result text := '';
BEGIN
    FOREACH letter IN ARRAY string_to_array(substring(t FROM '^[A-Za-z]*'), NULL) LOOP
        code := translate(lower(letter), 'abcdefghijklmnopqrstuvwxyz', '01230120022455012623010202');
        IF result = '' THEN
            result := upper(letter);
        ELSIF code <> '0' AND code <> last THEN
            result := result || code;
        END IF;
        IF lower(letter) NOT IN ('h', 'w') THEN
            last := code;
        END IF;
        EXIT WHEN length(result) = 4;
    END LOOP;
    RETURN rpad(result, 4, '0');
END $$;

CREATE OR REPLACE FUNCTION orven.ts_difference(a text, b text) RETURNS integer
LANGUAGE plpgsql IMMUTABLE STRICT PARALLEL SAFE AS $$
DECLARE
    first constant text := orven.ts_soundex(a);
    second constant text := orven.ts_soundex(b);
BEGIN
    RETURN (SELECT count(*) FROM generate_series(1, 4) AS i WHERE substr(first, i, 1) = substr(second, i, 1));
END $$;

CREATE OR REPLACE FUNCTION orven.ts_newid() RETURNS text
LANGUAGE sql VOLATILE PARALLEL SAFE RETURN upper(gen_random_uuid()::text);

-- Bytes that the server would keep.
CREATE OR REPLACE FUNCTION orven.ts_datalength(v text, type text) RETURNS integer
LANGUAGE sql IMMUTABLE PARALLEL SAFE
RETURN CASE WHEN v IS NULL THEN NULL
            WHEN type = 'uniqueidentifier' THEN 16
            WHEN NOT orven.type_is_national(type) THEN orven.code_page_length(v)
            -- Two bytes a character, four for one beyond the basic plane.
            ELSE 2 * (length(v) + length(regexp_replace(v COLLATE "C", '[\u0001-\uffff]+', '', 'g'))) END;

CREATE OR REPLACE FUNCTION orven.ts_datalength(v bytea, type text) RETURNS integer
LANGUAGE sql IMMUTABLE PARALLEL SAFE RETURN octet_length(v);

CREATE OR REPLACE FUNCTION orven.type_bytes(type text) RETURNS integer
LANGUAGE sql IMMUTABLE PARALLEL SAFE
RETURN CASE WHEN type IN ('bit', 'tinyint') THEN 1
            WHEN type = 'smallint' THEN 2
            WHEN type = 'date' THEN 3
            WHEN type IN ('int', 'real', 'smallmoney', 'smalldatetime') THEN 4
            WHEN type = 'time' THEN 5
            WHEN type IN ('bigint', 'float', 'money', 'datetime') THEN 8
            WHEN orven.type_precision(type) <= 9 THEN 5
            WHEN orven.type_precision(type) <= 19 THEN 9
            WHEN orven.type_precision(type) <= 28 THEN 13 ELSE 17 END;

CREATE OR REPLACE FUNCTION orven.ts_datalength(v anynonarray, type text) RETURNS integer
LANGUAGE sql IMMUTABLE PARALLEL SAFE AS $$ SELECT CASE WHEN v IS NOT NULL THEN orven.type_bytes(type) END $$;
