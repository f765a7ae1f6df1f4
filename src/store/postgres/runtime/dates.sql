-- Arithmetic on dates. Values are timestamps of whole milliseconds; a time alone counts as one of 1900-01-01.
--
-- Differences count the boundaries that are crossed and not the time that has passed:
--
--   datediff(day, '2026-01-01 23:59', '2026-01-02 00:00')    1
--   datediff(year, '2025-12-31', '2026-01-01')               1
--   dateadd(month, 1, '2026-01-31')                          2026-02-28, the last day that there is
CREATE OR REPLACE FUNCTION orven.moment_of(t time) RETURNS timestamp
LANGUAGE sql IMMUTABLE PARALLEL SAFE RETURN timestamp '1900-01-01' + t;

-- Milliseconds since 1900-01-01, negative before, and back.
CREATE OR REPLACE FUNCTION orven.milliseconds(v timestamp) RETURNS bigint
LANGUAGE sql IMMUTABLE PARALLEL SAFE
RETURN round(date_part('epoch', v) * 1000)::bigint + 2208988800000;

CREATE OR REPLACE FUNCTION orven.from_milliseconds(total bigint) RETURNS timestamp
LANGUAGE sql IMMUTABLE PARALLEL SAFE
RETURN date '1900-01-01' + div(total - ((total % 86400000) + 86400000) % 86400000, 86400000)::integer
       + (((total % 86400000) + 86400000) % 86400000) * interval '1 millisecond';

-- 300 ticks a second: milliseconds end in 0, 3 or 7.
CREATE OR REPLACE FUNCTION orven.ticked(v timestamp) RETURNS timestamp
LANGUAGE sql IMMUTABLE PARALLEL SAFE
RETURN CASE WHEN date_trunc('second', v) = v THEN v
            ELSE date_trunc('second', v)
                 + ((floor(date_part('milliseconds', v))::integer % 1000 * 3 + 5) / 10 * 10 + 1) / 3
                   * interval '1 millisecond' END;

-- Half a minute rounds up from 29.999 seconds on.
CREATE OR REPLACE FUNCTION orven.minuted(v timestamp) RETURNS timestamp
LANGUAGE sql IMMUTABLE PARALLEL SAFE RETURN date_trunc('minute', v + interval '30.001 seconds');

-- A date brought into its type; "from" is the name in the message.
CREATE OR REPLACE FUNCTION orven.fitted_date(v timestamp, kind text, "from" text) RETURNS timestamp
LANGUAGE plpgsql IMMUTABLE STRICT PARALLEL SAFE AS $$
BEGIN
    RETURN CASE kind
        WHEN 'date' THEN date_trunc('day', v)
        WHEN 'smalldatetime' THEN
            CASE WHEN orven.minuted(v) < timestamp '1900-01-01' OR orven.minuted(v) >= timestamp '2079-06-07'
                 THEN orven.refuse(v, v, kDateOutOfRange, "from", kind) ELSE orven.minuted(v) END
        ELSE CASE WHEN v < timestamp '1753-01-01' OR orven.ticked(v) >= timestamp '10000-01-01'
                  THEN orven.refuse(v, v, kDateOutOfRange, "from", 'datetime') ELSE orven.ticked(v) END END;
END $$;

-- One moment for the whole of a statement, in the session's zone.
CREATE OR REPLACE FUNCTION orven.ts_getdate() RETURNS timestamp
LANGUAGE sql STABLE PARALLEL SAFE
RETURN orven.ticked(date_trunc('milliseconds', statement_timestamp()::timestamp));

CREATE OR REPLACE FUNCTION orven.ts_getutcdate() RETURNS timestamp
LANGUAGE sql STABLE PARALLEL SAFE
RETURN orven.ticked(date_trunc('milliseconds', statement_timestamp() AT TIME ZONE 'UTC'));

-- The length of a part in milliseconds; null for parts of no fixed length.
CREATE OR REPLACE FUNCTION orven.part_length(part text) RETURNS bigint
LANGUAGE sql IMMUTABLE PARALLEL SAFE
RETURN CASE part WHEN 'week' THEN 604800000 WHEN 'day' THEN 86400000 WHEN 'dayofyear' THEN 86400000
                 WHEN 'weekday' THEN 86400000 WHEN 'hour' THEN 3600000 WHEN 'minute' THEN 60000
                 WHEN 'second' THEN 1000 WHEN 'millisecond' THEN 1 END::bigint;

CREATE OR REPLACE FUNCTION orven.moved_date(part text, n bigint, v timestamp) RETURNS timestamp
LANGUAGE plpgsql IMMUTABLE STRICT PARALLEL SAFE COST 1 AS $$
DECLARE
    months constant bigint := CASE part WHEN 'year' THEN 12 WHEN 'quarter' THEN 3 WHEN 'month' THEN 1 END;
    -- Nothing lies further apart than the first and the last day.
    most constant bigint := coalesce(120000 / months, 10000 * 366 * 86400000::bigint / orven.part_length(part));
    result timestamp;
BEGIN
    -- The server takes the count as an int.
    IF n > 2147483647 OR n < -2147483648 THEN
        RETURN orven.refuse(v, v, kArithmeticOverflow, 'expression', 'int');
    END IF;
    IF abs(n) > most THEN
        RETURN orven.refuse(v, v, kDateAddOverflow, 'datetime');
    END IF;
    IF months IS NOT NULL THEN
        result := v + make_interval(months => (n * months)::integer);
    ELSE
        result := orven.from_milliseconds(orven.milliseconds(v) + n * orven.part_length(part));
    END IF;
    IF result < timestamp '1753-01-01' OR result >= timestamp '10000-01-01' THEN
        RETURN orven.refuse(v, v, kDateAddOverflow, 'datetime');
    END IF;
    RETURN result;
END $$;

CREATE OR REPLACE FUNCTION orven.part_interval(part text) RETURNS interval
LANGUAGE sql IMMUTABLE PARALLEL SAFE
RETURN CASE part WHEN 'year' THEN interval '1 year' WHEN 'quarter' THEN interval '3 months'
                 WHEN 'month' THEN interval '1 month' WHEN 'week' THEN interval '7 days'
                 WHEN 'hour' THEN interval '1 hour' WHEN 'minute' THEN interval '1 minute'
                 WHEN 'second' THEN interval '1 second' WHEN 'day' THEN interval '1 day'
                 WHEN 'dayofyear' THEN interval '1 day' WHEN 'weekday' THEN interval '1 day' END;

-- How many of a part lie within 4000 years, so that adding them stays among the timestamps that there are.
CREATE OR REPLACE FUNCTION orven.part_count(part text) RETURNS bigint
LANGUAGE sql IMMUTABLE PARALLEL SAFE
RETURN CASE part WHEN 'year' THEN 4000 WHEN 'quarter' THEN 16000 WHEN 'month' THEN 48000 WHEN 'millisecond' THEN -1
                 ELSE least(4000 * 365 * 86400000::bigint / orven.part_length(part), 2147483647) END;

-- The usual case is a sum; what it leaves, and each failure, is for the careful way.
CREATE OR REPLACE FUNCTION orven.ts_dateadd(part text, n bigint, v timestamp) RETURNS timestamp
LANGUAGE plpgsql IMMUTABLE STRICT PARALLEL SAFE AS $$
BEGIN
    RETURN CASE WHEN n BETWEEN -orven.part_count(part) AND orven.part_count(part)
                     AND v + n * orven.part_interval(part) >= timestamp '1753-01-01'
                     AND v + n * orven.part_interval(part) < timestamp '10000-01-01'
                THEN v + n * orven.part_interval(part)
                ELSE orven.fitted_date(orven.moved_date(part, n, v), 'datetime', 'datetime') END;
END $$;

CREATE OR REPLACE FUNCTION orven.ts_dateadd(part text, n bigint, v time) RETURNS time
LANGUAGE sql IMMUTABLE PARALLEL SAFE RETURN orven.moved_date(part, n, orven.moment_of(v))::time;

CREATE OR REPLACE FUNCTION orven.date_distance(part text, "from" timestamp, "to" timestamp) RETURNS bigint
LANGUAGE plpgsql IMMUTABLE STRICT PARALLEL SAFE AS $$
BEGIN
    RETURN CASE part
        WHEN 'year' THEN date_part('year', "to") - date_part('year', "from")
        WHEN 'quarter' THEN date_part('year', "to") * 4 + date_part('quarter', "to")
                            - date_part('year', "from") * 4 - date_part('quarter', "from")
        WHEN 'month' THEN date_part('year', "to") * 12 + date_part('month', "to")
                          - date_part('year', "from") * 12 - date_part('month', "from")
        -- Weeks begin on Sunday; 0001-01-01 was a Monday.
        WHEN 'week' THEN ("to"::date - date '0001-01-01' + 1) / 7 - ("from"::date - date '0001-01-01' + 1) / 7
        WHEN 'day' THEN "to"::date - "from"::date
        WHEN 'dayofyear' THEN "to"::date - "from"::date
        WHEN 'weekday' THEN "to"::date - "from"::date
        WHEN 'hour' THEN date_part('epoch', date_trunc('hour', "to") - date_trunc('hour', "from")) / 3600
        WHEN 'minute' THEN date_part('epoch', date_trunc('minute', "to") - date_trunc('minute', "from")) / 60
        WHEN 'second' THEN date_part('epoch', date_trunc('second', "to") - date_trunc('second', "from"))
        WHEN 'millisecond' THEN orven.milliseconds("to") - orven.milliseconds("from") END::bigint;
END $$;

CREATE OR REPLACE FUNCTION orven.ts_datediff(part text, "from" timestamp, "to" timestamp) RETURNS integer
LANGUAGE plpgsql IMMUTABLE STRICT PARALLEL SAFE AS $$
BEGIN
    RETURN CASE WHEN orven.date_distance(part, "from", "to") NOT BETWEEN -2147483648 AND 2147483647
                THEN orven.refuse(0, orven.date_distance(part, "from", "to"), kDateDifferenceOverflow)
                ELSE orven.date_distance(part, "from", "to")::integer END;
END $$;

CREATE OR REPLACE FUNCTION orven.ts_datediff(part text, "from" time, "to" time) RETURNS integer
LANGUAGE sql IMMUTABLE PARALLEL SAFE RETURN orven.ts_datediff(part, orven.moment_of("from"), orven.moment_of("to"));

CREATE OR REPLACE FUNCTION orven.ts_datediff(part text, "from" time, "to" timestamp) RETURNS integer
LANGUAGE sql IMMUTABLE PARALLEL SAFE RETURN orven.ts_datediff(part, orven.moment_of("from"), "to");

CREATE OR REPLACE FUNCTION orven.ts_datediff(part text, "from" timestamp, "to" time) RETURNS integer
LANGUAGE sql IMMUTABLE PARALLEL SAFE RETURN orven.ts_datediff(part, "from", orven.moment_of("to"));

CREATE OR REPLACE FUNCTION orven.ts_datepart(part text, v timestamp) RETURNS integer
LANGUAGE plpgsql IMMUTABLE STRICT PARALLEL SAFE AS $$
BEGIN
    RETURN CASE part
        WHEN 'dayofyear' THEN date_part('doy', v)
        -- The week of the first of January is the first, and ends with its Saturday.
        WHEN 'week' THEN floor((date_part('doy', v) - 1 + date_part('dow', date_trunc('year', v))) / 7) + 1
        WHEN 'weekday' THEN date_part('dow', v) + 1
        WHEN 'second' THEN floor(date_part('second', v))
        WHEN 'millisecond' THEN floor(date_part('milliseconds', v))::integer % 1000
        ELSE date_part(part, v) END::integer;
END $$;

CREATE OR REPLACE FUNCTION orven.ts_datepart(part text, v time) RETURNS integer
LANGUAGE sql IMMUTABLE PARALLEL SAFE RETURN orven.ts_datepart(part, orven.moment_of(v));

CREATE OR REPLACE FUNCTION orven.ts_datename(part text, v timestamp) RETURNS text
LANGUAGE plpgsql IMMUTABLE STRICT PARALLEL SAFE AS $$
BEGIN
    RETURN CASE part
        WHEN 'month' THEN (ARRAY['January', 'February', 'March', 'April', 'May', 'June', 'July', 'August', 'September',
                                 'October', 'November', 'December'])[orven.ts_datepart('month', v)]
        WHEN 'weekday' THEN (ARRAY['Sunday', 'Monday', 'Tuesday', 'Wednesday', 'Thursday', 'Friday',
                                   'Saturday'])[orven.ts_datepart('weekday', v)]
        ELSE orven.ts_datepart(part, v)::text END;
END $$;

CREATE OR REPLACE FUNCTION orven.ts_datename(part text, v time) RETURNS text
LANGUAGE sql IMMUTABLE PARALLEL SAFE RETURN orven.ts_datename(part, orven.moment_of(v));

CREATE OR REPLACE FUNCTION orven.ts_eomonth(v timestamp) RETURNS timestamp
LANGUAGE sql IMMUTABLE PARALLEL SAFE RETURN date_trunc('month', v) + interval '1 month' - interval '1 day';

CREATE OR REPLACE FUNCTION orven.ts_eomonth(v timestamp, months bigint) RETURNS timestamp
LANGUAGE sql IMMUTABLE PARALLEL SAFE RETURN orven.ts_eomonth(orven.moved_date('month', months, v));

CREATE OR REPLACE FUNCTION orven.ts_datefromparts(year bigint, month bigint, day bigint) RETURNS timestamp
LANGUAGE plpgsql IMMUTABLE STRICT PARALLEL SAFE AS $$
BEGIN
    IF year NOT BETWEEN 1 AND 9999 OR month NOT BETWEEN 1 AND 12 OR day < 1
       OR day > orven.days_in_month(year::integer, month::integer) THEN
        RETURN orven.refuse(null::timestamp, year, kDateParts);
    END IF;
    RETURN make_timestamp(year::integer, month::integer, day::integer, 0, 0, 0);
END $$;
