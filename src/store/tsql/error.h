// A failure by number with its arguments, before it is worded: the connection words it in its language.
#pragma once

#include <exception>
#include <string>
#include <utility>
#include <vector>

#include "store/tsql/failurenumbers.h"

namespace orvenmod::store::tsql {

/// Thrown by the scanner, parser, binder, conversions and functions.
class Error : public std::exception {
public:
    Error(int number, std::vector<std::string> arguments = {}) : number_(number), arguments_(std::move(arguments)) {}

    int number() const { return number_; }
    const std::vector<std::string>& arguments() const { return arguments_; }
    const char* what() const noexcept override { return "a failure of the dialect, not yet worded"; }

private:
    int number_;
    std::vector<std::string> arguments_;
};

}  // namespace orvenmod::store::tsql
