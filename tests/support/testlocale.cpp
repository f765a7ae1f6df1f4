#include "support/testlocale.h"

#include <clocale>
#include <cstdlib>
#include <locale>
#include <stdexcept>
#include <string>

#include "support/sourcefolder.h"

namespace orvenmod::test {

namespace {

constexpr const char* kDecimalComma = "de_DE.UTF-8";

void become(const std::string& name) {
    ::setenv("LOCPATH", sourceFile("build/locales").c_str(), 1);
    if (std::setlocale(LC_ALL, name.c_str()) == nullptr)
        throw std::runtime_error("no locale " + name + ": scripts/setup --test makes it");
    std::locale::global(std::locale(name));
}

}  // namespace

std::string testLocale() {
    const char* wanted = std::getenv("ORVEN_TEST_LOCALE");
    return wanted == nullptr ? "" : wanted;
}

void useTestLocale() {
    if (!testLocale().empty()) become(testLocale());
}

DecimalComma::DecimalComma() : before_(std::setlocale(LC_ALL, nullptr)) { become(kDecimalComma); }

DecimalComma::~DecimalComma() {
    std::locale::global(own_);
    std::setlocale(LC_ALL, before_.c_str());
}

}  // namespace orvenmod::test
