// The window that brings a list in, in four steps: the file, its columns, the check, the result. Nothing is written
// before the user has seen the check.
#pragma once

#include <memory>

#include "hierarchy/listwindow.h"

namespace orvenmod {

class frmImport {
public:
    /// The process's window, made on first use.
    static frmImport& instance();

    /// Shows it modally for class gItemClassId. What was stored shows in `list` when it has closed. Throws
    /// std::logic_error where it is shown already.
    void show(ListWindow& list);

private:
    // The parts of one showing.
    struct Shown;
    enum class Step { file, columns, check, result };

    void connectEvents();
    void Form_Load();
    void goTo(Step step);

    void cmdBrowse_Click();
    void cmdTemplate_Click();
    void cmdNext_Click();
    void cmdBack_Click();
    void cmdMend_Click();
    void cmdSaveRefused_Click();
    void cmdTakeBack_Click();

    bool readClass();
    bool readFile();
    bool takeColumns();
    bool check();
    void run();
    void fillSheets();
    void fillColumns();
    void fillCheck();
    void fillResult();

    Shown& shown();

    std::unique_ptr<Shown> shown_;
};

}  // namespace orvenmod
