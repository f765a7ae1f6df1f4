#include "torture/faultyfiles.h"

#include <algorithm>
#include <utility>

#include "torture/states.h"

namespace orvenmod::test {

namespace {

constexpr std::size_t kSector = 512;

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
    lastChanged_.clear();
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
    lastChanged_ = path;
    files_[path].unsynced.push_back({Change::Kind::write, static_cast<std::size_t>(offset),
                                     std::string(static_cast<const char*>(bytes), static_cast<std::size_t>(size))});
}

void FaultyFiles::truncated(const std::string& path, std::int64_t size) {
    if (!watching_) return;
    lastChanged_ = path;
    files_[path].unsynced.push_back({Change::Kind::truncate, static_cast<std::size_t>(size)});
}

void FaultyFiles::removed(const std::string& path) {
    if (!watching_) return;
    lastChanged_ = path;
    files_[path].unsynced.push_back({Change::Kind::remove});
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

FaultyFiles::Image FaultyFiles::imageOf(const Reached& reached) const {
    Image disk;
    for (const auto& [path, kept] : files_) {
        std::vector<Change> sectors;
        for (const Change& change : kept.unsynced) {
            const std::vector<Change> parts = sectorsOf(change);
            sectors.insert(sectors.end(), parts.begin(), parts.end());
        }
        reached(path, sectors);
        std::optional<std::string> contents = kept.synced;
        for (const Change& change : sectors)
            apply(change, contents);
        if (contents) disk[path] = *std::move(contents);
    }
    return disk;
}

FaultyFiles::Image FaultyFiles::image(Survival survival, std::mt19937& random) const {
    return imageOf([&](const std::string&, std::vector<Change>& sectors) {
        if (survival == Survival::nothing) sectors.clear();
        if (survival == Survival::someSectors) std::shuffle(sectors.begin(), sectors.end(), random);
        if (!sectors.empty()) sectors.resize(random() % (sectors.size() + 1));
    });
}

const FaultyFiles::Change* FaultyFiles::lastWrite() const {
    const auto changed = files_.find(lastChanged_);
    if (changed == files_.end() || changed->second.unsynced.empty()) return nullptr;
    const Change& last = changed->second.unsynced.back();
    return last.kind == Change::Kind::write ? &last : nullptr;
}

int FaultyFiles::sectorsOfLastWrite() const {
    const Change* last = lastWrite();
    return last == nullptr ? 0 : static_cast<int>(sectorsOf(*last).size());
}

FaultyFiles::Image FaultyFiles::tornImage(int sectors) const {
    const auto lost = static_cast<std::size_t>(sectorsOfLastWrite() - sectors);
    return imageOf([&](const std::string& path, std::vector<Change>& reached) {
        if (path == lastChanged_) reached.resize(reached.size() - lost);
    });
}

}  // namespace orvenmod::test
