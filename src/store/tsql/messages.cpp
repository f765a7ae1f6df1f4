// The wordings are whole sentences, filled in. Only a few words of the server's own language go into one of them, and
// these are marked with a w so that a name that happens to be such a word stays as it is.
//
//   %w1 the %w2 '%3' of 3701 with {"drop", "table", "view"}:
//   无法对表“view”执行删除，因为它不存在，或者您没有所需的权限。
#include "store/tsql/messages.h"

#include <algorithm>

#include "store/tsql/messagetable.h"

namespace orvenmod::store::tsql {

namespace {

// Words that the server puts into a message in its own language.
struct Word {
    std::string_view english;
    std::string_view chinese;
};
constexpr Word kWords[] = {{"table", "表"},  {"view", "视图"},  {"index", "索引"},      {"column", "列"},
                           {"drop", "删除"}, {"alter", "更改"}, {"constraint", "约束"}, {"procedure", "过程"}};

std::string_view translatedWord(Language language, std::string_view word) {
    if (language == Language::english) return word;
    const auto* found =
        std::find_if(std::begin(kWords), std::end(kWords), [&](const Word& w) { return w.english == word; });
    return found == std::end(kWords) ? word : found->chinese;
}

const Message* find(int number) {
    for (const std::span<const Message> messages : {statementMessages(), dataMessages()}) {
        const auto found = std::lower_bound(messages.begin(), messages.end(), number,
                                            [](const Message& message, int n) { return message.number < n; });
        if (found != messages.end() && found->number == number) return &*found;
    }
    return nullptr;
}

// Fills in %1 .. %9 as they are and %w1 .. %w9 as words.
std::string filled(Language language, std::string_view wording, const std::vector<std::string>& arguments) {
    std::string text;
    for (std::size_t i = 0; i < wording.size(); ++i) {
        if (wording[i] != '%') {
            text += wording[i];
            continue;
        }
        const bool word = wording[i + 1] == 'w';
        i += word ? 2 : 1;
        const auto index = static_cast<std::size_t>(wording[i] - '1');
        const std::string_view argument = index < arguments.size() ? std::string_view(arguments[index]) : "";
        text += word ? translatedWord(language, argument) : argument;
    }
    return text;
}

}  // namespace

Failure worded(Language language, int number, const std::vector<std::string>& arguments) {
    const Message* message = find(number);
    if (message == nullptr) {
        std::string text = std::to_string(number);
        for (const std::string& argument : arguments)
            text += ": " + argument;
        return {FailureKind::other, number, text};
    }
    const auto wording = language == Language::english ? message->english : message->chinese;
    return {message->kind, number, filled(language, wording, arguments)};
}

FailureKind kindOf(int number) {
    const Message* message = find(number);
    return message == nullptr ? FailureKind::other : message->kind;
}

}  // namespace orvenmod::store::tsql
