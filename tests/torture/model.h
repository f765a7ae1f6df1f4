// A suite as plain values: what the clerks of a walk have done to it. Each step is three numbers, which mean something
// by what there is: the same steps do the same again, and a walk without some of its steps is a walk too.
#pragma once

#include <map>
#include <string>
#include <vector>

#include "hierarchy/plaintree.h"
#include "torture/desk.h"

namespace orvenmod::test {

struct Step {
    unsigned what = 0;
    unsigned which = 0;
    unsigned how = 0;
};

/// As the source of a test that plays them again.
std::string textOf(const std::vector<Step>& steps);

class Model {
public:
    explicit Model(Database& database);

    /// Does the step at the desk and in the model; what differs, "" for nothing.
    std::string take(const Step& step, Desk& desk);

    /// What the database holds otherwise than the model, "" for nothing.
    std::string differenceNow();

    int done() const { return done_; }
    int refused() const { return refused_; }

private:
    static constexpr int kGoods = 3;
    struct Field {
        std::string caption;
        bool lookup = false;
        bool shown = true;
    };
    struct Class {
        std::string name;
        std::string table;
        std::string view;
        PlainTree tree = {};
        std::vector<Field> fields = {};  ///< that a clerk has added
        bool wasSetUp = false;
    };
    struct Entry {
        std::string code;
        std::string name;
    };
    using Wanted = bool;  ///< whether the command has to tell that it is done

    void newItem(const Step& step, Desk& desk);
    void changeItem(const Step& step, Desk& desk);
    void newCategory(const Step& step, Desk& desk);
    void moveCategory(const Step& step, Desk& desk);
    void deleteItem(const Step& step, Desk& desk);
    void deleteCategory(const Step& step, Desk& desk);
    void lockItem(const Step& step, Desk& desk);
    void unlockItem(const Step& step, Desk& desk);
    void newClass(const Step& step, Desk& desk);
    void newField(const Step& step, Desk& desk);
    void setUpField(const Step& step, Desk& desk);
    void newEntry(const Step& step, Desk& desk);
    void changeEntry(const Step& step, Desk& desk);
    void deleteEntry(const Step& step, Desk& desk);

    /// Plays it, and notes whether it told what it had to; true where it is done.
    bool play(Desk& desk, const std::string& name, const std::string& success, const std::function<void(Desk&)>& act,
              Wanted wanted);
    /// What somebody else does while a window is open.
    void somebodyElse(const Step& step);
    bool storeCategory(int itemClass, int parent, const std::string& shortCode);
    bool storeMove(int itemClass, int id, int parent, const std::string& shortCode);
    void changeLock(const Step& step, Desk& desk, bool locked);
    bool hasEntry(const std::string& code, int but = 0) const;
    bool mayMove(int itemClass, int id, int parent, const std::string& code) const;
    void enter(int itemClass) const;

    int chooseClass(const Step& step) const;
    int chooseNode(int itemClass, bool detail, unsigned which) const;
    int chooseEntry(const Step& step) const;
    static std::string shortCode(const Step& step);
    std::string unusedName(const char* kind) { return kind + std::to_string(++names_); }

    Rows itemRows() const;
    Rows fieldRows();
    static std::vector<std::string> descriptionsOf(const Class& its);
    std::string entryDifference();
    std::string fieldDifference();
    std::string detailDifference();

    Database& database_;
    std::map<int, Class> classes_;
    std::map<int, Entry> entries_;
    Rows goodsFields_;
    int lastId_ = 0;
    int lastEntry_ = 0;
    int names_ = 0;
    int done_ = 0;
    int refused_ = 0;
    std::string wrong_;
};

}  // namespace orvenmod::test
