// Between the interfaces' UTF-8 texts and twips and Qt's own.
#pragma once

#include <QString>
#include <cmath>
#include <string>
#include <string_view>

namespace orvenmod::platform::qt {

inline constexpr float kTwipsPerPixel = 15.0F;

inline QString toQt(std::string_view text) {
    return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

inline std::string fromQt(const QString& text) {
    const QByteArray bytes = text.toUtf8();
    return {bytes.constData(), static_cast<std::size_t>(bytes.size())};
}

inline int toPixels(float twips) { return static_cast<int>(std::lround(twips / kTwipsPerPixel)); }

inline float toTwips(int pixels) { return static_cast<float>(pixels) * kTwipsPerPixel; }

/// A caption as a screen reader says it: without the mark of the mnemonic ("搜索(&F)" is "搜索") and the closing colon.
QString spokenCaption(QString caption);

}  // namespace orvenmod::platform::qt
