// The layer as the engine calls it: a file of ours, and behind it in the same memory the system's.
#include <cstring>
#include <new>
#include <stdexcept>
#include <utility>

#include "torture/faultyfiles.h"

namespace orvenmod::test {

namespace {

struct OurFile {
    sqlite3_file base;
    std::string* path;  // null for files without a name
    sqlite3_file* system;
    bool folderDue;  // the system syncs the folder of a new journal when that is synced first
};

sqlite3_vfs* systemFiles = nullptr;

OurFile& ours(sqlite3_file* file) { return *reinterpret_cast<OurFile*>(file); }
sqlite3_file* behind(sqlite3_file* file) { return ours(file).system; }
const sqlite3_io_methods& of(sqlite3_file* file) { return *behind(file)->pMethods; }
FaultyFiles& layer() { return FaultyFiles::instance(); }

int xClose(sqlite3_file* file) {
    const int code = of(file).xClose(behind(file));
    delete ours(file).path;
    ours(file).path = nullptr;
    return code;
}
int xRead(sqlite3_file* file, void* bytes, int size, sqlite3_int64 offset) {
    const int failure = layer().before(FileAct::read);
    return failure != SQLITE_OK ? failure : of(file).xRead(behind(file), bytes, size, offset);
}
int xWrite(sqlite3_file* file, const void* bytes, int size, sqlite3_int64 offset) {
    const int failure = layer().before(FileAct::write);
    if (failure != SQLITE_OK) return failure;
    const int code = of(file).xWrite(behind(file), bytes, size, offset);
    if (code == SQLITE_OK && ours(file).path != nullptr) layer().written(*ours(file).path, bytes, size, offset);
    return code;
}
int xTruncate(sqlite3_file* file, sqlite3_int64 size) {
    const int failure = layer().before(FileAct::truncate);
    if (failure != SQLITE_OK) return failure;
    const int code = of(file).xTruncate(behind(file), size);
    if (code == SQLITE_OK && ours(file).path != nullptr) layer().truncated(*ours(file).path, size);
    return code;
}
// The system isn't asked: only what the layer keeps has to be on its disk.
int xSync(sqlite3_file* file, int) {
    const int failure = layer().before(FileAct::sync);
    if (failure != SQLITE_OK || ours(file).path == nullptr) return failure;
    layer().synced(*ours(file).path);
    if (std::exchange(ours(file).folderDue, false)) layer().folderSynced();
    return SQLITE_OK;
}
int xFileSize(sqlite3_file* file, sqlite3_int64* size) { return of(file).xFileSize(behind(file), size); }
int xLock(sqlite3_file* file, int kind) {
    const int failure = layer().before(FileAct::lock);
    return failure != SQLITE_OK ? failure : of(file).xLock(behind(file), kind);
}
int xUnlock(sqlite3_file* file, int kind) { return of(file).xUnlock(behind(file), kind); }
int xCheckReservedLock(sqlite3_file* file, int* result) { return of(file).xCheckReservedLock(behind(file), result); }
int xFileControl(sqlite3_file* file, int what, void* argument) {
    return of(file).xFileControl(behind(file), what, argument);
}
int xSectorSize(sqlite3_file* file) { return of(file).xSectorSize(behind(file)); }
int xDeviceCharacteristics(sqlite3_file* file) { return of(file).xDeviceCharacteristics(behind(file)); }
int xShmMap(sqlite3_file* file, int region, int size, int extend, void volatile** memory) {
    return of(file).xShmMap(behind(file), region, size, extend, memory);
}
int xShmLock(sqlite3_file* file, int offset, int count, int flags) {
    const bool taken = (flags & SQLITE_SHM_LOCK) != 0;
    const int failure = taken ? layer().before(FileAct::lock) : SQLITE_OK;
    return failure != SQLITE_OK ? failure : of(file).xShmLock(behind(file), offset, count, flags);
}
void xShmBarrier(sqlite3_file* file) { of(file).xShmBarrier(behind(file)); }
int xShmUnmap(sqlite3_file* file, int remove) { return of(file).xShmUnmap(behind(file), remove); }

const sqlite3_io_methods kMethods = {2,
                                     xClose,
                                     xRead,
                                     xWrite,
                                     xTruncate,
                                     xSync,
                                     xFileSize,
                                     xLock,
                                     xUnlock,
                                     xCheckReservedLock,
                                     xFileControl,
                                     xSectorSize,
                                     xDeviceCharacteristics,
                                     xShmMap,
                                     xShmLock,
                                     xShmBarrier,
                                     xShmUnmap,
                                     nullptr,
                                     nullptr};

int xOpen(sqlite3_vfs*, const char* path, sqlite3_file* file, int flags, int* given) {
    OurFile& made = ours(file);
    made.base.pMethods = nullptr;
    made.path = nullptr;
    made.folderDue = false;
    made.system = reinterpret_cast<sqlite3_file*>(&made + 1);
    const int failure = layer().before(FileAct::open);
    if (failure != SQLITE_OK) return failure;
    const int code = systemFiles->xOpen(systemFiles, path, made.system, flags, given);
    if (made.system->pMethods != nullptr) made.base.pMethods = &kMethods;
    if (code != SQLITE_OK) return code;
    constexpr int kLasting = SQLITE_OPEN_MAIN_DB | SQLITE_OPEN_WAL | SQLITE_OPEN_MAIN_JOURNAL;
    if (path != nullptr && (flags & kLasting) != 0) {
        made.path = new std::string(path);
        made.folderDue = (flags & SQLITE_OPEN_CREATE) != 0 && (flags & SQLITE_OPEN_MAIN_DB) == 0;
        layer().opened(*made.path);
    }
    return SQLITE_OK;
}

int xDelete(sqlite3_vfs*, const char* path, int syncFolder) {
    const int failure = layer().before(FileAct::remove);
    if (failure != SQLITE_OK) return failure;
    const int code = systemFiles->xDelete(systemFiles, path, 0);
    if (code != SQLITE_OK) return code;
    layer().removed(path);
    if (syncFolder != 0) layer().folderSynced();
    return SQLITE_OK;
}

}  // namespace

FaultyFiles::FaultyFiles() {
    systemFiles = sqlite3_vfs_find(nullptr);
    static sqlite3_vfs files = *systemFiles;
    files.zName = "orven-faulty";
    files.pNext = nullptr;
    files.szOsFile = static_cast<int>(sizeof(OurFile)) + systemFiles->szOsFile;
    files.xOpen = xOpen;
    files.xDelete = xDelete;
    if (sqlite3_vfs_register(&files, 1) != SQLITE_OK) throw std::logic_error("the engine takes no files of ours");
}

FaultyFiles& FaultyFiles::instance() {
    // Never destroyed: handles may outlive everything that is.
    static auto* const layer = new FaultyFiles;
    return *layer;
}

}  // namespace orvenmod::test
