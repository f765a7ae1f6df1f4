#include <filesystem>

#include "store/schema.h"
#include "store/sqlite/sqlitestore.h"
#include "support/database.h"
#include "support/dump.h"
#include "support/site.h"
#include "support/temporary.h"

namespace orvenmod::test {

namespace {

const std::string& emptyDatabase() {
    static const TemporaryFolder folder;
    static const std::string file = [] {
        const std::string path = folder.file("empty.db");
        const auto connection = stores().connect(connectionStringFor(path) + ";Mode=Create");
        store::createSchema(*connection);
        connection->close();
        // What is left to another connection would not be in the copies.
        store::sqlite::SqliteStore::dropIdleHandles();
        return path;
    }();
    return file;
}

class FileSite : public Site {
public:
    explicit FileSite(const std::string& file) : file_(file) { std::filesystem::copy_file(emptyDatabase(), file); }

    std::string connectionString() const override { return connectionStringFor(file_); }

    std::string dump() const override { return dumpOf(file_); }

private:
    std::string file_;
};

}  // namespace

std::unique_ptr<Site> newFileSite(const std::string& file) { return std::make_unique<FileSite>(file); }

}  // namespace orvenmod::test
