// Files that the tour's clerk brings along: a photo of a pen and two documents about it.
#pragma once

#include <QString>

namespace orvenmod::sample {

/// Draws a pen as a JPEG. Both throw std::runtime_error where the file can't be written.
void drawPhoto(const QString& path);
void writeDocument(const QString& path, const QString& text);

}  // namespace orvenmod::sample
