// A box of the sample's own. Its text shows as it is: a failure may quote signs of markup.
#pragma once

#include <QMessageBox>

namespace orvenmod::sample {

inline QMessageBox::StandardButton showBox(QWidget* parent, QMessageBox::Icon icon, const QString& title,
                                           const QString& text,
                                           QMessageBox::StandardButtons buttons = QMessageBox::Ok) {
    QMessageBox box(icon, title, text, buttons, parent);
    box.setTextFormat(Qt::PlainText);
    if (buttons.testFlag(QMessageBox::Yes)) box.setDefaultButton(QMessageBox::Yes);
    return static_cast<QMessageBox::StandardButton>(box.exec());
}

}  // namespace orvenmod::sample
