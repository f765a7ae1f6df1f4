// What the parts of the toolkit share: the guard around the handlers, the stack of modal windows and the hooks of
// drivers.
#pragma once

#include <QCursor>
#include <QPoint>
#include <QScopedValueRollback>
#include <chrono>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "platform/toolkit.h"

class QWidget;

namespace orvenmod::platform::qt {

class Core {
public:
    explicit Core(Toolkit& toolkit) : toolkit_(toolkit) {}

    /// Runs a handler of an event that the user caused: a failure is shown and goes no further.
    void guard(const std::function<void()>& handler) const;

    /// The same for a command (a menu, a button): what is being typed into a grid's cell is taken over first. Where
    /// the cell refuses it the command doesn't run.
    void command(const std::function<void()>& handler) const;

    void showEscaped(const std::string& text) const { toolkit_.showEscaped(text); }

    /// See Toolkit::createProgress.
    std::unique_ptr<Progress> createProgress(const std::string& text, const std::string& title, int whole) const {
        return toolkit_.createProgress(text, title, whole);
    }

    /// See Toolkit::today.
    std::optional<Date> today() const { return toolkit_.today(); }

    /// The window that new boxes and windows lie over: the innermost of the modal ones, else the host's active one.
    QWidget* front() const;

    /// While it lives an event's handler lets paint, and no window ticks.
    QScopedValueRollback<bool> paintingWithin() { return QScopedValueRollback<bool>(paintsWithin_, true); }
    bool paintsWithin() const { return paintsWithin_; }

    void pushModal(QWidget* window) { modals_.push_back(window); }
    void popModal(QWidget* window);

    std::function<void(Window&)> modalObserver;
    std::function<void(const std::string&)> documentOpener;
    std::string printFile;  ///< "" asks with the print dialog

    /// When work counts as long, and how often its display is renewed.
    std::chrono::milliseconds progressDelay{};
    std::chrono::milliseconds progressInterval{};

    std::chrono::milliseconds tickInterval{};  ///< between the ticks of a window

    /// Where the next menu pops up, in global coordinates: set while a mouse or menu key event is raised.
    std::optional<QPoint> popUpPlace;

private:
    Toolkit& toolkit_;
    std::vector<QWidget*> modals_;
    bool paintsWithin_ = false;
};

/// While it lives the mouse pointer is its own again, for a box over a window that shows the hourglass.
class PlainPointer {
public:
    PlainPointer();
    ~PlainPointer();
    PlainPointer(const PlainPointer&) = delete;
    PlainPointer& operator=(const PlainPointer&) = delete;

private:
    std::vector<QCursor> hidden_;
};

}  // namespace orvenmod::platform::qt
