#include "support/scriptbook.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "support/serverdifferences.h"

namespace orvenmod::test {

using platform::Answer;
using platform::MessageKind;

std::string describeBox(MessageKind kind, const std::string& text) {
    constexpr const char* kNames[] = {"warning", "information", "critical", "question"};
    return std::string(kNames[static_cast<int>(kind)]) + " box: " + text;
}

std::optional<ScriptBook::Steps> ScriptBook::takeWindow(const std::string& name) {
    const auto it =
        std::find_if(windows_.begin(), windows_.end(), [&name](const auto& each) { return each.first == name; });
    if (it == windows_.end()) {
        ADD_FAILURE() << "the window " << name << " opened and the test has no script for it";
        return std::nullopt;
    }
    Steps steps = std::move(it->second);
    windows_.erase(it);
    return steps;
}

void ScriptBook::addAnswer(MessageKind kind, const std::string& text, Answer answer) {
    boxes_.push_back({kind, text, answer});
}

Answer ScriptBook::takeAnswer(MessageKind kind, const std::string& text, const std::string& title) {
    messages_.push_back({kind, text, title});
    const Answer safe = kind == MessageKind::question ? Answer::no : Answer::ok;
    if (boxes_.empty()) {
        ADD_FAILURE() << "unexpected " << describeBox(kind, text);
        return safe;
    }
    const ExpectedBox& next = boxes_.front();
    if (next.kind != kind || (next.text != text && !isServersWordingOf(text, next.text))) {
        ADD_FAILURE() << "unexpected " << describeBox(kind, text) << "\n  expected "
                      << describeBox(next.kind, next.text);
        return safe;
    }
    const Answer answer = next.answer;
    boxes_.pop_front();
    const bool settles = answer == Answer::ok || answer == Answer::further;
    if ((kind == MessageKind::question) == settles) {
        ADD_FAILURE() << "no such answer on a " << describeBox(kind, text);
        return safe;
    }
    return answer;
}

std::string ScriptBook::takeFile() {
    if (files_.empty()) {
        ADD_FAILURE() << "a file dialog opened and the test has no file for it";
        return {};
    }
    std::string path = files_.front();
    files_.pop_front();
    return path;
}

bool ScriptBook::takeCancel(int done) {
    if (!cancelAt_ || done < *cancelAt_) return false;
    cancelAt_.reset();
    return true;
}

void ScriptBook::finish() {
    for (const auto& [name, steps] : windows_)
        ADD_FAILURE() << "the window " << name << " never opened";
    for (const ExpectedBox& box : boxes_)
        ADD_FAILURE() << "never shown: " << describeBox(box.kind, box.text);
    for (const std::string& path : files_)
        ADD_FAILURE() << "no file dialog asked for " << path;
    if (cancelAt_) ADD_FAILURE() << "no work came to " << *cancelAt_ << ", where it was to be cancelled";
    windows_.clear();
    boxes_.clear();
    files_.clear();
    cancelAt_.reset();
}

}  // namespace orvenmod::test
