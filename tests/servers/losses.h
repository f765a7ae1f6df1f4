// What tests of a server that goes share.
#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <iterator>
#include <string>
#include <vector>

#include "editor/editortest.h"
#include "editor/frmBasicInfo.h"
#include "store/connectionstring.h"
#include "store/postgres/postgresstore.h"
#include "store/tsql/failurenumbers.h"
#include "support/postgresserver.h"
#include "support/rows.h"

namespace orvenmod::test {

inline std::string databaseOf(const std::string& connectionString) {
    return store::ConnectionString(connectionString).get("initial catalog");
}

/// A window of the editor whose item is saved while something happens to the server. The server's own eyes see what is
/// stored, since a loss takes every session.
class LossStage : public EditorStage {
public:
    explicit LossStage(PostgresServer& server)
        : EditorStage(newMemoryScript, newPostgresSite(server)),
          server_(server),
          name_(databaseOf(connectionString())) {}
    ~LossStage() { store::postgres::PostgresStore::dropIdleSessions(); }
    LossStage(const LossStage&) = delete;
    LossStage& operator=(const LossStage&) = delete;

    const std::string& name() const { return name_; }
    /// All rows that a save writes, but the counter, which a failed one may have moved.
    std::string stored() const {
        return server_.run(name_,
                           "SELECT (SELECT count(*) || string_agg(tblitem::text, ';' ORDER BY fitemid) FROM tblitem) "
                           "|| (SELECT count(*) || string_agg(icitem::text, ';' ORDER BY fitemid) FROM icitem) "
                           "|| (SELECT count(*) FROM tblitemfj) || ',' || (SELECT count(*) FROM icitemphoto)");
    }
    void removeNewItems() const {
        server_.run(name_, "DELETE FROM tblitem WHERE fitemid > 202; DELETE FROM icitem WHERE fitemid > 202");
        server_.run(name_, "DELETE FROM tblitemfj; DELETE FROM icitemphoto");
    }

    /// Types an item with a photo and an attachment.
    void fillIn(User& user) {
        const std::string file = makeFile("a.bmp", redBitmap());
        user.typeCell("fps1", kValue, kShortCodeRow, "900");
        typeName(user, "垫圈");
        user.chooseTab("SSTab1", 1);
        user.chooseFile(file);
        user.click("cmdAddFJ");
        user.typeCell("fps2", 3, 1, "图纸");
        user.chooseTab("SSTab1", 2);
        user.chooseFile(file);
        user.click("cmdAdd");
    }
    /// Presses the button, with that happening behind the n-th operation. The user is told each failure of the store in
    /// a box of its own; these failures.
    std::vector<store::TraceRecord> saveWith(User& user, int n, const std::function<void()>& loss) {
        std::vector<store::TraceRecord> failures;
        int operation = 0;
        afterOperation([&](const store::TraceRecord& record) {
            if (record.failed) {
                failures.push_back(record);
                user.answer(MessageKind::critical, record.text);
            }
            if (++operation == n) loss();
        });
        user.clickTool("Save");
        afterOperation({});
        return failures;
    }
    /// Presses it and nothing happens.
    void save(User& user) {
        user.answer(MessageKind::information, kSaved);
        user.clickTool("Save");
    }
    /// The operations of a save, up to its commit.
    Texts operationsOfASave() {
        Texts all;
        openNew([&](User& user) {
            fillIn(user);
            forgetStatements();
            save(user);
            all = operations();
        });
        all.erase(std::next(std::find(all.begin(), all.end(), "commit")), all.end());
        removeNewItems();
        return all;
    }

    static constexpr const char* kSaved = "数据保存成功!";

private:
    PostgresServer& server_;
    std::string name_;
};

}  // namespace orvenmod::test
