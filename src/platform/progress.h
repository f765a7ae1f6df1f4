// How far long work within an event has come: shown to the user who waits, and who may cancel it. Made by the toolkit,
// called by the windows' logic. One thread.
#pragma once

namespace orvenmod::platform {

class Progress {
public:
    Progress() = default;
    /// Takes the display away.
    virtual ~Progress() = default;
    Progress(const Progress&) = delete;
    Progress& operator=(const Progress&) = delete;

    /// So much of the whole is done. To be called several times a second, and at the whole while an end without measure
    /// goes on. Paints what waits to be painted; takes no input but the display's own. False, and false from then on,
    /// where the user has cancelled.
    virtual bool advance(int done) = 0;
};

}  // namespace orvenmod::platform
