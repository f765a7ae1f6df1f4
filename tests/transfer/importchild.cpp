// importchild CONNECTION FILE COUNT: brings the file in, and kills itself behind so many operations of its run; 0 for
// never.
#include <signal.h>

#include <gtest/gtest.h>

#include <string>

#include "store/trace.h"
#include "support/childclerk.h"
#include "support/site.h"
#include "transfer/frmImport.h"
#include "transfer/importtest.h"

namespace orvenmod::test {
namespace {

class Importer : public ChildClerk {
public:
    Importer(std::string file, int count) : ChildClerk(file), file_(std::move(file)), count_(count) {}

    Answer onMessage(MessageKind, const std::string& text, const std::string&) override {
        ADD_FAILURE() << text;
        return Answer::ok;
    }
    void noteOperation() {
        if (running_ && --count_ == 0) ::raise(SIGKILL);
    }

private:
    void work(User& user) override {
        toCheck(user, file_);
        running_ = true;
        user.click("cmdNext");
        running_ = false;
    }

    std::string file_;
    int count_;
    bool running_ = false;
};

int run(const std::string& connectionString, const std::string& file, int count) {
    Importer importer(file, count);
    store::TracingStore traced(stores(), [&importer](const store::TraceRecord&) { importer.noteOperation(); });
    NotedListWindow behind;
    return runChild(importer, traced, [&] {
        chooseGoods(connectionString);
        frmImport::instance().show(behind);
    });
}

}  // namespace
}  // namespace orvenmod::test

int main(int count, char** arguments) {
    if (count != 4) return 2;
    ::testing::InitGoogleTest(&count, arguments);
    return orvenmod::test::run(arguments[1], arguments[2], std::stoi(arguments[3]));
}
