#include "store/copy/vieworder.h"

#include <cstddef>
#include <map>
#include <string>
#include <utility>

#include "store/tsql/error.h"
#include "store/tsql/lexer.h"

namespace orvenmod::store {

namespace {

using tsql::Token;

class Sorter {
public:
    explicit Sorter(const std::vector<ViewOutline>& views) : views_(views), reached_(views.size(), false) {
        for (std::size_t i = 0; i < views.size(); ++i)
            places_.emplace(tsql::lowerName(views[i].name), i);
    }

    std::vector<ViewOutline> sorted() {
        for (std::size_t i = 0; i < views_.size(); ++i)
            place(i);
        return std::move(sorted_);
    }

private:
    /// What a view reads stands behind one of these; its columns may have the names of views.
    static bool opensSource(const Token& token) {
        return token.isWord("from") || token.isWord("join") || token.isSymbol(",");
    }

    std::vector<std::size_t> sourcesOf(const ViewOutline& view) const {
        std::vector<std::size_t> sources;
        tsql::Lexer lexer(view.text);
        try {
            Token before;
            for (Token token = lexer.next(); token.kind != Token::Kind::end;
                 before = std::exchange(token, lexer.next())) {
                // An owner goes ahead of the name.
                if (!opensSource(before) && !before.isSymbol(".")) continue;
                const auto known = places_.find(tsql::lowerName(token.name()));
                if (known != places_.end()) sources.push_back(known->second);
            }
        } catch (const tsql::Error&) {
            // The store that has to make it says what is wrong with it.
            return sources;
        }
        return sources;
    }

    void place(std::size_t view) {
        if (reached_[view]) return;
        reached_[view] = true;
        for (const std::size_t source : sourcesOf(views_[view]))
            place(source);
        sorted_.push_back(views_[view]);
    }

    const std::vector<ViewOutline>& views_;
    std::vector<bool> reached_;
    std::map<std::string, std::size_t> places_;
    std::vector<ViewOutline> sorted_;
};

}  // namespace

std::vector<ViewOutline> inOrderOfMaking(const std::vector<ViewOutline>& views) { return Sorter(views).sorted(); }

}  // namespace orvenmod::store
