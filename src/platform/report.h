// The report engine: a page from a template file, and a detail grid that code defines and fills. Called by the windows'
// logic, implemented by platform/qt and platform/memory. One thread. Headers and fields count from 1, columns from 0.
#pragma once

#include <string>

#include "platform/event.h"

namespace orvenmod::platform {

enum class ReportFieldType { text = 1, number = 3 };

enum class ReportAlignment { centre = 34, right = 36 };

class Report {
public:
    virtual ~Report() = default;
    Report() = default;
    Report(const Report&) = delete;
    Report& operator=(const Report&) = delete;

    /// Takes the page of a template and starts an empty detail grid. Throws std::runtime_error, in Chinese, for a file
    /// that is missing or broken, with the line and what was expected there.
    virtual void loadFromFile(const std::string& path) = 0;
    virtual void setTitle(const std::string& title) = 0;
    /// The text of a named text control. Throws std::runtime_error where the template hasn't got it.
    virtual void setHeaderText(int header, const std::string& control, const std::string& text) = 0;

    // The detail grid. A field or a column that isn't there throws std::out_of_range.
    virtual void addField(const std::string& name, ReportFieldType type) = 0;
    /// Such as "#,##0.00".
    virtual void setFieldFormat(int field, const std::string& format) = 0;
    /// A column that shows a field. The width is in centimetres.
    virtual void addColumn(const std::string& name, const std::string& title, int field, double width) = 0;
    virtual void setTitleAlignment(int column, ReportAlignment alignment) = 0;
    virtual void setContentAlignment(int column, ReportAlignment alignment) = 0;
    virtual void hideColumn(int column) = 0;

    /// A record, its fields as texts, and its end. A number field takes "1,234.5"; a text that is no number stays as it
    /// is. A record that isn't posted is dropped.
    virtual void appendRecord() = 0;
    virtual void setFieldText(int field, const std::string& text) = 0;
    virtual void postRecord() = 0;

    /// Both raise `initialize` and then `fetchRecord`, whose failures go to the caller. The preview is modal; printing
    /// asks with the print dialog.
    virtual void printPreview() = 0;
    virtual void print() = 0;

    Event<> initialize;
    Event<> fetchRecord;
};

}  // namespace orvenmod::platform
