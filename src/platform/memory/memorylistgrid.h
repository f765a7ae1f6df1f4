// A list grid in memory.
#pragma once

#include <memory>
#include <string>
#include <string_view>

#include "platform/listgrid.h"
#include "platform/memory/controlcore.h"
#include "platform/model/listgridmodel.h"
#include "platform/model/listoutput.h"

namespace orvenmod::platform::memory {

class MemoryListGrid final : public MemoryControl<ListGrid> {
public:
    MemoryListGrid(MemoryWindow& window, const ControlDesign& design)
        : MemoryControl(window, design), model_(design.columns, design.fixedColumns) {}

    void bind(std::shared_ptr<const RowSource> source) override { model_.bind(std::move(source)); }
    int rowCount() const override { return model_.rowCount(); }
    int columnCount() const override { return model_.columnCount(); }
    void setRowCount(int rows) override { model_.setRowCount(rows); }
    void addRow(const std::string& cells) override { model_.addRow(cells); }
    void removeRow(int row) override { model_.removeRow(row); }
    std::string text(int row, int column) const override { return model_.text(row, column); }
    std::string_view value(int row, int column) const override { return model_.value(row, column); }
    void setText(int row, int column, std::string_view text) override { model_.setText(row, column, text); }
    void setColumnHidden(int column, bool hidden) override { model_.setHidden(column, hidden); }
    bool columnHidden(int column) const override { return model_.column(column).hidden; }
    void setColumnAlignment(int column, int alignment) override;
    int columnAlignment(int column) const override { return model_.column(column).alignment; }
    void setHeaderAlignment(int column, int alignment) override;
    void setColumnBlanked(int column, CellTest blanked) override { model_.setBlanked(column, blanked); }
    void setColumnFormat(int column, const std::string& format) override { model_.setFormat(column, format); }
    std::string columnFormat(int column) const override { return model_.column(column).format; }
    void setColumnWidth(int column, int twips) override { model_.column(column).width = twips; }
    int columnWidth(int column) const override { return model_.column(column).width; }
    int currentRow() const override { return model_.currentRow(); }
    void setCurrentRow(int row) override { model_.setCurrentRow(row); }
    bool isSelected(int row) const override { return model_.isSelected(row); }
    void setSelected(int row, bool selected) override { model_.setSelected(row, selected); }
    void setRowColour(int row, const Colour* colour) override { model_.setRowColour(row, colour); }
    void sort(int column, SortOrder order) override;
    int sortedColumn() const override { return model_.sortedColumn(); }
    SortOrder sortOrder() const override { return model_.sortOrder(); }
    void narrow(const std::string& words) override;
    std::string narrowing() const override { return model_.narrowing(); }
    void arrange() override;
    void setColumnKind(int column, ColumnKind kind) override { model_.setKind(column, kind); }
    ColumnKind columnKind(int column) const override { return model_.column(column).kind; }
    void moveColumn(int column, int place) override { model_.moveColumn(column, place); }
    int columnAt(int place) const override { return model_.columnAt(place); }
    std::string status() const override { return model_.status(); }

    /// Whether the line that narrows is in sight, and whether the keyboard stands in it.
    bool lineOpen() const { return lineOpen_; }
    bool inLine() const { return inLine_ && focused(); }
    /// Readies it first; cancelled, it is closed.
    void openLine();
    /// Back to the list.
    void leaveLine() { inLine_ = false; }
    void closeLine();
    /// A letter typed in the line, "" takes the last one away.
    void typeInLine(const std::string& letter);
    /// A click on a column's heading.
    void sortOn(int column);
    /// Both texts empty where nothing is selected, or the work was cancelled.
    model::CopiedRows copySelected();

    model::ListGridModel& model() { return model_; }
    const model::ListGridModel& model() const { return model_; }

private:
    template <class Work>
    bool doneUnderBar(const char* text, Work work);
    bool readyNarrowing();
    bool readySort(int column);
    void showNarrowing();

    model::ListGridModel model_;
    std::string line_;  // what the user typed, though its narrowing may have failed
    bool lineOpen_ = false;
    bool inLine_ = false;
    bool marked_ = false;  // what is typed next takes the line's place
};

}  // namespace orvenmod::platform::memory
