// The toolkit in Qt Widgets. Made by the component's start-up; no Qt shows here, so that whoever makes it needs none.
// Where the process has no QApplication yet the toolkit makes one, which then lives as long as the process. One thread,
// the host's, which must be the one that made the QApplication.
#pragma once

#include <chrono>
#include <functional>
#include <memory>
#include <string>

#include "platform/toolkit.h"

namespace orvenmod::platform::qt {

class Core;

inline constexpr std::chrono::milliseconds kProgressDelay{500};
inline constexpr std::chrono::milliseconds kProgressInterval{50};
inline constexpr std::chrono::milliseconds kTickInterval{20'000};

class QtToolkit final : public Toolkit {
public:
    QtToolkit();
    ~QtToolkit() override;

    std::unique_ptr<Window> createWindow(const WindowDesign& design) override;
    std::unique_ptr<Report> createReport() override;
    Answer message(MessageKind kind, const std::string& text, const std::string& title) override;
    bool warnOffering(const std::string& text, const std::string& title, const std::string& further) override;
    void sendTab() override;
    void openDocument(const std::string& path) override;
    void paintPending() override;
    std::unique_ptr<Progress> createProgress(const std::string& text, const std::string& title, int whole) override;

    /// Throws std::runtime_error where no window can be shown any more: the host has deleted its QApplication, or that
    /// is another thread's by now.
    void requireApplication() const;

    /// For drivers (a tour, tests): called for each modal window once it has loaded, is painted and its loop runs.
    void setModalObserver(std::function<void(Window&)> observer);

    /// Takes the place of the desktop's programs in openDocument.
    void setDocumentOpener(std::function<void(const std::string& path)> opener);

    /// Prints go to that PDF file instead of asking with the print dialog; "" asks again.
    void setPrintFile(const std::string& path);

    /// Long work shows itself after the delay, and is renewed at that interval.
    void setProgressPace(std::chrono::milliseconds delay = kProgressDelay,
                         std::chrono::milliseconds interval = kProgressInterval);

    /// The windows shown from now on tick at that interval.
    void setTickInterval(std::chrono::milliseconds interval = kTickInterval);

    /// Writes the window, with the menus, lists and boxes that are open over it, as a picture; the suffix names the
    /// format. Throws std::runtime_error where the window is none of this toolkit or the file can't be written.
    void savePicture(const Window& window, const std::string& path) const;

private:
    std::unique_ptr<Core> core_;
};

}  // namespace orvenmod::platform::qt
