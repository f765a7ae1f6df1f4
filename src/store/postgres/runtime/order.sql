-- (head)
CREATE OR REPLACE FUNCTION orven.letters_moved(t text) RETURNS text
LANGUAGE sql IMMUTABLE PARALLEL SAFE
RETURN translate(lower(t COLLATE "C"), 'abcdefghijklmnopqrstuvwxyz',
                 U&'\E292\E293\E294\E295\E296\E297\E298\E299\E29A\E29B\E29C\E29D\E29E'
                 '\E29F\E2A0\E2A1\E2A2\E2A3\E2A4\E2A5\E2A6\E2A7\E2A8\E2A9\E2AA\E2AB');

CREATE OR REPLACE FUNCTION orven.signs_moved(t text) RETURNS text
LANGUAGE sql IMMUTABLE PARALLEL SAFE
RETURN translate(t,
    U&'\00A7\00A8\00B0\00B1\00B7\2014\2016\2018\2019\201C\201D\2026\2030\2032\2033\203B\2103\2116\2190'
    '\2191\2192\2193\2211\221A\2220\2248\2260\2264\2265\25A0\25A1\25B2\25B3\25C6\25C7\25CB\25CE\25CF'
    '\2605\2606\2640\2642\3000\3001\3002\3003\3005\3008\3009\300A\300B\300C\300D\300E\300F\3010\3011'
    '\3014\3015\3016\3017\FF01\FF02\FF03\FF04\FF05\FF06\FF07\FF08\FF09\FF0A\FF0B\FF0C\FF0D\FF0E\FF0F',
    U&'\AC27\AC28\AC30\AC31\AC37\AC54\AC56\AC58\AC59\AC5C\AC5D\AC66\AC70\AC72\AC73\AC7B\AD43\AD56\ADD0'
    '\ADD1\ADD2\ADD3\AE51\AE5A\AE60\AE88\AEA0\AEA4\AEA5\B1E0\B1E1\B1F2\B1F3\B206\B207\B20B\B20E\B20F'
    '\B245\B246\B280\B282\BAC0\BAC1\BAC2\BAC3\BAC5\BAC8\BAC9\BACA\BACB\BACC\BACD\BACE\BACF\BAD0\BAD1'
    '\BAD4\BAD5\BAD6\BAD7\BB01\BB02\BB03\BB04\BB05\BB06\BB07\BB08\BB09\BB0A\BB0B\BB0C\BB0D\BB0E\BB0F');

-- The place of each character that is compared by its code: signs beyond ASCII in Hangul's part of the code, which is
-- ordered as they are.
CREATE OR REPLACE FUNCTION orven.slow_order(t text) RETURNS bytea
LANGUAGE plpgsql IMMUTABLE STRICT PARALLEL SAFE AS $$
DECLARE
    c text;
    code integer;
    bytes bytea;
    result bytea := '';
BEGIN
    FOREACH c IN ARRAY string_to_array(orven.ts_lower(t), NULL) LOOP
        code := ascii(c);
        IF code < 128 THEN
            result := result || convert_to(orven.letters_moved(c), 'GB18030');
        ELSIF code BETWEEN 11904 AND 12255 OR code BETWEEN 13312 AND 40959 OR code BETWEEN 63744 AND 64255
              OR code >= 131072 THEN
            bytes := convert_to(c, 'GB18030');
            IF code BETWEEN 19968 AND 40959 AND octet_length(bytes) = 2 AND get_byte(bytes, 0) BETWEEN 176 AND 247
               AND get_byte(bytes, 1) >= 161 THEN
                result := result || bytes;
            ELSE
                result := result || '\xf8'::bytea || substring(int4send(code) FROM 2);
            END IF;
        ELSIF code < 192 OR code BETWEEN 8192 AND 11903 OR code BETWEEN 12288 AND 12351
              OR code BETWEEN 65280 AND 65295 THEN
            result := result || convert_to(chr(44032 + code
                - CASE WHEN code < 192 THEN 128 WHEN code < 11904 THEN 8192 - 64 WHEN code < 12352 THEN 12288 - 3776
                       ELSE 65280 - 3840 END), 'GB18030');
        ELSE
            result := result || '\xfa'::bytea || substring(int4send(code) FROM 2);
        END IF;
    END LOOP;
    RETURN result;
END $$;

CREATE OR REPLACE FUNCTION orven.han_order(t text) RETURNS bytea
LANGUAGE plpgsql IMMUTABLE STRICT PARALLEL SAFE AS $$
DECLARE
    code constant text := convert_from(convert_to(t, 'GB18030'), 'LATIN1') COLLATE "C";
BEGIN
    IF code ~ '^(?:[\u0001-\u007f]|[\u00b0-\u00d6\u00d8-\u00f7][\u00a1-\u00fe]|\u00d7[\u00a1-\u00f9])*$' THEN
        RETURN convert_to(orven.letters_moved(t), 'GB18030');
    ELSIF code ~ ('^(?:[\u0001-\u007f]|[\u00b0-\u00d6\u00d8-\u00f7][\u00a1-\u00fe]|\u00d7[\u00a1-\u00f9]'
                  '|\u00a3[\u00a1-\u00af]|\u00a1[\u00a1-\u00a4\u00a7-\u00aa\u00ac-\u00c0\u00c6\u00cc\u00cf\u00d6\u00d9\u'
                  '00dc-\u00dd\u00e1-\u00e7\u00eb-\u00fd])*$') THEN
        RETURN convert_to(orven.letters_moved(orven.signs_moved(t)), 'GB18030');
    END IF;
    RETURN orven.slow_order(t);
END $$;

CREATE OR REPLACE FUNCTION orven.ts_order(t text) RETURNS bytea
LANGUAGE sql IMMUTABLE PARALLEL SAFE
RETURN CASE WHEN octet_length(t) = length(t) THEN convert_to(orven.letters_moved(rtrim(t)), 'GB18030')
            ELSE orven.han_order(rtrim(t)) END;
