// While it lives, this thread's C library writes numbers with a decimal point, whatever the process's locale: the
// library of workbooks prints them with printf.
#pragma once

#include <locale.h>

namespace orvenmod::platform {

class PlainNumerals {
public:
    PlainNumerals() : before_(uselocale(plain())) {}
    ~PlainNumerals() { uselocale(before_); }
    PlainNumerals(const PlainNumerals&) = delete;
    PlainNumerals& operator=(const PlainNumerals&) = delete;

private:
    // Made once: a list has millions of cells.
    static locale_t plain() {
        static const locale_t made = newlocale(LC_ALL_MASK, "C", static_cast<locale_t>(nullptr));
        return made;
    }

    locale_t before_;
};

}  // namespace orvenmod::platform
