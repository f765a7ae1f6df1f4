#include "torture/faultyfiles.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <utility>

namespace orvenmod::test {

namespace {

constexpr std::size_t kSector = 512;

std::string contentsOf(const std::string& path) {
    std::ostringstream text;
    text << std::ifstream(path, std::ios::binary).rdbuf();
    return text.str();
}

bool changesFiles(FileAct act) {
    return act == FileAct::write || act == FileAct::sync || act == FileAct::truncate || act == FileAct::remove;
}

}  // namespace

const char* wordFor(FileAct act) {
    constexpr const char* kWords[] = {"open", "read", "write", "sync", "truncate", "lock", "remove"};
    return kWords[static_cast<int>(act)];
}

void FaultyFiles::begin(const FileTrouble& trouble) {
    end();
    trouble_ = trouble;
    struck_ = powerless_ = false;
    changes_ = 0;
    for (const FileAct act : kFileActs)
        counts_[act] = 0;
    files_.clear();
    watching_ = true;
}

void FaultyFiles::end() {
    watching_ = powerless_ = false;
    trouble_ = {};
}

int FaultyFiles::before(FileAct act) {
    if (!watching_) return SQLITE_OK;
    const int count = ++counts_[act];
    if (changesFiles(act)) ++changes_;
    switch (trouble_.kind) {
        case FileTrouble::Kind::none:
            return SQLITE_OK;
        case FileTrouble::Kind::power:
            powerless_ = powerless_ || changes_ >= trouble_.at;
            struck_ = struck_ || powerless_;
            return powerless_ ? failureFor(act) : SQLITE_OK;
        case FileTrouble::Kind::full:
            if (act != FileAct::write || count < trouble_.at) return SQLITE_OK;
            struck_ = true;
            return SQLITE_FULL;
        case FileTrouble::Kind::once:
        case FileTrouble::Kind::lasting:
            break;
    }
    const bool due = trouble_.kind == FileTrouble::Kind::once ? count == trouble_.at : count >= trouble_.at;
    if (act != trouble_.act || !due) return SQLITE_OK;
    struck_ = true;
    return failureFor(act);
}

int FaultyFiles::failureFor(FileAct act) const {
    switch (act) {
        case FileAct::open:
            return SQLITE_CANTOPEN;
        case FileAct::read:
            return SQLITE_IOERR_READ;
        case FileAct::write:
            return SQLITE_IOERR_WRITE;
        case FileAct::sync:
            return SQLITE_IOERR_FSYNC;
        case FileAct::truncate:
            return SQLITE_IOERR_TRUNCATE;
        case FileAct::lock:
            return SQLITE_IOERR_LOCK;
        case FileAct::remove:
            return SQLITE_IOERR_DELETE;
    }
    return SQLITE_IOERR;
}

void FaultyFiles::opened(const std::string& path) {
    if (!watching_ || files_.contains(path)) return;
    // A file that was just made has no contents that a disk would keep.
    files_[path].synced = contentsOf(path);
}

void FaultyFiles::written(const std::string& path, const void* bytes, int size, std::int64_t offset) {
    if (!watching_) return;
    files_[path].unsynced.push_back({Change::Kind::write, static_cast<std::size_t>(offset),
                                     std::string(static_cast<const char*>(bytes), static_cast<std::size_t>(size))});
}

void FaultyFiles::truncated(const std::string& path, std::int64_t size) {
    if (watching_) files_[path].unsynced.push_back({Change::Kind::truncate, static_cast<std::size_t>(size)});
}

void FaultyFiles::removed(const std::string& path) {
    if (watching_) files_[path].unsynced.push_back({Change::Kind::remove});
}

void FaultyFiles::synced(const std::string& path) {
    if (!watching_) return;
    Kept& kept = files_[path];
    for (const Change& change : kept.unsynced)
        apply(change, kept.synced);
    kept.unsynced.clear();
}

void FaultyFiles::folderSynced() {
    for (auto& [path, kept] : files_) {
        const bool gone = !kept.unsynced.empty() && kept.unsynced.back().kind == Change::Kind::remove;
        if (gone) synced(path);
    }
}

void FaultyFiles::apply(const Change& change, std::optional<std::string>& contents) {
    if (change.kind == Change::Kind::remove) return contents.reset();
    if (!contents) contents.emplace();
    if (change.kind == Change::Kind::truncate) return contents->resize(change.offset);
    contents->resize(std::max(contents->size(), change.offset + change.bytes.size()));
    contents->replace(change.offset, change.bytes.size(), change.bytes);
}

std::vector<FaultyFiles::Change> FaultyFiles::sectorsOf(const Change& change) {
    if (change.kind != Change::Kind::write) return {change};
    std::vector<Change> sectors;
    for (std::size_t at = 0; at < change.bytes.size();) {
        const std::size_t offset = change.offset + at;
        const std::size_t size = std::min(kSector - offset % kSector, change.bytes.size() - at);
        sectors.push_back({Change::Kind::write, offset, change.bytes.substr(at, size)});
        at += size;
    }
    return sectors;
}

std::map<std::string, std::string> FaultyFiles::image(Survival survival, std::mt19937& random) const {
    std::map<std::string, std::string> disk;
    for (const auto& [path, kept] : files_) {
        std::vector<Change> reached;
        for (const Change& change : kept.unsynced) {
            const std::vector<Change> sectors = sectorsOf(change);
            reached.insert(reached.end(), sectors.begin(), sectors.end());
        }
        if (survival == Survival::nothing) reached.clear();
        if (survival == Survival::tornEnd && !reached.empty()) reached.resize(random() % (reached.size() + 1));
        if (survival == Survival::someSectors) {
            std::shuffle(reached.begin(), reached.end(), random);
            if (!reached.empty()) reached.resize(random() % (reached.size() + 1));
        }
        std::optional<std::string> contents = kept.synced;
        for (const Change& change : reached)
            apply(change, contents);
        if (contents) disk[path] = *std::move(contents);
    }
    return disk;
}

}  // namespace orvenmod::test
