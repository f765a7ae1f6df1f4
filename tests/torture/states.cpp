#include "torture/states.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <sstream>

#include "store/sqlite/sqlitestore.h"
#include "support/dump.h"

namespace orvenmod::test {

std::string stateOf(const std::string& database) {
    if (!std::filesystem::exists(database)) return {};
    std::istringstream lines(dumpOf(database));
    std::string kept;
    for (std::string line; std::getline(lines, line);)
        if (!line.starts_with("tblMaxNum: ")) kept += line + "\n";
    return kept;
}

std::string contentsOf(const std::string& path) {
    std::ostringstream bytes;
    bytes << std::ifstream(path, std::ios::binary).rdbuf();
    return bytes.str();
}

std::string difference(const std::string& one, const std::string& other) {
    std::istringstream ones(one);
    std::istringstream others(other);
    std::string left;
    std::string right;
    do {
        left = right = "its end";
        std::getline(ones, left);
        std::getline(others, right);
    } while (left == right && ones && others);
    return "  " + left + "\n  instead of\n  " + right + "\n";
}

bool isSound(const std::string& database) {
    return !std::filesystem::exists(database) || integrityOf(database) == "ok";
}

void removeDatabase(const std::string& database) {
    store::sqlite::SqliteStore::dropIdleHandles();
    for (const char* part : {"", "-wal", "-shm", "-journal"})
        std::filesystem::remove(database + part);
}

bool stumbled(const Desk& desk) {
    return std::ranges::any_of(desk.boxes(), [](const ShownMessage& box) { return box.kind == MessageKind::critical; });
}

}  // namespace orvenmod::test
