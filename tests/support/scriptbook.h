// What the scripted users of both toolkits share: the steps, answers and files laid out for a test, taken in order, and
// what was shown. Whatever wasn't laid out fails the test and gets the safe answer.
#pragma once

#include <deque>
#include <functional>
#include <list>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "support/user.h"

namespace orvenmod::test {

class ScriptBook {
public:
    using Steps = std::function<void(User&)>;

    void addWindow(const std::string& name, Steps steps) { windows_.emplace_back(name, std::move(steps)); }
    /// The next steps for that window; none where it wasn't laid out, and the test fails.
    std::optional<Steps> takeWindow(const std::string& name);

    void addAnswer(platform::MessageKind kind, const std::string& text, platform::Answer answer);
    /// The answer to a box that is shown now.
    platform::Answer takeAnswer(platform::MessageKind kind, const std::string& text, const std::string& title);

    void addFile(const std::string& path) { files_.push_back(path); }
    /// "" cancels.
    std::string takeFile();

    void addCancel(int done) { cancelAt_ = done; }
    bool awaitsCancel() const { return cancelAt_.has_value(); }
    /// Whether the user cancels the work of which so much is done; asked no more then.
    bool takeCancel(int done);

    void addDocument(const std::string& path) { documents_.push_back(path); }

    const std::vector<ShownMessage>& messages() const { return messages_; }
    void forgetMessages() { messages_.clear(); }
    const std::vector<std::string>& documents() const { return documents_; }
    /// Fails the test for what is left over, and forgets it.
    void finish();

private:
    struct ExpectedBox {
        platform::MessageKind kind;
        std::string text;
        platform::Answer answer;
    };

    std::list<std::pair<std::string, Steps>> windows_;
    std::deque<ExpectedBox> boxes_;
    std::deque<std::string> files_;
    std::optional<int> cancelAt_;
    std::vector<ShownMessage> messages_;
    std::vector<std::string> documents_;
};

/// A script whose steps, answers and notes stand in the book.
class BookedScript : public Script {
public:
    void onWindow(const std::string& name, ScriptBook::Steps steps) override {
        book_.addWindow(name, std::move(steps));
    }
    void answer(platform::MessageKind kind, const std::string& text, platform::Answer answer) override {
        book_.addAnswer(kind, text, answer);
    }
    void cancelProgress(int done) override { book_.addCancel(done); }
    const std::vector<ShownMessage>& messages() const override { return book_.messages(); }
    void forgetMessages() override { book_.forgetMessages(); }
    const std::vector<std::string>& documents() const override { return book_.documents(); }
    void finish() override { book_.finish(); }

protected:
    ScriptBook book_;
};

/// "question box: text".
std::string describeBox(platform::MessageKind kind, const std::string& text);

}  // namespace orvenmod::test
