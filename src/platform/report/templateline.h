// A line of a template as words, with what may be asked of them in turn. Whatever is asked for and isn't there throws
// with the number of the line.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace orvenmod::platform::report {

class TemplateLine {
public:
    /// Throws where a quote isn't closed.
    TemplateLine(int number, std::string_view text);

    bool empty() const { return words_.empty(); }
    bool done() const { return at_ == words_.size(); }

    /// The next word; `expected` tells in Chinese what should stand there.
    std::string word(const std::string& expected);
    /// A length of at least `least` and at most a metre.
    double length(const std::string& expected, double least);
    /// Whether the next word is this one, not a text in quotes; takes it then.
    bool takes(std::string_view word);
    /// The next word where it is a text in quotes; takes it then.
    std::optional<std::string> quoted();
    /// Whether the next word starts as a number does.
    bool numberNext() const;
    /// Throws for words that are left over.
    void end();

    /// Throws: expected that, found the word that is next.
    [[noreturn]] void fail(const std::string& expected) const;

private:
    struct Word {
        std::string text;
        bool quoted;
    };

    int number_;
    std::vector<Word> words_;
    std::size_t at_ = 0;
};

/// "报表模板第 7 行：..."
[[noreturn]] void failAtLine(int number, const std::string& text);

}  // namespace orvenmod::platform::report
