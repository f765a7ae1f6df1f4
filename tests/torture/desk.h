// A clerk who does one command on a database where anything may fail: answers every question with yes, remembers every
// box, and never fails a test by what a window can't do any more.
//
//     Desk desk(connectionStringFor(file));
//     desk.play(command);
//     desk.told()        the command told that it is done
//     desk.boxes()       what was shown
//     desk.escaped()     the text of a failure that went to the host
#pragma once

#include <functional>
#include <map>
#include <ostream>
#include <string>
#include <vector>

#include "platform/desktop/plaininifiles.h"
#include "platform/desktop/processfolders.h"
#include "platform/memory/memorytoolkit.h"
#include "support/childclerk.h"
#include "support/stage.h"
#include "support/windowtest.h"

namespace orvenmod::test {

class Desk;

struct Command {
    enum class On { suite, firstVersion, nothing };  ///< which database it works on

    std::string name;
    std::string success = {};  ///< the box that tells it; "" where act() tells it
    std::function<void(Desk&)> act;
    bool changes = true;
    On on = On::suite;
};

/// How gtest names it.
inline void PrintTo(const Command& command, std::ostream* out) { *out << command.name; }

class Desk : private ChildClerk {
public:
    /// `folder` holds what the clerk adds and exports.
    Desk(const std::string& connectionString, const std::string& folder);
    ~Desk() override;

    /// Goes through all of the command, whatever fails.
    void play(const Command& command);

    bool told() const { return told_; }
    const std::vector<ShownMessage>& boxes() const { return boxes_; }
    const std::string& escaped() const { return escaped_; }
    /// Everything that was told, for a test's message.
    std::string account() const;
    int connectionsAlive() const { return counting_.alive(); }

    // For commands.

    const std::string& connectionString() const { return connectionString_; }
    std::string file(const std::string& name) const { return folder_ + "/" + name; }
    void onWindow(const std::string& name, Steps steps) { windows_[name] = std::move(steps); }
    void tell() { told_ = true; }
    /// What a window tells without a box.
    void hear(const std::string& text) { boxes_.push_back({MessageKind::warning, text, ""}); }

    /// Around what the clerk himself does, where only the component may meet what fails.
    std::function<void(bool entering)> aside;

private:
    class Aside;

    void onModal(platform::memory::MemoryWindow& window) override;
    platform::Answer onMessage(platform::MessageKind kind, const std::string& text, const std::string& title) override;
    void work(User& user) override;
    void begin();

    std::string connectionString_;
    std::string folder_;
    std::map<std::string, Steps> windows_;
    std::vector<ShownMessage> boxes_;
    std::string escaped_;
    std::string success_;
    bool told_ = false;

    platform::memory::MemoryToolkit toolkit_{*this};
    MapSettings settings_;
    FixedClock clock_;
    platform::desktop::PlainIniFiles iniFiles_;
    platform::desktop::ProcessFolders folders_;
    CountingStore counting_{stores()};
    Services services_{counting_, toolkit_, settings_, iniFiles_, folders_, clock_};
};

}  // namespace orvenmod::test
