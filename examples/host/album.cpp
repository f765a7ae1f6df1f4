#include <QPixmap>
#include <fstream>
#include <stdexcept>

#include "samplewriter.h"
#include "visitor.h"

namespace orvenmod::sample {

Album::Album(std::string folder, platform::qt::QtToolkit& toolkit) : folder_(std::move(folder)), toolkit_(toolkit) {}

std::string Album::next(const std::string& name, const std::string& caption) {
    const std::string file = padded(static_cast<int>(pictures_.size()) + 1, 2) + "-" + name + ".png";
    pictures_.emplace_back(file, caption);
    return folder_ + "/" + file;
}

void Album::add(const platform::Window& window, const std::string& name, const std::string& caption) {
    toolkit_.savePicture(window, next(name, caption));
}

void Album::add(QWidget& widget, const std::string& name, const std::string& caption) {
    const std::string path = next(name, caption);
    if (!widget.grab().save(QString::fromStdString(path))) throw std::runtime_error("can't write " + path);
}

std::string Album::list() const {
    std::string text;
    for (const auto& [file, caption] : pictures_)
        text.append(file).append("  ").append(caption).append("\n");
    std::ofstream(folder_ + "/pictures.txt") << text;
    return text;
}

}  // namespace orvenmod::sample
