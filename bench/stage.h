// What the measurements share: databases of told sizes, and a list on the memory toolkit's grid.
#pragma once

#include <functional>
#include <memory>
#include <string>

#include "browser/itemlist.h"
#include "frame/services.h"
#include "platform/memory/memorytoolkit.h"

namespace orvenmod::bench {

/// "Provider=SQLite;..." for the file.
std::string targetOf(const std::string& file);

/// The file that `fill` makes on a new schema; made where it is missing. A run that is stopped leaves no half file.
std::string databaseFile(const std::string& file, const std::function<void(store::Connection&)>& fill);

/// "Provider=SQLite;..." of a sample database with that many goods in the folder; made where it is missing.
std::string goodsDatabase(const std::string& folder, int goods);

/// The component's services on a store of their own while it lives, with nobody at the screen.
class QuietServices {
public:
    explicit QuietServices(store::Store& store);
    ~QuietServices();
    QuietServices(const QuietServices&) = delete;
    QuietServices& operator=(const QuietServices&) = delete;

private:
    Services& before_;
    std::unique_ptr<platform::memory::MemoryDriver> driver_;
    platform::memory::MemoryToolkit toolkit_;
    Services services_;
};

/// The goods' list in a window that nobody shows.
class ListStage {
public:
    explicit ListStage(const std::string& connectionString);
    ~ListStage();

    ItemList& list() { return *list_; }
    platform::ListGrid& grid() { return window_->get<platform::ListGrid>("vsf1"); }

private:
    std::unique_ptr<platform::memory::MemoryDriver> driver_;
    platform::memory::MemoryToolkit toolkit_;
    std::unique_ptr<platform::Window> window_;
    StockChoice stock_{};
    std::unique_ptr<ItemList> list_;
};

/// The columns of the first list, and its statement without a condition.
std::string listColumns();
std::string listStatement(const std::string& condition = "");

}  // namespace orvenmod::bench
