#include "platform/report/templateline.h"

#include <charconv>
#include <cmath>
#include <stdexcept>

#include "platform/numberformat.h"

namespace orvenmod::platform::report {

namespace {

constexpr double kLongest = 1000;

bool isBlank(char c) { return c == ' ' || c == '\t' || c == '\r'; }

std::optional<double> toNumber(const std::string& text) {
    double value = 0;
    const char* const last = text.data() + text.size();
    const auto [end, error] = std::from_chars(text.data(), last, value);
    if (error != std::errc() || end != last || !std::isfinite(value)) return std::nullopt;
    return value;
}

/// The text of the quote that opens at `at`, which ends up behind the closing one.
std::string readQuoted(int number, std::string_view text, std::size_t& at) {
    std::string word;
    for (++at; at < text.size(); ++at) {
        if (text[at] == '"') {
            ++at;
            if (at == text.size() || text[at] != '"') return word;
        }
        word += text[at];
    }
    failAtLine(number, "应为右引号，实为行尾");
}

}  // namespace

void failAtLine(int number, const std::string& text) {
    throw std::runtime_error("报表模板第 " + std::to_string(number) + " 行：" + text);
}

TemplateLine::TemplateLine(int number, std::string_view text) : number_(number) {
    for (std::size_t at = 0; at < text.size() && text[at] != '#';) {
        if (isBlank(text[at])) {
            ++at;
        } else if (text[at] == '"') {
            words_.push_back({.text = readQuoted(number, text, at), .quoted = true});
        } else {
            std::string word;
            while (at < text.size() && !isBlank(text[at]) && text[at] != '"')
                word += text[at++];
            words_.push_back({.text = word, .quoted = false});
        }
    }
}

void TemplateLine::fail(const std::string& expected) const {
    failAtLine(number_, "应为" + expected + "，实为" + (done() ? "行尾" : "“" + words_[at_].text + "”"));
}

std::string TemplateLine::word(const std::string& expected) {
    if (done()) fail(expected);
    return words_[at_++].text;
}

double TemplateLine::length(const std::string& expected, double least) {
    const auto value = done() || words_[at_].quoted ? std::nullopt : toNumber(words_[at_].text);
    if (!value || *value < least || *value > kLongest)
        fail(expected + "（" + plainNumber(least) + " 到 " + plainNumber(kLongest) + " 的数）");
    ++at_;
    return *value;
}

bool TemplateLine::takes(std::string_view word) {
    if (done() || words_[at_].quoted || words_[at_].text != word) return false;
    ++at_;
    return true;
}

std::optional<std::string> TemplateLine::quoted() {
    if (done() || !words_[at_].quoted) return std::nullopt;
    return words_[at_++].text;
}

bool TemplateLine::numberNext() const { return !done() && !words_[at_].quoted && toNumber(words_[at_].text); }

void TemplateLine::end() {
    if (!done()) fail("行尾");
}

}  // namespace orvenmod::platform::report
