// The list grid. The rows, the selection and what was written stand in the shared model; the view's own selection
// follows what code does and leads what the user does.
#pragma once

#include <QTimer>

#include "platform/listgrid.h"
#include "platform/qt/controlbody.h"
#include "platform/qt/core.h"
#include "platform/qt/listgridarea.h"
#include "platform/qt/listgriditems.h"
#include "platform/qt/listgridview.h"

class QItemSelection;

namespace orvenmod::platform::qt {

class QtListGrid final : public QtControl<ListGrid> {
public:
    QtListGrid(Core& core, const ControlDesign& design, QWidget* parent);

    void bind(std::shared_ptr<const RowSource> source) override;
    int rowCount() const override { return model_.rowCount(); }
    int columnCount() const override { return model_.columnCount(); }
    void setRowCount(int rows) override;
    void addRow(const std::string& cells) override;
    void removeRow(int row) override;
    std::string text(int row, int column) const override { return model_.text(row, column); }
    std::string_view value(int row, int column) const override { return model_.value(row, column); }
    void setText(int row, int column, std::string_view text) override;

    void setColumnHidden(int column, bool hidden) override;
    bool columnHidden(int column) const override { return model_.column(column).hidden; }
    void setColumnAlignment(int column, int alignment) override;
    int columnAlignment(int column) const override { return model_.column(column).alignment; }
    void setHeaderAlignment(int column, int alignment) override;
    void setColumnBlanked(int column, CellTest blanked) override;
    void setColumnFormat(int column, const std::string& format) override;
    std::string columnFormat(int column) const override { return model_.column(column).format; }
    void setColumnWidth(int column, int twips) override;
    int columnWidth(int column) const override { return model_.column(column).width; }

    int currentRow() const override { return model_.currentRow(); }
    void setCurrentRow(int row) override;
    bool isSelected(int row) const override { return model_.isSelected(row); }
    void setSelected(int row, bool selected) override;
    void setRowColour(int row, const Colour* colour) override;

    void sort(int column, SortOrder order) override;
    int sortedColumn() const override { return model_.sortedColumn(); }
    SortOrder sortOrder() const override { return model_.sortOrder(); }
    void narrow(const std::string& words) override;
    std::string narrowing() const override { return model_.narrowing(); }
    void arrange() override;
    void setColumnKind(int column, ColumnKind kind) override { model_.setKind(column, kind); }
    ColumnKind columnKind(int column) const override { return model_.column(column).kind; }
    void moveColumn(int column, int place) override;
    int columnAt(int place) const override { return model_.columnAt(place); }
    std::string status() const override { return model_.status(); }

    /// The list alone: what readers and the Tab key know as the control.
    QWidget* widget() const { return view_; }

private:
    enum class Selection {
        currentOnly,  ///< the current row becomes the only selected one in the view too
        kept          ///< it stays but for the current row, whose own state is the model's
    };

    void listen();
    void listenToHeading();
    void listenToLine();
    bool ownKey(const QKeyEvent& key);
    template <class Work>
    bool doneUnderBar(const char* text, Work work) const;
    bool readyNarrowing();
    bool readySort(int column);
    void sortOn(int column);
    void openLine();
    void copySelected() const;
    void showNarrowing(const QString& words);
    void closeLine();
    void showArrangement();
    template <class Work>
    void showingAfter(Work work);
    template <class Change>
    void rearrange(Change change);
    void askHeadingMenu(int column, const QPoint& global);
    void dressColumns();
    void showCurrent(Selection wanted);
    void showSelection();
    void mirror(const QItemSelection& selected, const QItemSelection& deselected);
    void repaint();
    void tellFailure();
    void mouse(MouseButton button, const QPoint& global);

    Core& core_;
    model::ListGridModel model_;
    ListGridItems items_;
    ListGridArea* area_;  // null where the user arranges nothing
    ListGridView* view_;
    bool repaintWaits_ = false;
    bool telling_ = false;  ///< of rows that could not be fetched
};

}  // namespace orvenmod::platform::qt
