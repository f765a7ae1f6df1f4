-- Conversions from dates, times and binary contents.
--
--   convert(varchar(20), d, 120)       2026-01-02 00:00:00
--   convert(varchar(20), d, 112)       20260102
--   convert(varchar(8), d, 2)          26.01.02
--   1900-01-02 12:00 to float          1.5: days since 1900-01-01
--
-- to_char counts as stable, since its language may be asked for; with these forms nothing depends on the session.
CREATE OR REPLACE FUNCTION orven.day_text(v timestamp, style integer) RETURNS text
LANGUAGE sql STABLE PARALLEL SAFE
RETURN CASE style
    WHEN 1 THEN to_char(v, 'MM/DD/YY') WHEN 2 THEN to_char(v, 'YY.MM.DD') WHEN 3 THEN to_char(v, 'DD/MM/YY')
    WHEN 4 THEN to_char(v, 'DD.MM.YY') WHEN 5 THEN to_char(v, 'DD-MM-YY') WHEN 6 THEN to_char(v, 'DD Mon YY')
    WHEN 7 THEN to_char(v, 'Mon DD, YY') WHEN 10 THEN to_char(v, 'MM-DD-YY') WHEN 11 THEN to_char(v, 'YY/MM/DD')
    WHEN 12 THEN to_char(v, 'YYMMDD') WHEN 23 THEN to_char(v, 'YYYY-MM-DD')
    WHEN 101 THEN to_char(v, 'MM/DD/YYYY') WHEN 102 THEN to_char(v, 'YYYY.MM.DD')
    WHEN 103 THEN to_char(v, 'DD/MM/YYYY') WHEN 104 THEN to_char(v, 'DD.MM.YYYY')
    WHEN 105 THEN to_char(v, 'DD-MM-YYYY') WHEN 106 THEN to_char(v, 'DD Mon YYYY')
    WHEN 107 THEN to_char(v, 'Mon DD, YYYY') WHEN 110 THEN to_char(v, 'MM-DD-YYYY')
    WHEN 111 THEN to_char(v, 'YYYY/MM/DD') WHEN 112 THEN to_char(v, 'YYYYMMDD') END;

CREATE OR REPLACE FUNCTION orven.moment_text(v timestamp, style integer) RETURNS text
LANGUAGE sql STABLE PARALLEL SAFE
RETURN CASE
    -- The day and the hour have a blank in front where they have one digit.
    WHEN style IN (0, 100) THEN
        replace(to_char(v, 'Mon DD'), ' 0', '  ') || to_char(v, ' YYYY')
        || replace(to_char(v, '" "HH12:MIAM'), ' 0', '  ')
    WHEN style IN (9, 109) THEN
        replace(to_char(v, 'Mon DD'), ' 0', '  ') || to_char(v, ' YYYY')
        || replace(to_char(v, '" "HH12:MI:SS:MSAM'), ' 0', '  ')
    WHEN style IN (8, 24, 108) THEN to_char(v, 'HH24:MI:SS')
    WHEN style IN (13, 113) THEN to_char(v, 'DD Mon YYYY HH24:MI:SS:MS')
    WHEN style IN (14, 114) THEN to_char(v, 'HH24:MI:SS:MS')
    WHEN style IN (20, 120) THEN to_char(v, 'YYYY-MM-DD HH24:MI:SS')
    WHEN style IN (21, 25, 121) THEN to_char(v, 'YYYY-MM-DD HH24:MI:SS.MS')
    WHEN style = 22 THEN to_char(v, 'MM/DD/YY') || replace(to_char(v, '" "HH12:MI:SS AM'), ' 0', '  ')
    WHEN style IN (126, 127) THEN
        CASE WHEN date_trunc('second', v) = v THEN to_char(v, 'YYYY-MM-DD"T"HH24:MI:SS')
             ELSE to_char(v, 'YYYY-MM-DD"T"HH24:MI:SS.MS') END
    ELSE orven.refuse(null::text, v, kNoDateStyle, style::text, 'datetime') END;

CREATE OR REPLACE FUNCTION orven.date_text(v timestamp, "from" text, style integer) RETURNS text
LANGUAGE sql STABLE PARALLEL SAFE
RETURN CASE
    -- A style with a time gives a date without one its day alone.
    WHEN "from" = 'date' AND style IN (0, 20, 21, 25, 120, 121, 126, 127) THEN to_char(v, 'YYYY-MM-DD')
    WHEN "from" = 'time' AND style IN (0, 20, 21, 25, 121) THEN to_char(v, 'HH24:MI:SS.MS"0000"')
    WHEN style BETWEEN 1 AND 7 OR style BETWEEN 10 AND 12 OR style = 23 OR style BETWEEN 101 AND 107
         OR style BETWEEN 110 AND 112 THEN orven.day_text(v, style)
    ELSE orven.moment_text(v, style) END;

-- A text of ASCII cut and padded, with one use of it, so that the planner puts it in its place.
CREATE OR REPLACE FUNCTION orven.fitted_ascii(t text, type text) RETURNS text
LANGUAGE sql IMMUTABLE PARALLEL SAFE
RETURN left(t || repeat(' ', CASE WHEN orven.type_is_padded(type) THEN orven.type_length(type) ELSE 0 END),
            CASE WHEN orven.type_length(type) > 0 THEN orven.type_length(type) ELSE 8000 END);

CREATE OR REPLACE FUNCTION orven.ts_text(v timestamp, "from" text, "to" text, style integer DEFAULT 0) RETURNS text
LANGUAGE sql STABLE PARALLEL SAFE RETURN orven.fitted_ascii(orven.date_text(v, "from", style), "to");

CREATE OR REPLACE FUNCTION orven.ts_store_text(v timestamp, "from" text, "to" text, "table" text, "column" text)
RETURNS text LANGUAGE sql STABLE PARALLEL SAFE
RETURN orven.stored_text(CASE WHEN "from" = 'date' THEN orven.fitted_ascii(orven.date_text(v, "from", 0), "to")
                              ELSE orven.date_text(v, "from", 0) END, "to", "table", "column");

CREATE OR REPLACE FUNCTION orven.days_of(v timestamp) RETURNS double precision
LANGUAGE sql IMMUTABLE PARALLEL SAFE RETURN orven.milliseconds(v) / 86400000::double precision;

-- From noon on it is the next day.
CREATE OR REPLACE FUNCTION orven.ts_bigint(v timestamp, "from" text, "to" text, style integer DEFAULT 0)
RETURNS bigint LANGUAGE sql IMMUTABLE PARALLEL SAFE
RETURN CASE WHEN "from" IN ('date', 'time') THEN orven.refuse(0::bigint, v, kNoExplicitConversion, "from", "to")
            ELSE orven.ts_bigint(floor(orven.days_of(v) + 0.5)::bigint, 'int', "to") END;

CREATE OR REPLACE FUNCTION orven.ts_numeric(v timestamp, "from" text, "to" text, style integer DEFAULT 0)
RETURNS numeric LANGUAGE sql IMMUTABLE PARALLEL SAFE
RETURN CASE WHEN "from" IN ('date', 'time')
            THEN orven.refuse(0::numeric, v, kNoExplicitConversion, "from", orven.type_message("to"))
            ELSE orven.ts_numeric(orven.days_of(v), 'float', "to") END;

CREATE OR REPLACE FUNCTION orven.ts_float(v timestamp, "from" text, "to" text, style integer DEFAULT 0)
RETURNS double precision LANGUAGE sql IMMUTABLE PARALLEL SAFE
RETURN CASE WHEN "from" IN ('date', 'time') THEN orven.refuse(0::double precision, v, kNoExplicitConversion, "from", "to")
            ELSE orven.ts_float(orven.days_of(v), 'float', "to") END;

CREATE OR REPLACE FUNCTION orven.ts_datetime(v timestamp, "from" text, "to" text, style integer DEFAULT 0)
RETURNS timestamp LANGUAGE sql IMMUTABLE PARALLEL SAFE RETURN orven.fitted_date(v, "to", "from");

CREATE OR REPLACE FUNCTION orven.ts_time(v timestamp, "from" text, "to" text, style integer DEFAULT 0) RETURNS time
LANGUAGE sql IMMUTABLE PARALLEL SAFE RETURN v::time;

CREATE OR REPLACE FUNCTION orven.ts_binary(v timestamp, "from" text, "to" text, style integer DEFAULT 0)
RETURNS bytea LANGUAGE sql IMMUTABLE PARALLEL SAFE
RETURN orven.refuse(null::bytea, v, kNoExplicitConversion, "from", orven.type_message("to"));

-- From times, as moments of 1900-01-01.

CREATE OR REPLACE FUNCTION orven.ts_text(v time, "from" text, "to" text, style integer DEFAULT 0) RETURNS text
LANGUAGE sql STABLE PARALLEL SAFE RETURN orven.ts_text(orven.moment_of(v), 'time', "to", style);

CREATE OR REPLACE FUNCTION orven.ts_store_text(v time, "from" text, "to" text, "table" text, "column" text)
RETURNS text LANGUAGE sql STABLE PARALLEL SAFE
RETURN orven.fitted_ascii(orven.date_text(orven.moment_of(v), 'time', 0), "to");

CREATE OR REPLACE FUNCTION orven.ts_datetime(v time, "from" text, "to" text, style integer DEFAULT 0)
RETURNS timestamp LANGUAGE sql IMMUTABLE PARALLEL SAFE
RETURN orven.fitted_date(orven.moment_of(v), "to", 'time');

CREATE OR REPLACE FUNCTION orven.ts_time(v time, "from" text, "to" text, style integer DEFAULT 0) RETURNS time
LANGUAGE sql IMMUTABLE PARALLEL SAFE RETURN v;

CREATE OR REPLACE FUNCTION orven.ts_binary(v time, "from" text, "to" text, style integer DEFAULT 0) RETURNS bytea
LANGUAGE sql IMMUTABLE PARALLEL SAFE
RETURN orven.refuse(null::bytea, v, kNoExplicitConversion, 'time', orven.type_message("to"));

-- From binary contents.

CREATE OR REPLACE FUNCTION orven.ts_text(v bytea, "from" text, "to" text, style integer DEFAULT 0) RETURNS text
LANGUAGE sql IMMUTABLE PARALLEL SAFE RETURN orven.fitted_text(convert_from(v, 'UTF8'), "to");

CREATE OR REPLACE FUNCTION orven.ts_store_text(v bytea, "from" text, "to" text, "table" text, "column" text)
RETURNS text LANGUAGE sql IMMUTABLE PARALLEL SAFE
RETURN orven.stored_text(convert_from(v, 'UTF8'), "to", "table", "column");

-- The last bytes count, the foremost of them first.
CREATE OR REPLACE FUNCTION orven.ts_bigint(v bytea, "from" text, "to" text, style integer DEFAULT 0) RETURNS bigint
LANGUAGE plpgsql IMMUTABLE STRICT PARALLEL SAFE AS $$
DECLARE
    size constant integer := CASE "to" WHEN 'int' THEN 4 WHEN 'smallint' THEN 2 WHEN 'tinyint' THEN 1 ELSE 8 END;
    bits constant text := right(repeat('0', 16) || encode(v, 'hex'), size * 2);
BEGIN
    RETURN CASE "to"
        WHEN 'int' THEN ('x' || bits)::bit(32)::integer
        WHEN 'smallint' THEN ('x' || repeat(CASE WHEN bits >= '8' THEN 'f' ELSE '0' END, 4) || bits)::bit(32)::integer
        WHEN 'tinyint' THEN ('x' || repeat('0', 6) || bits)::bit(32)::integer
        WHEN 'bit' THEN (bits <> repeat('0', 16))::integer
        ELSE ('x' || bits)::bit(64)::bigint END;
END $$;

CREATE OR REPLACE FUNCTION orven.ts_binary(v bytea, "from" text, "to" text, style integer DEFAULT 0) RETURNS bytea
LANGUAGE sql IMMUTABLE PARALLEL SAFE RETURN orven.fitted_bytes(v, "to");

CREATE OR REPLACE FUNCTION orven.ts_numeric(v bytea, "from" text, "to" text, style integer DEFAULT 0) RETURNS numeric
LANGUAGE sql IMMUTABLE PARALLEL SAFE
RETURN orven.refuse(0::numeric, v, kNoExplicitConversion, orven.type_message("from"), orven.type_message("to"));

CREATE OR REPLACE FUNCTION orven.ts_datetime(v bytea, "from" text, "to" text, style integer DEFAULT 0)
RETURNS timestamp LANGUAGE sql IMMUTABLE PARALLEL SAFE
RETURN orven.refuse(null::timestamp, v, kNoExplicitConversion, orven.type_message("from"), "to");

CREATE OR REPLACE FUNCTION orven.ts_time(v bytea, "from" text, "to" text, style integer DEFAULT 0) RETURNS time
LANGUAGE sql IMMUTABLE PARALLEL SAFE
RETURN orven.refuse(null::time, v, kNoExplicitConversion, orven.type_message("from"), "to");

CREATE OR REPLACE FUNCTION orven.ts_guid(v bytea, "from" text, "to" text, style integer DEFAULT 0) RETURNS text
LANGUAGE sql IMMUTABLE PARALLEL SAFE
RETURN orven.refuse(null::text, v, kNoExplicitConversion, orven.type_message("from"), "to");
