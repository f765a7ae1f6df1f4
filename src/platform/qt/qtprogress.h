// The progress of long work, in a box with a bar and a button over the window that works.
#pragma once

#include <QElapsedTimer>
#include <memory>
#include <string>

#include "platform/progress.h"
#include "platform/qt/core.h"

namespace orvenmod::platform::qt {

class ProgressBox;

class QtProgress final : public Progress {
public:
    QtProgress(Core& core, std::string text, std::string title, int whole);
    ~QtProgress() override;

    bool advance(int done) override;

private:
    void open();

    Core& core_;
    std::string text_;
    std::string title_;
    int whole_;
    QElapsedTimer begun_;
    QElapsedTimer painted_;
    std::unique_ptr<PlainPointer> pointer_;
    std::unique_ptr<ProgressBox> box_;
};

}  // namespace orvenmod::platform::qt
