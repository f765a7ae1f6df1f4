-- Conversions from numbers.
--
--   decimal 2.9 to int                 2: cut              money $2.9 to int       3: rounded
--   int 12345 to varchar(3)            *                   int to decimal(5,2)     8115
--   1.50 to varchar(10)                1.50: its scale stays
--   1e10 to varchar(20)                1e+010              $1234.567, style 1      1,234.57
CREATE OR REPLACE FUNCTION orven.type_least(type text) RETURNS bigint
LANGUAGE sql IMMUTABLE PARALLEL SAFE
RETURN CASE type WHEN 'bit' THEN 0 WHEN 'tinyint' THEN 0 WHEN 'smallint' THEN -32768 WHEN 'int' THEN -2147483648
                 ELSE -9223372036854775808 END::bigint;

CREATE OR REPLACE FUNCTION orven.type_greatest(type text) RETURNS bigint
LANGUAGE sql IMMUTABLE PARALLEL SAFE
RETURN CASE type WHEN 'bit' THEN 1 WHEN 'tinyint' THEN 255 WHEN 'smallint' THEN 32767 WHEN 'int' THEN 2147483647
                 ELSE 9223372036854775807 END::bigint;

-- From integers.

CREATE OR REPLACE FUNCTION orven.ts_text(v bigint, "from" text, "to" text, style integer DEFAULT 0) RETURNS text
LANGUAGE sql IMMUTABLE PARALLEL SAFE RETURN orven.number_text(v::text, "from", "to");

CREATE OR REPLACE FUNCTION orven.within_integer(v bigint, low bigint, high bigint, type text) RETURNS bigint
LANGUAGE plpgsql IMMUTABLE STRICT PARALLEL SAFE AS $$
BEGIN
    IF v BETWEEN low AND high THEN
        RETURN v;
    ELSIF type = 'bit' THEN
        RETURN 1;
    ELSIF type IN ('tinyint', 'smallint') THEN
        RETURN orven.refuse(v, v, kIntegerOverflow, type, v::text);
    END IF;
    RETURN orven.refuse(v, v, kArithmeticOverflow, 'expression', type);
END $$;

CREATE OR REPLACE FUNCTION orven.ts_bigint(v bigint, "from" text, "to" text, style integer DEFAULT 0) RETURNS bigint
LANGUAGE sql IMMUTABLE PARALLEL SAFE
RETURN orven.within_integer(v, orven.type_least("to"), orven.type_greatest("to"), "to");

CREATE OR REPLACE FUNCTION orven.ts_numeric(v bigint, "from" text, "to" text, style integer DEFAULT 0) RETURNS numeric
LANGUAGE sql IMMUTABLE PARALLEL SAFE
RETURN orven.fitted_number(v::numeric, "to", 8115, orven.type_message("from"), orven.type_message("to"));

CREATE OR REPLACE FUNCTION orven.ts_float(v bigint, "from" text, "to" text, style integer DEFAULT 0)
RETURNS double precision LANGUAGE sql IMMUTABLE PARALLEL SAFE RETURN v::double precision;

CREATE OR REPLACE FUNCTION orven.ts_binary(v bigint, "from" text, "to" text, style integer DEFAULT 0) RETURNS bytea
LANGUAGE sql IMMUTABLE PARALLEL SAFE
RETURN orven.fitted_bytes(
    substring(int8send(v) FROM CASE "from" WHEN 'bigint' THEN 1 WHEN 'smallint' THEN 7 WHEN 'tinyint' THEN 8
                                           WHEN 'bit' THEN 8 ELSE 5 END), "to");

-- From decimals and money.

CREATE OR REPLACE FUNCTION orven.decimal_text(v numeric, "from" text, style integer) RETURNS text
LANGUAGE sql IMMUTABLE PARALLEL SAFE
RETURN CASE WHEN "from" LIKE 'decimal%' THEN round(v, orven.type_scale("from"))::text
            WHEN style IN (2, 126) THEN round(v, 4)::text
            WHEN style = 1 THEN regexp_replace(round(v, 2)::text, '([0-9])(?=([0-9]{3})+[.])', '\1,', 'g')
            ELSE round(v, 2)::text END;

CREATE OR REPLACE FUNCTION orven.ts_text(v numeric, "from" text, "to" text, style integer DEFAULT 0) RETURNS text
LANGUAGE sql IMMUTABLE PARALLEL SAFE
RETURN orven.number_text(orven.decimal_text(v, "from", style), "from", "to");

-- Money rounds to a whole number; a decimal is cut.
CREATE OR REPLACE FUNCTION orven.whole_number(v numeric, "from" text) RETURNS numeric
LANGUAGE sql IMMUTABLE PARALLEL SAFE
RETURN CASE WHEN "from" LIKE '%money' THEN round(round(v, 4)) ELSE trunc(round(v, orven.type_scale("from"))) END;

CREATE OR REPLACE FUNCTION orven.ts_bigint(v numeric, "from" text, "to" text, style integer DEFAULT 0) RETURNS bigint
LANGUAGE sql IMMUTABLE PARALLEL SAFE
RETURN CASE WHEN "to" = 'bit' THEN (v <> 0)::integer
            WHEN orven.whole_number(v, "from") < orven.type_least("to")
                 OR orven.whole_number(v, "from") > orven.type_greatest("to")
            THEN orven.refuse(0::bigint, v, kArithmeticOverflow, orven.type_message("from"), "to")
            ELSE orven.whole_number(v, "from")::bigint END;

CREATE OR REPLACE FUNCTION orven.ts_numeric(v numeric, "from" text, "to" text, style integer DEFAULT 0) RETURNS numeric
LANGUAGE sql IMMUTABLE PARALLEL SAFE
RETURN orven.fitted_number(v, "to", 8115, orven.type_message("from"), orven.type_message("to"));

CREATE OR REPLACE FUNCTION orven.fitted_float(v double precision, "to" text) RETURNS double precision
LANGUAGE plpgsql IMMUTABLE STRICT PARALLEL SAFE AS $$
BEGIN
    RETURN CASE WHEN "to" <> 'real' THEN v
                -- Closer to zero than any real.
                WHEN abs(v) <= 7.006492321624085e-46 THEN 0 * v ELSE v::real END;
END $$;

CREATE OR REPLACE FUNCTION orven.ts_float(v numeric, "from" text, "to" text, style integer DEFAULT 0)
RETURNS double precision LANGUAGE sql IMMUTABLE PARALLEL SAFE
RETURN orven.fitted_float(v::double precision, "to");

-- From floats. Their shortest text is what was meant; the server's own cast would keep fifteen digits.

CREATE OR REPLACE FUNCTION orven.decimal_of(v double precision) RETURNS numeric
LANGUAGE sql IMMUTABLE PARALLEL SAFE RETURN v::text::numeric;

-- Six digits, or by the style seven and more with an exponent, to which the server gives three digits.
CREATE OR REPLACE FUNCTION orven.float_text(v double precision, "from" text, style integer) RETURNS text
LANGUAGE plpgsql IMMUTABLE STRICT PARALLEL SAFE AS $$
DECLARE
    shortest constant text := v::text;
    decimals constant integer := CASE style WHEN 1 THEN 7 WHEN 2 THEN 15
                                            WHEN 3 THEN CASE "from" WHEN 'real' THEN 8 ELSE 16 END ELSE 5 END;
    written text;
    digits text;
    exponent integer;
BEGIN
    -- Up to six digits are the shortest text.
    IF decimals = 5 AND octet_length(shortest) < 8 AND (abs(v) BETWEEN 0.0001 AND 999999 OR v = 0) THEN
        RETURN shortest;
    END IF;
    written := ltrim(to_char(v, '9.' || repeat('9', decimals) || 'EEEE'));
    digits := split_part(written, 'e', 1);
    exponent := split_part(written, 'e', 2)::integer;
    IF decimals = 5 THEN
        IF exponent BETWEEN -4 AND 5 THEN
            RETURN trim_scale(written::numeric)::text;
        END IF;
        digits := rtrim(rtrim(digits, '0'), '.');
    END IF;
    RETURN digits || 'e' || CASE WHEN exponent < 0 THEN '-' ELSE '+' END || lpad(abs(exponent)::text, 3, '0');
END $$;

CREATE OR REPLACE FUNCTION orven.ts_text(v double precision, "from" text, "to" text, style integer DEFAULT 0)
RETURNS text LANGUAGE sql IMMUTABLE PARALLEL SAFE
RETURN orven.number_text(orven.float_text(v, "from", style), "from", "to");

-- As %.6f prints it; all digits of a float stand in front of the point from a quadrillion on.
CREATE OR REPLACE FUNCTION orven.with_six_decimals(v double precision) RETURNS text
LANGUAGE plpgsql IMMUTABLE STRICT PARALLEL SAFE AS $$
BEGIN
    IF abs(v) >= 1e15 THEN
        RETURN to_char(v, 'FM' || repeat('9', 309) || '0') || '.000000';
    END IF;
    RETURN round(orven.decimal_of(v), 6)::text;
END $$;

CREATE OR REPLACE FUNCTION orven.ts_bigint(v double precision, "from" text, "to" text, style integer DEFAULT 0)
RETURNS bigint LANGUAGE sql IMMUTABLE PARALLEL SAFE
RETURN CASE WHEN "to" = 'bit' THEN (v <> 0)::integer
            WHEN "to" = 'bigint' THEN
                CASE WHEN trunc(v) < -9223372036854775808::double precision
                          OR trunc(v) >= 9223372036854775808::double precision
                     THEN orven.refuse(0::bigint, v, kArithmeticOverflow, 'expression', "to") ELSE trunc(v)::bigint END
            WHEN trunc(v) < orven.type_least("to") OR trunc(v) > orven.type_greatest("to")
            THEN orven.refuse(0::bigint, v, kFloatOverflow, "to", orven.with_six_decimals(v))
            ELSE trunc(v)::bigint END;

CREATE OR REPLACE FUNCTION orven.ts_numeric(v double precision, "from" text, "to" text, style integer DEFAULT 0)
RETURNS numeric LANGUAGE sql IMMUTABLE PARALLEL SAFE
RETURN orven.fitted_number(orven.decimal_of(v), "to", 8115, orven.type_message("from"), orven.type_message("to"));

CREATE OR REPLACE FUNCTION orven.ts_float(v double precision, "from" text, "to" text, style integer DEFAULT 0)
RETURNS double precision LANGUAGE sql IMMUTABLE PARALLEL SAFE
RETURN CASE WHEN "to" = 'real' AND abs(v) > 3.4028234663852886e38
            THEN orven.refuse(v, v, kFloatOverflow, 'real', orven.with_six_decimals(v))
            ELSE orven.fitted_float(v, "to") END;

-- From numbers to dates: days and a fraction since 1900-01-01.
CREATE OR REPLACE FUNCTION orven.date_of_days(days double precision, "from" text, "to" text) RETURNS timestamp
LANGUAGE plpgsql IMMUTABLE STRICT PARALLEL SAFE AS $$
DECLARE
    moment timestamp;
BEGIN
    IF "to" IN ('date', 'time') THEN
        RETURN orven.refuse(moment, days, kTypeClash, orven.type_message("from"), "to");
    END IF;
    IF abs(days) < 3000000 THEN
        moment := orven.from_milliseconds((CASE WHEN days < 0 THEN -floor(0.5 - days * 86400000)
                                                ELSE floor(days * 86400000 + 0.5) END)::bigint);
        moment := CASE "to" WHEN 'smalldatetime' THEN orven.minuted(moment) ELSE orven.ticked(moment) END;
        IF moment >= (CASE "to" WHEN 'smalldatetime' THEN timestamp '1900-01-01' ELSE timestamp '1753-01-01' END)
           AND moment < (CASE "to" WHEN 'smalldatetime' THEN timestamp '2079-06-07'
                                   ELSE timestamp '10000-01-01' END) THEN
            RETURN moment;
        END IF;
    END IF;
    RETURN orven.refuse(moment, days, kArithmeticOverflow, 'expression', "to");
END $$;

CREATE OR REPLACE FUNCTION orven.ts_datetime(v bigint, "from" text, "to" text, style integer DEFAULT 0)
RETURNS timestamp LANGUAGE sql IMMUTABLE PARALLEL SAFE
RETURN orven.date_of_days(v::double precision, "from", "to");

CREATE OR REPLACE FUNCTION orven.ts_datetime(v numeric, "from" text, "to" text, style integer DEFAULT 0)
RETURNS timestamp LANGUAGE sql IMMUTABLE PARALLEL SAFE
RETURN orven.date_of_days(v::double precision, "from", "to");

CREATE OR REPLACE FUNCTION orven.ts_datetime(v double precision, "from" text, "to" text, style integer DEFAULT 0)
RETURNS timestamp LANGUAGE sql IMMUTABLE PARALLEL SAFE RETURN orven.date_of_days(v, "from", "to");

CREATE OR REPLACE FUNCTION orven.ts_time(v bigint, "from" text, "to" text, style integer DEFAULT 0) RETURNS time
LANGUAGE sql IMMUTABLE PARALLEL SAFE RETURN orven.date_of_days(v::double precision, "from", "to")::time;

CREATE OR REPLACE FUNCTION orven.ts_time(v numeric, "from" text, "to" text, style integer DEFAULT 0) RETURNS time
LANGUAGE sql IMMUTABLE PARALLEL SAFE RETURN orven.date_of_days(v::double precision, "from", "to")::time;

CREATE OR REPLACE FUNCTION orven.ts_time(v double precision, "from" text, "to" text, style integer DEFAULT 0)
RETURNS time LANGUAGE sql IMMUTABLE PARALLEL SAFE RETURN orven.date_of_days(v, "from", "to")::time;

-- Conversions that the types never allow.
CREATE OR REPLACE FUNCTION orven.ts_binary(v numeric, "from" text, "to" text, style integer DEFAULT 0) RETURNS bytea
LANGUAGE sql IMMUTABLE PARALLEL SAFE
RETURN orven.refuse(null::bytea, v, kNoExplicitConversion, orven.type_message("from"), orven.type_message("to"));

CREATE OR REPLACE FUNCTION orven.ts_binary(v double precision, "from" text, "to" text, style integer DEFAULT 0)
RETURNS bytea LANGUAGE sql IMMUTABLE PARALLEL SAFE
RETURN orven.refuse(null::bytea, v, kNoExplicitConversion, orven.type_message("from"), orven.type_message("to"));
