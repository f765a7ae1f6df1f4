#include "options.h"

#include <charconv>
#include <filesystem>
#include <stdexcept>

#include "sampledata.h"

namespace orvenmod::sample {

const char* const kUsage =
    "orvensuite --database FILE                       opens the sample suite\n"
    "orvensuite --database FILE --create [--items N]  makes the sample database, with N goods\n"
    "orvensuite --database FILE --upgrade             brings a database of an earlier version to the newest\n"
    "orvensuite --database FILE --tour FOLDER         plays a tour in a database just made, pictures into FOLDER\n"
    "orvensuite --database FILE --server STRING ...   likewise with the tables on a server; FILE tells the folder\n";

namespace {

int readGoods(const std::string& text) {
    int goods = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), goods);
    if (error != std::errc() || end != text.data() + text.size() || goods < 1 || goods > kMostGoods) {
        throw std::invalid_argument("--items takes a number from 1 to " + std::to_string(kMostGoods));
    }
    return goods;
}

}  // namespace

Options readOptions(const std::vector<std::string>& arguments) {
    Options options;
    options.goods = kUsualGoods;
    for (std::size_t i = 0; i < arguments.size(); ++i) {
        const std::string& name = arguments[i];
        const auto value = [&]() -> const std::string& {
            if (i + 1 >= arguments.size()) throw std::invalid_argument(name + " needs a value");
            return arguments[++i];
        };
        if (name == "--database") {
            options.database = value();
        } else if (name == "--server") {
            options.server = value();
        } else if (name == "--create") {
            options.create = true;
        } else if (name == "--upgrade") {
            options.upgrade = true;
        } else if (name == "--items") {
            options.goods = readGoods(value());
        } else if (name == "--tour") {
            // A print dialog takes a relative name as one in the home folder.
            options.tour = std::filesystem::absolute(value()).string();
        } else {
            throw std::invalid_argument("unknown argument " + name);
        }
    }
    if (options.database.empty()) throw std::invalid_argument("--database is missing");
    return options;
}

}  // namespace orvenmod::sample
