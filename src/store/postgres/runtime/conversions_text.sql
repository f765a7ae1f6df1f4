-- Conversions from texts. Each target has a number of its own for what doesn't fit, and the same text fails differently
-- by it:
--
--   '99999' to smallint          244 INT2          '9999999999' to int         248
--   'abc' to int                 245               'abc' to decimal(5,2)       8114
--   '1.5' to int                 245: no integer, though it is a number
CREATE OR REPLACE FUNCTION orven.trimmed(t text) RETURNS text
LANGUAGE sql IMMUTABLE PARALLEL SAFE RETURN btrim(t, E' \t\r\n');

CREATE OR REPLACE FUNCTION orven.ts_text(v text, "from" text, "to" text, style integer DEFAULT 0) RETURNS text
LANGUAGE sql IMMUTABLE PARALLEL SAFE RETURN orven.fitted_text(v, "to");

CREATE OR REPLACE FUNCTION orven.ts_store_text(v text, "from" text, "to" text, "table" text, "column" text)
RETURNS text LANGUAGE sql IMMUTABLE PARALLEL SAFE RETURN orven.stored_text(v, "to", "table", "column");

CREATE OR REPLACE FUNCTION orven.ts_bigint(v text, "from" text, "to" text, style integer DEFAULT 0) RETURNS bigint
LANGUAGE plpgsql IMMUTABLE PARALLEL SAFE AS $$
DECLARE
    digits text := orven.trimmed(v);
    number numeric;
BEGIN
    IF digits = '' THEN
        RETURN 0;
    END IF;
    IF "to" = 'bit' AND lower(digits) IN ('true', 'false') THEN
        RETURN (lower(digits) = 'true')::integer;
    END IF;
    IF digits !~ '^[-+]?[0-9]+$' THEN
        RETURN orven.refuse(0::bigint, v, kTextIsNoInteger, orven.type_message("from"), v, orven.type_message("to"));
    END IF;
    number := digits::numeric;
    IF "to" = 'bit' THEN
        RETURN (number <> 0)::integer;
    END IF;
    RETURN CASE "to"
        WHEN 'tinyint' THEN CASE WHEN number BETWEEN 0 AND 255 THEN number
                                 ELSE orven.refuse(0::numeric, v, kTextBeyondSmallInteger, orven.type_message("from"), v, 'INT1') END
        WHEN 'smallint' THEN CASE WHEN number BETWEEN -32768 AND 32767 THEN number
                                  ELSE orven.refuse(0::numeric, v, kTextBeyondSmallInteger, orven.type_message("from"), v, 'INT2') END
        WHEN 'int' THEN CASE WHEN number BETWEEN -2147483648 AND 2147483647 THEN number
                             ELSE orven.refuse(0::numeric, v, kTextBeyondInteger, orven.type_message("from"), v) END
        ELSE CASE WHEN number BETWEEN -9223372036854775808 AND 9223372036854775807 THEN number
                  ELSE orven.refuse(0::numeric, v, kArithmeticOverflow, 'expression', "to") END END;
END $$;

-- The number in a decimal or money type, or the failure with these arguments.
CREATE OR REPLACE FUNCTION orven.fitted_number(v numeric, "to" text, number integer,
                                               VARIADIC arguments text[] DEFAULT '{}')
RETURNS numeric LANGUAGE sql IMMUTABLE PARALLEL SAFE
RETURN orven.within(round(v, orven.type_scale("to")),
                    CASE "to" WHEN 'money' THEN 922337203685477.5807 + CASE WHEN v < 0 THEN 0.0001 ELSE 0 END
                              WHEN 'smallmoney' THEN 214748.3647 + CASE WHEN v < 0 THEN 0.0001 ELSE 0 END
                              ELSE orven.greatest_decimal(orven.type_precision("to"), orven.type_scale("to")) END,
                    number, VARIADIC arguments);

CREATE OR REPLACE FUNCTION orven.ts_numeric(v text, "from" text, "to" text, style integer DEFAULT 0) RETURNS numeric
LANGUAGE plpgsql IMMUTABLE PARALLEL SAFE AS $$
DECLARE
    digits text := orven.trimmed(v);
BEGIN
    IF "to" LIKE '%money' THEN
        IF digits = '' THEN
            RETURN 0;
        END IF;
        -- One sign of each currency, in the order in which they are looked for.
        FOR i IN 1 .. 5 LOOP
            digits := regexp_replace(digits, '^([-+]?)' || (ARRAY['[$]', '¥', '￥', '€', '£'])[i], '\1');
        END LOOP;
        digits := replace(digits, ',', '');
        IF digits !~ '^[-+]?([0-9]+[.]?[0-9]*|[.][0-9]+)$' THEN
            RETURN orven.refuse(0::numeric, v, kMoneySyntax);
        END IF;
        RETURN orven.fitted_number(digits::numeric, "to", 236);
    END IF;
    IF digits !~ '^[-+]?([0-9]+[.]?[0-9]*|[.][0-9]+)$' THEN
        RETURN orven.refuse(0::numeric, v, kConversionError, orven.type_message("from"), orven.type_message("to"));
    END IF;
    RETURN orven.fitted_number(digits::numeric, "to", 8115, orven.type_message("from"), 'numeric');
END $$;

-- As large an exponent as the text has needn't be calculated: the place of the first digit tells.
CREATE OR REPLACE FUNCTION orven.ts_float(v text, "from" text, "to" text, style integer DEFAULT 0)
RETURNS double precision LANGUAGE plpgsql IMMUTABLE PARALLEL SAFE AS $$
DECLARE
    digits text := orven.trimmed(v);
    parts text[];
    place numeric;
    number numeric;
BEGIN
    IF digits = '' THEN
        RETURN 0;
    END IF;
    -- What has no exponent and isn't long is no matter of size.
    IF octet_length(digits) < 38 AND digits ~ '^[-+]?([0-9]+[.]?[0-9]*|[.][0-9]+)$' THEN
        RETURN orven.fitted_float(digits::double precision, "to");
    END IF;
    parts := regexp_match(digits, '^([-+]?)(?:([0-9]+)[.]?([0-9]*)|[.]([0-9]+))(?:[eE]([-+]?[0-9]+))?$');
    IF parts IS NULL THEN
        IF v IS NULL THEN
            RETURN NULL;
        END IF;
        RETURN orven.refuse(0::double precision, v, kConversionError, orven.type_message("from"), orven.type_message("to"));
    END IF;
    -- Digits in front of the point, less the zeros that begin, with the exponent.
    number := (coalesce(parts[2], '') || coalesce(parts[3], parts[4], ''))::numeric;
    IF number = 0 THEN
        RETURN CASE WHEN parts[1] = '-' THEN '-0'::double precision ELSE 0 END;
    END IF;
    place := length(trim_scale(number)::text) - length(coalesce(parts[3], parts[4], ''))
             + coalesce(parts[5], '0')::numeric;
    IF place > 310 THEN
        RETURN orven.refuse(0::double precision, v, kArithmeticOverflow, 'expression', orven.type_message("to"));
    ELSIF place < -330 THEN
        RETURN 0;
    END IF;
    number := digits::numeric;
    IF abs(number) >= (CASE "to" WHEN 'real' THEN 3.4028234663852886e38 + 1e21 ELSE 1.797693134862315807e308 END) THEN
        RETURN orven.refuse(0::double precision, v, kArithmeticOverflow, 'expression', orven.type_message("to"));
    ELSIF abs(number) < 2.4703282292062328e-324 THEN
        RETURN 0;
    END IF;
    RETURN orven.fitted_float(number::double precision, "to");
END $$;

CREATE OR REPLACE FUNCTION orven.read_moment(v text, "from" text, kind text, style integer) RETURNS timestamp
LANGUAGE plpgsql IMMUTABLE PARALLEL SAFE AS $$
DECLARE
    result timestamp := orven.read_date(v, kind, style);
BEGIN
    RETURN CASE result WHEN '-infinity' THEN orven.refuse(result, v, kDateSyntax)
                       WHEN 'infinity' THEN orven.refuse(result, v, kDateOutOfRange, orven.type_message("from"), kind)
                       ELSE result END;
END $$;

CREATE OR REPLACE FUNCTION orven.ts_datetime(v text, "from" text, "to" text, style integer DEFAULT 0) RETURNS timestamp
LANGUAGE plpgsql IMMUTABLE PARALLEL SAFE AS $$
BEGIN
    RETURN orven.fitted_date(orven.read_moment(v, "from", "to", style), "to", orven.type_message("from"));
END $$;

CREATE OR REPLACE FUNCTION orven.ts_time(v text, "from" text, "to" text, style integer DEFAULT 0) RETURNS time
LANGUAGE sql IMMUTABLE PARALLEL SAFE RETURN orven.read_moment(v, "from", 'time', style)::time;

CREATE OR REPLACE FUNCTION orven.ts_binary(v text, "from" text, "to" text, style integer DEFAULT 0) RETURNS bytea
LANGUAGE sql IMMUTABLE PARALLEL SAFE RETURN orven.fitted_bytes(convert_to(v, 'UTF8'), "to");

CREATE OR REPLACE FUNCTION orven.ts_guid(v text, "from" text, "to" text, style integer DEFAULT 0) RETURNS text
LANGUAGE plpgsql IMMUTABLE PARALLEL SAFE AS $$
DECLARE
    bare text := orven.trimmed(v);
BEGIN
    bare := coalesce(substring(bare FROM '^[{](.{36})[}]$'), bare);
    IF bare !~ '^[0-9A-Fa-f]{8}(-[0-9A-Fa-f]{4}){3}-[0-9A-Fa-f]{12}' THEN
        RETURN orven.refuse(v, v, kNoIdentifier);
    END IF;
    RETURN upper(left(bare, 36));
END $$;
