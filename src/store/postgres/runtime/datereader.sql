-- Reading dates as people write them: piece by piece (a word, a time, three numbers with a sign between, a bare
-- number), each settling what it can; what is still open is settled, and checked, at the end.
--
--   26.1.2               2026-01-02 00:00:00    the year first, where nothing tells
--   1/2/2026             2026-01-02 00:00:00    four digits are the year; then the month first,
--   1/2/2026, style 103  2026-02-01 00:00:00    unless a style says the day
--   20260102 3:04 PM     2026-01-02 15:04:00
--   2026-02-30           infinity: a date by its form, but none that there is
--   hello                -infinity: no date
CREATE OR REPLACE FUNCTION orven.days_in_month(year integer, month integer) RETURNS integer
LANGUAGE sql IMMUTABLE PARALLEL SAFE
RETURN CASE WHEN month = 2 THEN CASE WHEN (year % 4 = 0 AND year % 100 <> 0) OR year % 400 = 0 THEN 29 ELSE 28 END
            WHEN month IN (4, 6, 9, 11) THEN 30 ELSE 31 END;

-- The moment, or infinity where one of the parts is out of its range.
CREATE OR REPLACE FUNCTION orven.checked_moment(year integer, month integer, day integer, hour integer, minute integer,
                                                second integer, millisecond integer) RETURNS timestamp
LANGUAGE sql IMMUTABLE PARALLEL SAFE
RETURN CASE WHEN year < 1 OR month NOT BETWEEN 1 AND 12 OR day < 1 OR hour > 23 OR minute > 59 OR second > 59
            THEN 'infinity'::timestamp
            WHEN day > orven.days_in_month(year, month) THEN 'infinity'::timestamp
            ELSE make_timestamp(year, month, day, hour, minute, second + millisecond / 1000::double precision) END;

-- The server's cutoff: 49 is 2049, 50 is 1950.
CREATE OR REPLACE FUNCTION orven.century_of(year integer) RETURNS integer
LANGUAGE sql IMMUTABLE PARALLEL SAFE RETURN CASE WHEN year < 50 THEN 2000 + year ELSE 1900 + year END;

CREATE OR REPLACE FUNCTION orven.month_named(name text) RETURNS integer
LANGUAGE sql IMMUTABLE PARALLEL SAFE
RETURN coalesce(
    array_position(ARRAY['january', 'february', 'march', 'april', 'may', 'june', 'july', 'august', 'september',
                         'october', 'november', 'december'], name),
    array_position(ARRAY['jan', 'feb', 'mar', 'apr', 'may', 'jun', 'jul', 'aug', 'sep', 'oct', 'nov', 'dec'], name));

CREATE OR REPLACE FUNCTION orven.read_date(written text, kind text, style integer) RETURNS timestamp
LANGUAGE plpgsql IMMUTABLE STRICT PARALLEL SAFE AS $$
DECLARE
    no_date constant timestamp := '-infinity';
    out_of_range constant timestamp := CASE WHEN kind IN ('date', 'time') THEN '-infinity' ELSE 'infinity' END;
    rest text COLLATE "C" := btrim(written, E' \t\r\n');
    piece text;
    first text;
    second text;
    third text;
    half text;
    sign text;
    -- The parts, and which of them are settled.
    year integer := 1900;
    month integer := 1;
    day integer := 1;
    hours integer := 0;
    minutes integer := 0;
    seconds integer := 0;
    milliseconds integer := 0;
    have_day boolean := false;
    have_time boolean := false;
    named_month boolean := false;
    named text[] := '{}';
    result timestamp;
BEGIN
    -- What a column holds needs no reader of forms.
    IF rest ~ '^[0-9]{4}-[0-9]{2}-[0-9]{2}( [0-9]{2}:[0-9]{2}:[0-9]{2}([.][0-9]{3})?)?$' THEN
        result := orven.checked_moment(
            substr(rest, 1, 4)::integer, substr(rest, 6, 2)::integer, substr(rest, 9, 2)::integer,
            ('0' || substr(rest, 12, 2))::integer, ('0' || substr(rest, 15, 2))::integer,
            ('0' || substr(rest, 18, 2))::integer, ('0' || substr(rest, 21, 3))::integer);
        RETURN CASE WHEN result = 'infinity' THEN out_of_range ELSE result END;
    END IF;
    LOOP
        rest := ltrim(rest, E' \t,');
        EXIT WHEN rest = '';
        piece := substring(rest FROM '^[A-Za-z]+');
        IF piece IS NOT NULL THEN
            piece := lower(piece);
            rest := substr(rest, length(piece) + 1);
            -- The ISO form: 2026-01-02T10:00:00Z.
            CONTINUE WHEN piece = 't' AND have_day AND rest ~ '^[0-9]';
            CONTINUE WHEN piece = 'z' AND have_time AND rest = '';
            IF orven.month_named(piece) IS NULL OR have_day OR named_month THEN
                RETURN no_date;
            END IF;
            month := orven.month_named(piece);
            named_month := true;
            rest := regexp_replace(rest, '^[-/.]', '');
            CONTINUE;
        END IF;
        first := substring(rest FROM '^[0-9]+');
        IF first IS NULL OR length(first) > 8 THEN
            RETURN no_date;
        END IF;
        rest := substr(rest, length(first) + 1);
        sign := left(rest, 1);
        half := lower(substring(rest FROM '^ *([AaPp][Mm])(?![A-Za-z])'));
        IF sign = ':' OR half IS NOT NULL THEN
            -- A time.
            IF have_time OR length(first) > 2 THEN
                RETURN no_date;
            END IF;
            have_time := true;
            hours := first::integer;
            IF sign = ':' THEN
                second := substring(rest FROM '^:([0-9]+)');
                IF second IS NULL OR length(second) > 2 THEN
                    RETURN no_date;
                END IF;
                minutes := second::integer;
                rest := substr(rest, length(second) + 2);
                IF left(rest, 1) = ':' THEN
                    third := substring(rest FROM '^:([0-9]+)');
                    IF third IS NULL OR length(third) > 2 THEN
                        RETURN no_date;
                    END IF;
                    seconds := third::integer;
                    rest := substr(rest, length(third) + 2);
                    sign := left(rest, 1);
                    IF sign IN ('.', ':') THEN
                        -- ".5" is half a second, ":5" five milliseconds.
                        piece := substring(rest FROM '^.([0-9]+)');
                        IF piece IS NULL
                           OR length(piece) > (CASE WHEN sign = '.' AND kind IN ('date', 'time') THEN 7 ELSE 3 END) THEN
                            RETURN no_date;
                        END IF;
                        milliseconds := CASE WHEN sign = '.' THEN rpad(piece, 3, '0') ELSE piece END::integer;
                        rest := substr(rest, length(piece) + 2);
                    END IF;
                END IF;
            END IF;
            half := lower(substring(rest FROM '^ *([AaPp][Mm])(?![A-Za-z])'));
            IF half IS NOT NULL THEN
                IF hours > 12 OR (hours = 0 AND half = 'pm') THEN
                    RETURN out_of_range;
                END IF;
                hours := hours % 12 + CASE WHEN half = 'pm' THEN 12 ELSE 0 END;
                rest := substr(ltrim(rest), 3);
            END IF;
            CONTINUE;
        END IF;
        IF have_day THEN
            RETURN no_date;
        END IF;
        IF rest ~ '^[-/.][0-9]' AND NOT named_month THEN
            -- Three numbers.
            second := substring(rest FROM '^.([0-9]+)');
            rest := substr(rest, length(second) + 2);
            third := substring(rest FROM '^.([0-9]+)');
            IF left(rest, 1) <> sign OR third IS NULL OR length(second) > 2 OR length(third) > 8 THEN
                RETURN no_date;
            END IF;
            rest := substr(rest, length(third) + 2);
            have_day := true;
            IF length(first) = 4 THEN
                year := first::integer;
            ELSIF length(third) = 4 THEN
                year := third::integer;
                third := CASE WHEN style % 100 IN (3, 4, 5) THEN first ELSE second END;
                second := CASE WHEN style % 100 IN (3, 4, 5) THEN second ELSE first END;
            ELSIF length(first) > 2 OR length(third) > 2 THEN
                RETURN no_date;
            ELSIF style % 100 IN (1, 10) THEN
                year := orven.century_of(third::integer);
                third := second;
                second := first;
            ELSIF style % 100 IN (3, 4, 5) THEN
                year := orven.century_of(third::integer);
                third := first;
            ELSE
                year := orven.century_of(first::integer);
            END IF;
            IF length(second) > 2 OR length(third) > 2 THEN
                RETURN no_date;
            END IF;
            month := second::integer;
            day := third::integer;
            CONTINUE;
        END IF;
        -- A bare number. Between a month's name and a number a sign only parts them.
        IF named_month AND rest ~ '^[-/.][0-9]' THEN
            rest := substr(rest, 2);
        END IF;
        IF length(first) IN (6, 8) THEN
            have_day := true;
            year := CASE length(first) WHEN 8 THEN left(first, 4)::integer
                                       ELSE orven.century_of(left(first, 2)::integer) END;
            month := left(right(first, 4), 2)::integer;
            day := right(first, 2)::integer;
        ELSIF length(first) = 4 AND NOT named_month AND named = '{}' AND rest !~ '^[ -]*[A-Za-z]' THEN
            -- A year alone, unless a month's name is still to come.
            have_day := true;
            year := first::integer;
            month := 1;
            day := 1;
        ELSIF array_length(named, 1) = 2 OR (length(first) <> 4 AND length(first) > 2) THEN
            RETURN no_date;
        ELSE
            named := named || first;
            rest := regexp_replace(rest, '^[-/.]', '');
        END IF;
    END LOOP;
    -- "Jan 2 2026", "2026 Jan 2", "Jan 2026".
    IF named_month THEN
        IF named = '{}' THEN
            RETURN no_date;
        END IF;
        first := CASE WHEN length(named[1]) = 4 THEN named[1] ELSE named[2] END;
        third := CASE WHEN length(named[1]) = 4 THEN named[2] ELSE named[1] END;
        IF first IS NULL THEN
            RETURN no_date;
        END IF;
        year := CASE WHEN length(first) = 4 THEN first::integer ELSE orven.century_of(first::integer) END;
        day := coalesce(third::integer, 1);
    ELSIF named <> '{}' THEN
        RETURN no_date;
    END IF;
    result := orven.checked_moment(year, month, day, hours, minutes, seconds, milliseconds);
    RETURN CASE WHEN result = 'infinity' THEN out_of_range ELSE result END;
END $$;
