// Palettes of the same colours under one number. Each widget has a number of its own, the style keeps what it has drawn
// under it, and Qt never forgets the name of a picture: windows that come and go would add names for ever.
#pragma once

#include <QStyleOption>
#include <vector>

namespace orvenmod::platform::qt {

class SharedPalettes {
public:
    /// The first one of these colours that was asked for, in the state of this one.
    QPalette shared(const QPalette& palette);

private:
    std::vector<QPalette> known_;
};

/// While it lives, the option has the shared palette.
class WithSharedPalette {
public:
    WithSharedPalette(SharedPalettes& palettes, const QStyleOption* option);
    ~WithSharedPalette();
    WithSharedPalette(const WithSharedPalette&) = delete;
    WithSharedPalette& operator=(const WithSharedPalette&) = delete;

private:
    QStyleOption* option_;  // an option can't be copied without its kind
    QPalette own_;
};

}  // namespace orvenmod::platform::qt
