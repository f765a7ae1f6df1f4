// A layer of files below the embedded engine. It passes everything on to the system's, and on demand
//
//   fails      the n-th read, write, sync, truncation, lock, opening or removal, once or from then on
//   runs full  from the n-th write on
//   loses power at the n-th thing that would change a file: from then on nothing happens any more
//
// and it keeps what of each file was synced and what was not, so that after a loss of power images() are what may lie
// on the disk: what was synced, and of the rest nothing, all but the torn end, or any of its sectors in any order. Or
// all of it, the last write torn at one of its sectors.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <random>
#include <string>
#include <vector>

#include <sqlite3.h>

namespace orvenmod::test {

enum class FileAct { open, read, write, sync, truncate, lock, remove };
inline constexpr FileAct kFileActs[] = {FileAct::open,     FileAct::read, FileAct::write, FileAct::sync,
                                        FileAct::truncate, FileAct::lock, FileAct::remove};
const char* wordFor(FileAct act);

struct FileTrouble {
    enum class Kind { none, once, lasting, full, power };

    Kind kind = Kind::none;
    FileAct act = FileAct::write;  ///< of `once` and `lasting`
    int at = 0;                    ///< from 1; of `power` among all that change a file
};

/// How much of what wasn't synced a disk keeps.
enum class Survival { nothing, tornEnd, someSectors };

class FaultyFiles {
public:
    /// The one layer, which every database that is opened from now on lies on.
    static FaultyFiles& instance();

    /// Forgets what was counted and kept, and begins anew with that trouble ahead.
    void begin(const FileTrouble& trouble);
    /// Files are the system's own again.
    void end();

    int count(FileAct act) const { return counts_.at(act); }
    /// Writes, syncs, truncations and removals.
    int changes() const { return changes_; }
    bool struck() const { return struck_; }

    /// What a disk may hold after the loss of power, by path.
    using Image = std::map<std::string, std::string>;
    Image image(Survival survival, std::mt19937& random) const;
    /// Of the last write only its first sectors.
    Image tornImage(int sectors) const;
    /// 0 where nothing is left to be torn.
    int sectorsOfLastWrite() const;

    // For the layer's functions.

    /// The engine's code for what is about to happen, SQLITE_OK where it may.
    int before(FileAct act);
    void opened(const std::string& path);
    void written(const std::string& path, const void* bytes, int size, std::int64_t offset);
    void truncated(const std::string& path, std::int64_t size);
    void removed(const std::string& path);
    void synced(const std::string& path);
    /// What was removed stays so.
    void folderSynced();

private:
    struct Change {
        enum class Kind { write, truncate, remove } kind;
        std::size_t offset = 0;  ///< of `truncate` the size
        std::string bytes = {};
    };
    struct Kept {
        std::optional<std::string> synced;  ///< none: there is no such file
        std::vector<Change> unsynced;
    };

    using Reached = std::function<void(const std::string& path, std::vector<Change>& sectors)>;

    FaultyFiles();
    /// What was synced, and of the rest what `reached` leaves.
    Image imageOf(const Reached& reached) const;
    const Change* lastWrite() const;
    int failureFor(FileAct act) const;
    static void apply(const Change& change, std::optional<std::string>& contents);
    /// A write as one change a sector.
    static std::vector<Change> sectorsOf(const Change& change);

    FileTrouble trouble_;
    bool watching_ = false;
    bool struck_ = false;
    bool powerless_ = false;
    int changes_ = 0;
    std::map<FileAct, int> counts_;
    std::map<std::string, Kept> files_;
    std::string lastChanged_;
};

}  // namespace orvenmod::test
