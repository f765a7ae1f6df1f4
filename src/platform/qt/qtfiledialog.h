// Asks for a file with Qt's own dialog.
#pragma once

#include <QString>

#include "platform/controls.h"
#include "platform/qt/controlbody.h"
#include "platform/qt/core.h"

class QFileDialog;

namespace orvenmod::platform::qt {

class QtFileDialog final : public QtControl<FileDialog> {
public:
    QtFileDialog(Core& core, const ControlDesign& design) : QtControl(design, nullptr), core_(core) {}

    void setFilter(const std::string& filter) override { filter_ = filter; }
    bool showOpen() override;
    bool showSave() override;
    std::string fileName() const override;
    std::string fileTitle() const override;

private:
    bool run(QFileDialog& dialog);

    Core& core_;
    std::string filter_;
    QString chosen_;
    QString folder_;
};

/// The filters of the dialog from "caption|pattern|caption|pattern".
QStringList nameFilters(const std::string& pairs);

}  // namespace orvenmod::platform::qt
