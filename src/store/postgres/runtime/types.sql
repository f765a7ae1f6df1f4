-- What the printed name of a type says: 'decimal(18,4)', 'varchar(max)', 'int'. All of it is settled while planning.
CREATE OR REPLACE FUNCTION orven.type_kind(type text) RETURNS text
LANGUAGE sql IMMUTABLE PARALLEL SAFE RETURN split_part(type, '(', 1);

-- The name in messages.
CREATE OR REPLACE FUNCTION orven.type_message(type text) RETURNS text
LANGUAGE sql IMMUTABLE PARALLEL SAFE
RETURN CASE WHEN split_part(type, '(', 1) = 'decimal' THEN 'numeric' ELSE split_part(type, '(', 1) END;

CREATE OR REPLACE FUNCTION orven.type_size(type text, place integer) RETURNS integer
LANGUAGE sql IMMUTABLE PARALLEL SAFE
RETURN nullif(split_part(translate(type, '(),', '   '), ' ', place + 1), '')::integer;

-- Of a text or binary type; below 0 for one without a limit.
CREATE OR REPLACE FUNCTION orven.type_length(type text) RETURNS integer
LANGUAGE sql IMMUTABLE PARALLEL SAFE
RETURN CASE WHEN type LIKE '%(max)' OR type IN ('text', 'ntext', 'image') THEN -1
            ELSE coalesce(orven.type_size(type, 1), 0) END;

CREATE OR REPLACE FUNCTION orven.type_precision(type text) RETURNS integer
LANGUAGE sql IMMUTABLE PARALLEL SAFE
RETURN CASE type WHEN 'money' THEN 19 WHEN 'smallmoney' THEN 10 ELSE orven.type_size(type, 1) END;

CREATE OR REPLACE FUNCTION orven.type_scale(type text) RETURNS integer
LANGUAGE sql IMMUTABLE PARALLEL SAFE
RETURN CASE WHEN type IN ('money', 'smallmoney') THEN 4 ELSE orven.type_size(type, 2) END;

CREATE OR REPLACE FUNCTION orven.type_is_padded(type text) RETURNS boolean
LANGUAGE sql IMMUTABLE PARALLEL SAFE RETURN type LIKE 'char(%' OR type LIKE 'nchar(%';

CREATE OR REPLACE FUNCTION orven.type_is_national(type text) RETURNS boolean
LANGUAGE sql IMMUTABLE PARALLEL SAFE RETURN type LIKE 'n%char(%' OR type = 'ntext';

CREATE OR REPLACE FUNCTION orven.type_is_small_integer(type text) RETURNS boolean
LANGUAGE sql IMMUTABLE PARALLEL SAFE RETURN type IN ('bit', 'tinyint', 'smallint', 'int');

-- 10 to that power, exactly.
CREATE OR REPLACE FUNCTION orven.power_of_ten(exponent integer) RETURNS numeric
LANGUAGE sql IMMUTABLE PARALLEL SAFE RETURN ('1e' || exponent)::numeric;

-- A count within what the server's own functions take; null for null, which least and greatest would skip.
CREATE OR REPLACE FUNCTION orven.bounded(n bigint, low integer, high integer) RETURNS integer
LANGUAGE sql IMMUTABLE PARALLEL SAFE
RETURN CASE WHEN n < low THEN low WHEN n > high THEN high ELSE n::integer END;

CREATE OR REPLACE FUNCTION orven.greatest_decimal(p integer, s integer) RETURNS numeric
LANGUAGE sql IMMUTABLE PARALLEL SAFE RETURN orven.power_of_ten(p - s) - orven.power_of_ten(-s);
