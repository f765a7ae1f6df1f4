-- Texts brought into the length of their type. Lengths of char and varchar count the bytes of the dialect's code page,
-- of which every character beyond ASCII has two, and none is cut in half; nchar and nvarchar count characters.
CREATE OR REPLACE FUNCTION orven.code_page_length(t text) RETURNS integer
LANGUAGE sql IMMUTABLE PARALLEL SAFE
RETURN CASE WHEN octet_length(t) = length(t) THEN length(t)
            ELSE length(t) + length(regexp_replace(t COLLATE "C", '[\u0001-\u007f]+', '', 'g')) END;

-- As much of the text as has that many bytes in the code page.
CREATE OR REPLACE FUNCTION orven.code_page_prefix(t text, bytes integer) RETURNS text
LANGUAGE plpgsql IMMUTABLE STRICT PARALLEL SAFE AS $$
DECLARE
    low integer := least(bytes / 2, length(t));
    high integer := least(bytes, length(t));
    middle integer;
BEGIN
    WHILE low < high LOOP
        middle := (low + high + 1) / 2;
        IF orven.code_page_length(left(t, middle)) <= bytes THEN
            low := middle;
        ELSE
            high := middle - 1;
        END IF;
    END LOOP;
    RETURN left(t, low);
END $$;

-- As much of the text as fits.
CREATE OR REPLACE FUNCTION orven.cut_text(t text, length integer, by_characters boolean) RETURNS text
LANGUAGE sql IMMUTABLE PARALLEL SAFE
RETURN CASE WHEN octet_length(t) <= length THEN t
            WHEN by_characters THEN left(t, length) ELSE orven.code_page_prefix(t, length) END;

-- With the blanks that char and nchar keep behind a text.
CREATE OR REPLACE FUNCTION orven.padded_text(t text, length integer, by_characters boolean) RETURNS text
LANGUAGE sql IMMUTABLE PARALLEL SAFE
RETURN t || repeat(' ', length - CASE WHEN by_characters THEN length(t) ELSE orven.code_page_length(t) END);

-- A text of no more bytes than the limit has no more of anything.
CREATE OR REPLACE FUNCTION orven.brought_text(t text, length integer, by_characters boolean, padded boolean)
RETURNS text LANGUAGE plpgsql IMMUTABLE STRICT PARALLEL SAFE AS $$
BEGIN
    IF length <= 0 OR (octet_length(t) <= length AND NOT padded) THEN
        RETURN t;
    ELSIF padded THEN
        RETURN orven.padded_text(orven.cut_text(t, length, by_characters), length, by_characters);
    END IF;
    RETURN orven.cut_text(t, length, by_characters);
END $$;

-- A text in a text type; what is too long is cut.
CREATE OR REPLACE FUNCTION orven.fitted_text(t text, type text) RETURNS text
LANGUAGE sql IMMUTABLE PARALLEL SAFE
RETURN orven.brought_text(t, orven.type_length(type), orven.type_is_national(type), orven.type_is_padded(type));

CREATE OR REPLACE FUNCTION orven.assigned_text(t text, length integer, by_characters boolean, padded boolean,
                                               "table" text, "column" text) RETURNS text
LANGUAGE plpgsql IMMUTABLE STRICT PARALLEL SAFE AS $$
DECLARE
    kept text;
BEGIN
    IF length <= 0 OR (octet_length(t) <= length AND NOT padded) THEN
        RETURN t;
    END IF;
    kept := orven.cut_text(t, length, by_characters);
    -- Blanks that don't fit are no loss.
    IF length(rtrim(t, ' ')) > length(kept) THEN
        RETURN orven.refuse(t, t, kTextTruncated, "table", "column", kept);
    END IF;
    RETURN CASE WHEN padded THEN orven.padded_text(kept, length, by_characters) ELSE kept END;
END $$;

-- A text assigned to a column; what is too long is refused.
CREATE OR REPLACE FUNCTION orven.stored_text(t text, type text, "table" text, "column" text) RETURNS text
LANGUAGE sql IMMUTABLE PARALLEL SAFE
RETURN orven.assigned_text(t, orven.type_length(type), orven.type_is_national(type), orven.type_is_padded(type),
                           "table", "column");

CREATE OR REPLACE FUNCTION orven.brought_number(t text, length integer, padded boolean, starred boolean, "from" text,
                                                "to" text) RETURNS text
LANGUAGE plpgsql IMMUTABLE STRICT PARALLEL SAFE AS $$
BEGIN
    IF length <= 0 OR (octet_length(t) <= length AND NOT padded) THEN
        RETURN t;
    ELSIF octet_length(t) <= length THEN
        RETURN rpad(t, length);
    ELSIF starred THEN
        RETURN CASE WHEN padded THEN rpad('*', length) ELSE '*' END;
    END IF;
    RETURN orven.refuse(t, t, kArithmeticOverflow, "from", "to");
END $$;

-- A number's text in a text type. One too short takes a star for an int or less, and refuses everything else.
CREATE OR REPLACE FUNCTION orven.number_text(t text, "from" text, "to" text) RETURNS text
LANGUAGE sql IMMUTABLE PARALLEL SAFE
RETURN orven.brought_number(t, orven.type_length("to"), orven.type_is_padded("to"),
                            orven.type_is_small_integer("from") AND NOT orven.type_is_national("to"),
                            CASE WHEN "from" LIKE 'decimal%' OR "from" LIKE '%money' THEN orven.type_message("from")
                                 ELSE 'expression' END,
                            orven.type_message("to"));

-- Binary contents in a binary type.
CREATE OR REPLACE FUNCTION orven.fitted_bytes(b bytea, type text) RETURNS bytea
LANGUAGE sql IMMUTABLE PARALLEL SAFE
RETURN CASE WHEN orven.type_length(type) <= 0 THEN b
            WHEN octet_length(b) > orven.type_length(type) THEN substring(b FROM 1 FOR orven.type_length(type))
            WHEN type LIKE 'binary(%' THEN b || decode(repeat('00', orven.type_length(type) - octet_length(b)), 'hex')
            ELSE b END;

CREATE OR REPLACE FUNCTION orven.ts_store_binary(v bytea, "from" text, "to" text, "table" text, "column" text)
RETURNS bytea LANGUAGE sql IMMUTABLE PARALLEL SAFE
RETURN CASE WHEN orven.type_length("to") > 0 AND octet_length(v) > orven.type_length("to")
            THEN orven.refuse(v, v, kTextTruncated, "table", "column", '')
            ELSE orven.fitted_bytes(v, "to") END;
