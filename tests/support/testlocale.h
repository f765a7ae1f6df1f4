// The locale in which a host runs the component. No scenario may notice it.
#pragma once

#include <locale>
#include <string>

namespace orvenmod::test {

/// What the environment variable ORVEN_TEST_LOCALE names, "" for none.
std::string testLocale();

/// Puts the process under that locale, as a host does after its start. Throws std::runtime_error where the machine
/// hasn't got it.
void useTestLocale();

/// While it lives, the process's numbers have a decimal comma. Throws as useTestLocale.
class DecimalComma {
public:
    DecimalComma();
    ~DecimalComma();
    DecimalComma(const DecimalComma&) = delete;
    DecimalComma& operator=(const DecimalComma&) = delete;

private:
    std::locale own_;
    std::string before_;
};

}  // namespace orvenmod::test
