// Looks at a text that a store passes on unread: it must be one statement, without comments.
//
// A server runs whatever a text holds, and needs no ';' between two statements. The system never sends two, so that a
// second one can only come out of a value that somebody typed:
//
//   select * from tblItem where fName like '%x'; delete from tblItem --%'      102 ';'
//   select * from tblItem where fName like '%x' delete from tblItem where ''   156 'delete'
//
// No grammar is needed to see that. Words that open statements are reserved, so that none is a name; and the places
// where one belongs within a statement are few (`kPlaces`). Where this is too generous the text has no meaning to the
// server either, which then runs nothing of it.
#pragma once

#include <string_view>
#include <vector>

#include "store/tsql/lexer.h"

namespace orvenmod::store::tsql {

/// Throws Error kNoText for a NUL, or bytes that are no UTF-8.
void requireText(std::string_view text);

class OneStatement {
public:
    enum class Control { none, begin, commit, rollback };

    /// Reads the text; the rest is told of the text read last. Throws Error 102, 105, 156 and the lexer's others, and
    /// kNoText for bytes that are no text.
    void scan(std::string_view sql);

    /// Whether the whole text is `begin transaction` or the like, by any of its spellings.
    Control control() const;
    /// Whether it may give rows; what only changes rows or objects gives none.
    bool mayGiveRows() const;
    /// Whether what it does may outlast it in the session: settings, temporary tables, procedures.
    bool touchesSession() const { return touchesSession_; }
    /// Its literals in the code page of the database that hold more than ASCII, as written; views of the text.
    const std::vector<std::string_view>& wideTexts() const { return wideTexts_; }

private:
    void take(const Token& token);
    void takeWord(const Token& token);
    bool belongs(const Token& token) const;
    bool isAlterAction(const Token& token) const;

    Token first_;
    Token second_;
    Token previous_;
    Token beforePrevious_;
    int tokens_ = 0;
    int depth_ = 0;
    bool alters_ = false;
    bool inserts_ = false;
    int names_ = 0;       ///< of an alter, behind the second token, each owner.name as one
    bool spent_ = false;  ///< what a statement takes once (the query of an insert) has been read
    bool touchesSession_ = false;
    bool intoTable_ = false;
    std::vector<std::string_view> wideTexts_;
};

}  // namespace orvenmod::store::tsql
