#include "platform/qt/qtfiledialog.h"

#include <QFileDialog>
#include <QFileInfo>
#include <QMessageBox>
#include <QRegularExpression>
#include <QStandardPaths>

#include "platform/partialfile.h"
#include "platform/qt/text.h"
#include "platform/qt/windowlook.h"

namespace orvenmod::platform::qt {

namespace {

/// Asks before a file is replaced, as the dialog itself does, which takes a name with signs of markup for some. Asks
/// again where the file may not be replaced.
class SaveDialog : public QFileDialog {
public:
    explicit SaveDialog(QWidget* parent) : QFileDialog(parent) { setOption(QFileDialog::DontConfirmOverwrite); }
    void accept() override {
        const QFileInfo file(selectedFiles().value(0));
        const std::string path = fromQt(file.filePath());
        if (isReadOnly(path)) {
            ask(toQt(readOnlyRefusal(path)), QMessageBox::Ok);
            return;
        }
        const bool replaces = file.exists() && !file.isDir();
        if (replaces && ask(QFileDialog::tr("%1 already exists.\nDo you want to replace it?").arg(file.fileName()),
                            QMessageBox::Yes | QMessageBox::No) != QMessageBox::Yes)
            return;
        QFileDialog::accept();
    }

private:
    int ask(const QString& text, QMessageBox::StandardButtons buttons) {
        QMessageBox box(QMessageBox::Warning, windowTitle(), text, buttons, this);
        box.setTextFormat(Qt::PlainText);
        if (buttons.testFlag(QMessageBox::No)) box.setDefaultButton(QMessageBox::No);
        return box.exec();
    }
};

/// "xls" of "Excel文件(*.xls)".
QString suffixOf(const QString& filter) {
    static const QRegularExpression suffix(QStringLiteral("\\(\\*\\.(\\w+)\\)$"));
    return suffix.match(filter).captured(1);
}

}  // namespace

QStringList nameFilters(const std::string& pairs) {
    const QStringList parts = toQt(pairs).split(QLatin1Char('|'));
    static const QRegularExpression bracket(QStringLiteral("\\s*\\([^()]*\\)\\s*$"));
    QStringList filters;
    for (qsizetype at = 0; at + 1 < parts.size(); at += 2) {
        QString caption = parts[at];
        QString pattern = parts[at + 1];
        caption.remove(bracket);
        filters << QStringLiteral("%1(%2)").arg(caption, pattern.replace(QLatin1Char(';'), QLatin1Char(' ')));
    }
    return filters;
}

bool QtFileDialog::showOpen() {
    QFileDialog dialog(core_.front());
    dialog.setAcceptMode(QFileDialog::AcceptOpen);
    dialog.setFileMode(QFileDialog::ExistingFile);
    return run(dialog);
}

bool QtFileDialog::showSave() {
    SaveDialog dialog(core_.front());
    dialog.setAcceptMode(QFileDialog::AcceptSave);
    dialog.setFileMode(QFileDialog::AnyFile);
    const QStringList filters = nameFilters(filter_);
    dialog.setDefaultSuffix(suffixOf(filters.value(0)));
    QObject::connect(&dialog, &QFileDialog::filterSelected, &dialog,
                     [&dialog](const QString& filter) { dialog.setDefaultSuffix(suffixOf(filter)); });
    return run(dialog);
}

bool QtFileDialog::run(QFileDialog& dialog) {
    const PlainPointer pointer;
    dressBox(dialog);
    dialog.setObjectName(toQt(name()));
    dialog.setOption(QFileDialog::DontUseNativeDialog);
    const QStringList filters = nameFilters(filter_);
    if (!filters.isEmpty()) dialog.setNameFilters(filters);
    if (folder_.isEmpty()) folder_ = QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation);
    if (!folder_.isEmpty()) dialog.setDirectory(folder_);
    if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty()) return false;
    chosen_ = dialog.selectedFiles().constFirst();
    folder_ = dialog.directory().absolutePath();
    return true;
}

std::string QtFileDialog::fileName() const { return fromQt(chosen_); }

std::string QtFileDialog::fileTitle() const { return fromQt(QFileInfo(chosen_).fileName()); }

}  // namespace orvenmod::platform::qt
