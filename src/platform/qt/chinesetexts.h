// Chinese for the few texts of Qt that its own translation lacks, or where that translation isn't installed.
#pragma once

#include <QTranslator>

namespace orvenmod::platform::qt {

class ChineseTexts : public QTranslator {
    Q_OBJECT
public:
    using QTranslator::QTranslator;
    bool isEmpty() const override { return false; }
    QString translate(const char* context, const char* source, const char* disambiguation, int count) const override;
};

}  // namespace orvenmod::platform::qt
