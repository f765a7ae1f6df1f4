#include <QApplication>
#include <QPainter>
#include <QPixmap>
#include <fstream>
#include <stdexcept>

#include "samplewriter.h"
#include "visitor.h"

namespace orvenmod::sample {
namespace {

// Menus and opened lists, and the boxes of the window.
bool liesOver(const QWidget& above, const QWidget& window) {
    if (&above == &window || !above.isVisible()) return false;
    if (above.windowType() == Qt::Popup) return true;
    const QWidget* owner = above.parentWidget();
    while (owner != nullptr && owner != &window)
        owner = owner->parentWidget();
    return owner != nullptr;
}

}  // namespace

Album::Album(std::string folder) : folder_(std::move(folder)) {}

std::string Album::next(const std::string& name, const std::string& caption) {
    const std::string file = padded(static_cast<int>(pictures_.size()) + 1, 2) + "-" + name + ".png";
    pictures_.emplace_back(file, caption);
    return folder_ + "/" + file;
}

void Album::add(QWidget& widget, const std::string& name, const std::string& caption) {
    const std::string path = next(name, caption);
    std::vector<QWidget*> above;
    QRect whole = widget.geometry();
    for (QWidget* each : QApplication::topLevelWidgets()) {
        if (!liesOver(*each, widget)) continue;
        above.push_back(each);
        whole |= each->geometry();
    }
    QPixmap picture(whole.size());
    picture.fill(Qt::white);
    {
        QPainter painter(&picture);
        painter.drawPixmap(widget.geometry().topLeft() - whole.topLeft(), widget.grab());
        for (QWidget* each : above) {
            const QRect place = each->geometry().translated(-whole.topLeft());
            painter.drawPixmap(place.topLeft(), each->grab());
            // There is no window frame in a picture; a box still needs an edge.
            painter.setPen(each->palette().color(QPalette::Dark));
            painter.drawRect(place.adjusted(0, 0, -1, -1));
        }
    }
    if (!picture.save(QString::fromStdString(path))) throw std::runtime_error("can't write " + path);
}

std::string Album::list() const {
    std::string text;
    for (const auto& [file, caption] : pictures_)
        text.append(file).append("  ").append(caption).append("\n");
    std::ofstream(folder_ + "/pictures.txt") << text;
    return text;
}

}  // namespace orvenmod::sample
