-- The functions that emitted statements call, in a schema of their own; tsql/runtime.h tells what each gives.
--
-- They are written in SQL, as one expression that the planner puts in the place of the call, and in plpgsql where a
-- walk or a failure needs it; no superuser and no extension. A call's types are constants, so that of
--
--   orven.ts_text(fitemid, 'int', 'varchar(30)')
--
-- what remains in a plan is the check of the length of fitemid::text. All of ours is called by its schema, so that no
-- session's search path changes what is meant.
SELECT pg_advisory_xact_lock(hashtextextended('orven.runtime', 0));

CREATE SCHEMA IF NOT EXISTS orven;
GRANT USAGE ON SCHEMA orven TO PUBLIC;
