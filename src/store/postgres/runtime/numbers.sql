-- Arithmetic whose results the server tells otherwise than PostgreSQL. Decimals are exact: a quotient is cut to its
-- scale, not rounded, and nothing is lost on the way.
--
--   2.0/3      0.666666
--   0.3/0.1    3
CREATE OR REPLACE FUNCTION orven.ts_range(v bigint, type text) RETURNS bigint
LANGUAGE sql IMMUTABLE PARALLEL SAFE RETURN orven.ts_bigint(v, 'bigint', type);

-- For what may lie beyond a bigint.
CREATE OR REPLACE FUNCTION orven.ts_range(v numeric, type text) RETURNS bigint
LANGUAGE plpgsql IMMUTABLE STRICT PARALLEL SAFE AS $$
BEGIN
    RETURN CASE WHEN v < -9223372036854775808 OR v > 9223372036854775807
                THEN orven.refuse(0::bigint, v, kArithmeticOverflow, 'expression', 'bigint')
                ELSE orven.ts_bigint(v::bigint, 'bigint', type) END;
END $$;

CREATE OR REPLACE FUNCTION orven.ts_decimal(v numeric, p integer, s integer) RETURNS numeric
LANGUAGE sql IMMUTABLE PARALLEL SAFE
RETURN orven.within(round(v, s), orven.greatest_decimal(p, s), 8115, 'expression', 'numeric');

CREATE OR REPLACE FUNCTION orven.ts_idiv(a bigint, b bigint) RETURNS bigint
LANGUAGE plpgsql IMMUTABLE STRICT PARALLEL SAFE AS $$
BEGIN
    RETURN CASE b WHEN 0 THEN orven.refuse(a, b, kDivisionByZero)
                  WHEN -1 THEN CASE WHEN a = -9223372036854775808
                                    THEN orven.refuse(a, a, kArithmeticOverflow, 'expression', 'bigint') ELSE -a END
                  ELSE a / b END;
END $$;

CREATE OR REPLACE FUNCTION orven.ts_imod(a bigint, b bigint) RETURNS bigint
LANGUAGE plpgsql IMMUTABLE STRICT PARALLEL SAFE AS $$
BEGIN
    RETURN CASE b WHEN 0 THEN orven.refuse(a, b, kDivisionByZero) WHEN -1 THEN 0 * a ELSE a % b END;
END $$;

-- Results too small for a float are zero, as the processor has them; PostgreSQL refuses them.
CREATE OR REPLACE FUNCTION orven.ts_div(a double precision, b double precision) RETURNS double precision
LANGUAGE plpgsql IMMUTABLE STRICT PARALLEL SAFE AS $$
BEGIN
    IF b = 0 THEN
        RETURN orven.refuse(a, b, kDivisionByZero);
    ELSIF a <> 0 AND abs(log(abs(a)) - log(abs(b))) > 307.6 THEN
        RETURN orven.float_of(orven.decimal_of(a) / orven.decimal_of(b));
    END IF;
    RETURN a / b;
END $$;

-- A number in a float: 8115 beyond it, zero below it.
CREATE OR REPLACE FUNCTION orven.float_of(v numeric) RETURNS double precision
LANGUAGE plpgsql IMMUTABLE STRICT PARALLEL SAFE AS $$
BEGIN
    RETURN CASE WHEN abs(v) >= 1.797693134862315807e308
                THEN orven.refuse(0::double precision, v, kArithmeticOverflow, 'expression', 'float')
                WHEN abs(v) < 2.4703282292062328e-324 THEN 0 ELSE v::double precision END;
END $$;

CREATE OR REPLACE FUNCTION orven.cut_quotient(a numeric, b numeric, up numeric, down numeric) RETURNS numeric
LANGUAGE plpgsql IMMUTABLE STRICT PARALLEL SAFE AS $$
BEGIN
    IF b = 0 THEN
        RETURN orven.refuse(a, b, kDivisionByZero);
    END IF;
    RETURN div(a * up, b) * down;
END $$;

CREATE OR REPLACE FUNCTION orven.ts_decdiv(a numeric, b numeric, p integer, s integer) RETURNS numeric
LANGUAGE sql IMMUTABLE PARALLEL SAFE
RETURN orven.within(orven.cut_quotient(a, b, orven.power_of_ten(s), orven.power_of_ten(-s)),
                    orven.greatest_decimal(p, s), 8115, 'expression', 'numeric');

CREATE OR REPLACE FUNCTION orven.ts_decmod(a numeric, b numeric) RETURNS numeric
LANGUAGE plpgsql IMMUTABLE STRICT PARALLEL SAFE AS $$
BEGIN
    RETURN CASE WHEN b = 0 THEN orven.refuse(a, b, kDivisionByZero) ELSE a % b END;
END $$;

-- Functions of floats. Outside its domain the server refuses.

CREATE OR REPLACE FUNCTION orven.ts_sqrt(x double precision) RETURNS double precision
LANGUAGE plpgsql IMMUTABLE STRICT PARALLEL SAFE AS $$
BEGIN
    RETURN CASE WHEN x < 0 THEN orven.refuse(x, x, kFloatDomain) ELSE sqrt(x) END;
END $$;

CREATE OR REPLACE FUNCTION orven.ts_exp(x double precision) RETURNS double precision
LANGUAGE plpgsql IMMUTABLE STRICT PARALLEL SAFE AS $$
BEGIN
    RETURN CASE WHEN x > 709.782712893384 THEN orven.refuse(x, x, kArithmeticOverflow, 'expression', 'float')
                WHEN x < -708.4 THEN CASE WHEN x < -745.14 THEN 0 ELSE exp(x / 2) * exp(x / 2) END
                ELSE exp(x) END;
END $$;

CREATE OR REPLACE FUNCTION orven.ts_log(x double precision) RETURNS double precision
LANGUAGE plpgsql IMMUTABLE STRICT PARALLEL SAFE AS $$
BEGIN
    RETURN CASE WHEN x <= 0 THEN orven.refuse(x, x, kFloatDomain) ELSE ln(x) END;
END $$;

CREATE OR REPLACE FUNCTION orven.ts_log(x double precision, base double precision) RETURNS double precision
LANGUAGE plpgsql IMMUTABLE STRICT PARALLEL SAFE AS $$
BEGIN
    RETURN CASE WHEN x <= 0 THEN orven.refuse(x, x + base, kFloatDomain)
                WHEN base <= 0 OR base = 1 THEN orven.refuse(x, base + x, kFloatDomain)
                ELSE ln(x) / ln(base) END;
END $$;

CREATE OR REPLACE FUNCTION orven.ts_log10(x double precision) RETURNS double precision
LANGUAGE plpgsql IMMUTABLE STRICT PARALLEL SAFE AS $$
BEGIN
    RETURN CASE WHEN x <= 0 THEN orven.refuse(x, x, kFloatDomain) ELSE log(x) END;
END $$;

CREATE OR REPLACE FUNCTION orven.ts_sin(x double precision) RETURNS double precision
LANGUAGE sql IMMUTABLE PARALLEL SAFE RETURN sin(x);

CREATE OR REPLACE FUNCTION orven.ts_cos(x double precision) RETURNS double precision
LANGUAGE sql IMMUTABLE PARALLEL SAFE RETURN cos(x);

CREATE OR REPLACE FUNCTION orven.ts_tan(x double precision) RETURNS double precision
LANGUAGE sql IMMUTABLE PARALLEL SAFE RETURN tan(x);

CREATE OR REPLACE FUNCTION orven.ts_cot(x double precision) RETURNS double precision
LANGUAGE plpgsql IMMUTABLE STRICT PARALLEL SAFE AS $$
BEGIN
    RETURN CASE WHEN x = 0 THEN orven.refuse(x, x, kFloatDomain) ELSE 1 / tan(x) END;
END $$;

CREATE OR REPLACE FUNCTION orven.ts_asin(x double precision) RETURNS double precision
LANGUAGE plpgsql IMMUTABLE STRICT PARALLEL SAFE AS $$
BEGIN
    RETURN CASE WHEN abs(x) > 1 THEN orven.refuse(x, x, kFloatDomain) ELSE asin(x) END;
END $$;

CREATE OR REPLACE FUNCTION orven.ts_acos(x double precision) RETURNS double precision
LANGUAGE plpgsql IMMUTABLE STRICT PARALLEL SAFE AS $$
BEGIN
    RETURN CASE WHEN abs(x) > 1 THEN orven.refuse(x, x, kFloatDomain) ELSE acos(x) END;
END $$;

CREATE OR REPLACE FUNCTION orven.ts_atan(x double precision) RETURNS double precision
LANGUAGE sql IMMUTABLE PARALLEL SAFE RETURN atan(x);

CREATE OR REPLACE FUNCTION orven.ts_atn2(y double precision, x double precision) RETURNS double precision
LANGUAGE sql IMMUTABLE PARALLEL SAFE RETURN atan2(y, x);

CREATE OR REPLACE FUNCTION orven.ts_degrees(x double precision) RETURNS double precision
LANGUAGE plpgsql IMMUTABLE STRICT PARALLEL SAFE AS $$
BEGIN
    RETURN CASE WHEN abs(x) > 1e306 THEN orven.refuse(x, x, kArithmeticOverflow, 'expression', 'float') ELSE x * 180 / pi() END;
END $$;

CREATE OR REPLACE FUNCTION orven.ts_radians(x double precision) RETURNS double precision
LANGUAGE plpgsql IMMUTABLE STRICT PARALLEL SAFE AS $$
BEGIN
    RETURN CASE WHEN abs(x) > 5.7e307 THEN orven.refuse(x, x, kArithmeticOverflow, 'expression', 'float') ELSE x * pi() / 180 END;
END $$;

CREATE OR REPLACE FUNCTION orven.ts_pi() RETURNS double precision
LANGUAGE sql IMMUTABLE PARALLEL SAFE RETURN pi();

CREATE OR REPLACE FUNCTION orven.ts_rand() RETURNS double precision
LANGUAGE sql VOLATILE PARALLEL RESTRICTED RETURN random();

-- The same number for the same seed.
CREATE OR REPLACE FUNCTION orven.ts_rand(seed bigint) RETURNS double precision
LANGUAGE plpgsql VOLATILE STRICT PARALLEL RESTRICTED AS $$
BEGIN
    PERFORM setseed((seed % 1000003) / 1000003::double precision);
    RETURN random();
END $$;

-- Functions of any number, which give one of its own type.

CREATE OR REPLACE FUNCTION orven.ts_floor(v bigint) RETURNS bigint LANGUAGE sql IMMUTABLE PARALLEL SAFE RETURN v;
CREATE OR REPLACE FUNCTION orven.ts_floor(v numeric) RETURNS numeric
LANGUAGE sql IMMUTABLE PARALLEL SAFE RETURN floor(v);
CREATE OR REPLACE FUNCTION orven.ts_floor(v double precision) RETURNS double precision
LANGUAGE sql IMMUTABLE PARALLEL SAFE RETURN floor(v);

CREATE OR REPLACE FUNCTION orven.ts_ceiling(v bigint) RETURNS bigint LANGUAGE sql IMMUTABLE PARALLEL SAFE RETURN v;
CREATE OR REPLACE FUNCTION orven.ts_ceiling(v numeric) RETURNS numeric
LANGUAGE sql IMMUTABLE PARALLEL SAFE RETURN ceil(v);
CREATE OR REPLACE FUNCTION orven.ts_ceiling(v double precision) RETURNS double precision
LANGUAGE sql IMMUTABLE PARALLEL SAFE RETURN ceil(v);

CREATE OR REPLACE FUNCTION orven.ts_sign(v bigint) RETURNS bigint
LANGUAGE plpgsql IMMUTABLE STRICT PARALLEL SAFE AS $$
BEGIN
    RETURN CASE WHEN v > 0 THEN 1 WHEN v < 0 THEN -1 ELSE 0 * v END;
END $$;
CREATE OR REPLACE FUNCTION orven.ts_sign(v numeric) RETURNS numeric
LANGUAGE sql IMMUTABLE PARALLEL SAFE RETURN sign(v);
CREATE OR REPLACE FUNCTION orven.ts_sign(v double precision) RETURNS double precision
LANGUAGE sql IMMUTABLE PARALLEL SAFE RETURN sign(v);

CREATE OR REPLACE FUNCTION orven.ts_abs(v bigint) RETURNS bigint
LANGUAGE plpgsql IMMUTABLE STRICT PARALLEL SAFE AS $$
BEGIN
    RETURN CASE WHEN v = -9223372036854775808 THEN orven.refuse(v, v, kArithmeticOverflow, 'expression', 'bigint') ELSE abs(v) END;
END $$;
CREATE OR REPLACE FUNCTION orven.ts_abs(v numeric) RETURNS numeric
LANGUAGE sql IMMUTABLE PARALLEL SAFE RETURN abs(v);
CREATE OR REPLACE FUNCTION orven.ts_abs(v double precision) RETURNS double precision
LANGUAGE sql IMMUTABLE PARALLEL SAFE RETURN abs(v);

-- No number has digits further from the point than 400 places.
CREATE OR REPLACE FUNCTION orven.ts_round(v numeric, n bigint, cut bigint DEFAULT 0) RETURNS numeric
LANGUAGE sql IMMUTABLE PARALLEL SAFE
RETURN CASE WHEN cut = 0 THEN round(v, orven.bounded(n, -400, 400))
            WHEN cut <> 0 THEN trunc(v, orven.bounded(n, -400, 400)) END;

CREATE OR REPLACE FUNCTION orven.ts_round(v double precision, n bigint, cut bigint DEFAULT 0) RETURNS double precision
LANGUAGE sql IMMUTABLE PARALLEL SAFE RETURN orven.ts_round(orven.decimal_of(v), n, cut)::double precision;

CREATE OR REPLACE FUNCTION orven.ts_round(v bigint, n bigint, cut bigint DEFAULT 0) RETURNS bigint
LANGUAGE sql IMMUTABLE PARALLEL SAFE
RETURN CASE WHEN n >= 0 AND cut IS NOT NULL THEN v
            WHEN abs(orven.ts_round(v::numeric, n, cut)) > 9223372036854775807
            THEN orven.refuse(v, v + n, kArithmeticOverflow, 'expression', 'bigint')
            ELSE orven.ts_round(v::numeric, n, cut)::bigint END;

CREATE OR REPLACE FUNCTION orven.float_power(base double precision, exponent double precision, type text)
RETURNS double precision LANGUAGE plpgsql IMMUTABLE STRICT PARALLEL SAFE AS $$
BEGIN
    IF base = 0 AND exponent < 0 THEN
        RETURN orven.refuse(base, base, kDivisionByZero);
    ELSIF base < 0 AND exponent <> trunc(exponent) THEN
        RETURN orven.refuse(base, base, kFloatDomain);
    ELSIF base <> 0 AND exponent * ln(abs(base)) > 709.782712893384 THEN
        RETURN orven.refuse(base, base, kArithmeticOverflow, 'expression', orven.type_kind(type));
    ELSIF base <> 0 AND exponent * ln(abs(base)) < -745.13 THEN
        RETURN 0;
    END IF;
    RETURN power(base, exponent);
END $$;

CREATE OR REPLACE FUNCTION orven.ts_power(base double precision, exponent double precision, type text)
RETURNS double precision LANGUAGE sql IMMUTABLE PARALLEL SAFE RETURN orven.float_power(base, exponent, type);

CREATE OR REPLACE FUNCTION orven.ts_power(base numeric, exponent double precision, type text) RETURNS numeric
LANGUAGE sql IMMUTABLE PARALLEL SAFE
RETURN orven.ts_numeric(orven.float_power(base::double precision, exponent, type), 'float', type);

CREATE OR REPLACE FUNCTION orven.ts_power(base bigint, exponent double precision, type text) RETURNS bigint
LANGUAGE sql IMMUTABLE PARALLEL SAFE
RETURN orven.ts_bigint(orven.float_power(base::double precision, exponent, type), 'float', type);

-- An int or a smallint would go to the functions of floats, which the server prefers.
DO $do$
DECLARE
    type text;
    name text;
BEGIN
    FOREACH type IN ARRAY ARRAY['smallint', 'integer'] LOOP
        FOREACH name IN ARRAY ARRAY['ts_floor', 'ts_ceiling', 'ts_sign', 'ts_abs'] LOOP
            EXECUTE format('CREATE OR REPLACE FUNCTION orven.%I(v %s) RETURNS bigint LANGUAGE sql IMMUTABLE '
                           'PARALLEL SAFE RETURN orven.%1$I(v::bigint)', name, type);
        END LOOP;
        EXECUTE format('CREATE OR REPLACE FUNCTION orven.ts_round(v %s, n bigint, cut bigint DEFAULT 0) RETURNS bigint '
                       'LANGUAGE sql IMMUTABLE PARALLEL SAFE RETURN orven.ts_round(v::bigint, n, cut)', type);
        EXECUTE format('CREATE OR REPLACE FUNCTION orven.ts_power(base %s, exponent double precision, type text) '
                       'RETURNS bigint LANGUAGE sql IMMUTABLE PARALLEL SAFE '
                       'RETURN orven.ts_power(base::bigint, exponent, type)', type);
    END LOOP;
END $do$;
