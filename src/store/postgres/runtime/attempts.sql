-- Each conversion once more, giving null where it fails. What the types never allow (529) is no matter of the value.
--
-- A block that catches a failure begins a subtransaction, which no parallel plan may: a query that tries isn't made
-- parallel.
DO $do$
DECLARE
    conversion regproc;
    arguments text;
    result text;
    volatility text;
BEGIN
    FOR conversion, arguments, result, volatility IN
        SELECT p.oid, pg_get_function_arguments(p.oid), pg_get_function_result(p.oid),
               CASE p.provolatile WHEN 'i' THEN 'IMMUTABLE' ELSE 'STABLE' END
        FROM pg_proc p
        WHERE p.pronamespace = 'orven'::regnamespace
          AND p.proname IN ('ts_text', 'ts_bigint', 'ts_numeric', 'ts_float', 'ts_datetime', 'ts_time', 'ts_binary',
                            'ts_guid')
    LOOP
        EXECUTE format($function$
            CREATE OR REPLACE FUNCTION orven.%I(%s) RETURNS %s LANGUAGE plpgsql %s PARALLEL UNSAFE AS $$
            BEGIN
                RETURN orven.%I(v, "from", "to", style);
            EXCEPTION WHEN SQLSTATE 'OV000' THEN
                IF SQLERRM = 'kNoExplicitConversion' THEN
                    RAISE;
                END IF;
                RETURN NULL;
            END $$ $function$,
            (SELECT replace(proname, 'ts_', 'ts_try_') FROM pg_proc WHERE oid = conversion), arguments, result,
            volatility, (SELECT proname FROM pg_proc WHERE oid = conversion));
    END LOOP;
END $do$;
