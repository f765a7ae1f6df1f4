// The suite behind its window: users, warehouses, and how it calls the component. No toolkit here.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace orvenmod::sample {

struct SuiteUser {
    int id = 0;
    std::string name;
    bool administrator = false;
};

struct Warehouse {
    int id = 0;
    std::string name;
};

/// A class that a user of the suite made.
struct OwnClass {
    std::int16_t id = 0;
    std::string name;
};

enum class OpenAs { management, picker, billPicker };

/// What a menu of the suite asks of the component.
struct Request {
    std::int16_t itemClass = 3;
    OpenAs openAs = OpenAs::management;
    std::string find = {};     ///< the first list shows codes and names that hold it
    int warehouse = 0;         ///< whose stock the picker shows, 0 for all
    bool onlyInStock = false;  ///< the picker shows only what is in stock
};

/// A row that the bill picker handed over.
struct BillRow {
    std::string number;
    std::string name;
    std::string quantity;
};

/// What stood in the component's properties afterwards.
struct Result {
    std::string itemId;
    std::string number;
    std::string name;
    std::vector<BillRow> rows;  ///< where itemId is "-1"
};

/// How a database's version stands to that of the component.
enum class DatabaseAge { older, present, newer };

/// What the user reads of a newer one.
extern const char* const kNewerDatabase;

class Suite {
public:
    /// A database of the embedded store, or of the server that the connection string names. The folder of the file is
    /// the suite's in both cases.
    explicit Suite(const std::string& databaseFile, const std::string& server = "");

    const std::string& databaseFile() const { return databaseFile_; }

    /// Makes the database with its schema and `goods` goods. Throws std::runtime_error where there is one already.
    void create(int goods) const;

    /// Throws std::runtime_error where the database can't be read or isn't a suite's.
    DatabaseAge age() const;
    /// Throws std::runtime_error, and leaves the database as it was, where it can't be done.
    void upgrade() const;

    std::vector<SuiteUser> users() const;
    std::vector<Warehouse> warehouses() const;
    /// The classes beside customers, suppliers, goods and accounts that fit a request.
    std::vector<OwnClass> ownClasses() const;

    /// Writes who works with the suite into the settings that the component shares.
    void logIn(const SuiteUser& user) const;

    /// Opens the component's window and waits for it.
    Result open(const Request& request) const;
    /// Opens the component's designer of classes and waits for it.
    void designClasses() const;
    /// Opens the component's dictionaries and waits for them.
    void keepDictionaries() const;
    /// Lets the user pick an entry of the dictionary.
    Result pickDictionary(std::int16_t dictionary) const;

private:
    std::vector<BillRow> billRows() const;

    std::string databaseFile_;
    std::string connectionString_;
};

}  // namespace orvenmod::sample
