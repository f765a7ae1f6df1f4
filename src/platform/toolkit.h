// Makes windows and asks the user. Implemented by platform/qt and platform/memory. One thread.
#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "platform/date.h"
#include "platform/design.h"
#include "platform/progress.h"
#include "platform/report.h"
#include "platform/window.h"

namespace orvenmod::platform {

enum class MessageKind { warning, information, critical, question };

/// `further` is of the scripts alone: the further button of a warning.
enum class Answer { ok, yes, no, further };

class Toolkit {
public:
    virtual ~Toolkit() = default;

    virtual std::unique_ptr<Window> createWindow(const WindowDesign& design) = 0;

    /// A report, which the toolkit outlives.
    virtual std::unique_ptr<Report> createReport() = 0;

    /// A modal box: OK, or Yes and No for a question, where closing it counts as No.
    virtual Answer message(MessageKind kind, const std::string& text, const std::string& title) = 0;

    /// A modal warning with OK and a further button of that caption; true where that was pressed.
    virtual bool warnOffering(const std::string& text, const std::string& title, const std::string& further) = 0;

    /// Moves the focus on as the Tab key does.
    virtual void sendTab() = 0;

    /// Opens a file with the program that the desktop has for it. Throws std::runtime_error where it can't.
    virtual void openDocument(const std::string& path) = 0;

    /// Paints what waits to be painted and takes no input; for long work within an event.
    virtual void paintPending() = 0;

    /// The same with a display that tells how much of `whole` is done. Work that is soon done shows none.
    virtual std::unique_ptr<Progress> createProgress(const std::string& text, const std::string& title, int whole) = 0;

    /// Shows a failure that escaped an event in the critical box, under the title that setFailureTitle provides.
    void showEscaped(const std::string& text) {
        message(MessageKind::critical, text, failureTitle_ ? failureTitle_() : "");
    }
    void setFailureTitle(std::function<std::string()> title) { failureTitle_ = std::move(title); }

    /// The day on which a day is typed without its year. Before setClock it is none, and such a day is refused.
    std::optional<Date> today() const { return clock_ ? std::optional(clock_()) : std::nullopt; }
    void setClock(std::function<Date()> today) { clock_ = std::move(today); }

private:
    std::function<std::string()> failureTitle_;
    std::function<Date()> clock_;
};

}  // namespace orvenmod::platform
