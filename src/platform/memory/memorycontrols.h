// The small controls in memory.
#pragma once

#include <string>
#include <utility>
#include <vector>

#include "platform/controls.h"
#include "platform/memory/controlcore.h"
#include "platform/model/combomodel.h"

namespace orvenmod::platform::memory {

/// A control with a caption: frame, label, button.
template <class Interface>
class MemoryCaptioned final : public MemoryControl<Interface> {
public:
    MemoryCaptioned(MemoryWindow& window, const ControlDesign& design)
        : MemoryControl<Interface>(window, design), caption_(design.caption) {}
    std::string caption() const override { return caption_; }
    void setCaption(const std::string& caption) override { caption_ = caption; }

private:
    std::string caption_;
};

using MemoryFrame = MemoryCaptioned<Frame>;
using MemoryLabel = MemoryCaptioned<Label>;
using MemoryButton = MemoryCaptioned<Button>;
/// Image lists and data controls: there, and no more.
using MemoryPlain = MemoryControl<Control>;

class MemoryEdit final : public MemoryControl<Edit> {
public:
    using MemoryControl::MemoryControl;
    std::string text() const override { return text_; }
    void setText(const std::string& text) override;

private:
    std::string text_;
};

class MemoryCombo final : public MemoryControl<Combo> {
public:
    using MemoryControl::MemoryControl;
    void clear() override { model_.clear(); }
    void addRow(const std::vector<std::string>& cells) override { model_.addRow(cells); }
    int rowCount() const override { return model_.rowCount(); }
    std::string cell(int row, int column) const override { return model_.cell(row, column); }
    int selected() const override { return model_.selected(); }
    void select(int row) override;
    void setListRows(int rows) override { model_.setListRows(rows); }
    int listRows() const override { return model_.listRows(); }

private:
    model::ComboModel model_;
};

class MemoryDatePicker final : public MemoryControl<DatePicker> {
public:
    using MemoryControl::MemoryControl;
    Date value() const override { return value_; }
    void setValue(const Date& value) override { value_ = value; }

private:
    Date value_;
};

class MemoryTabs final : public MemoryControl<Tabs> {
public:
    MemoryTabs(MemoryWindow& window, const ControlDesign& design);
    bool showsPage(int page) const override { return page == tab_; }
    int tab() const override { return tab_; }
    void setTab(int index) override;
    std::string tabCaption(int index) const override { return pages_.at(static_cast<std::size_t>(index)).caption; }
    void setTabCaption(int index, const std::string& caption) override;
    void setTabEnabled(int index, bool enabled) override;
    bool tabEnabled(int index) const override { return pages_.at(static_cast<std::size_t>(index)).enabled; }

private:
    struct Page {
        std::string caption;
        bool enabled = true;
    };
    std::vector<Page> pages_;
    int tab_ = 0;
};

class MemoryToolbar final : public MemoryControl<Toolbar> {
public:
    MemoryToolbar(MemoryWindow& window, const ControlDesign& design, const std::vector<ToolButtonDesign>& buttons);
    bool hasButton(const std::string& key) const override { return findButton(key) != nullptr; }
    void setButtonVisible(const std::string& key, bool visible) override;
    bool buttonVisible(const std::string& key) const override;
    void setButtonEnabled(const std::string& key, bool enabled) override;
    bool buttonEnabled(const std::string& key) const override;

private:
    struct ToolButton {
        std::string key;
        bool visible = true;
        bool enabled = true;
    };
    const ToolButton* findButton(const std::string& key) const;
    ToolButton& button(const std::string& key);
    const ToolButton& button(const std::string& key) const;

    std::vector<ToolButton> buttons_;
};

class MemoryMenu final : public MemoryControl<Menu> {
public:
    MemoryMenu(MemoryWindow& window, const MenuDesign& design);
    std::string caption() const override { return caption_; }
    void setCaption(const std::string& caption) override { caption_ = caption; }
    bool checked() const override { return checked_; }
    void setChecked(bool checked) override { checked_ = checked; }
    void popUp() override;

    const MenuDesign& menuDesign() const { return menuDesign_; }
    /// Whether the user can choose this entry from the menu `top` that has popped up (null: from the menu bar).
    bool choosable(const MemoryMenu* top) const;

private:
    MenuDesign menuDesign_;
    std::string caption_;
    bool checked_;
};

class MemoryFileDialog final : public MemoryControl<FileDialog> {
public:
    using MemoryControl::MemoryControl;
    void setFilter(const std::string& filter) override { filter_ = filter; }
    bool showOpen() override { return ask(Purpose::opening); }
    bool showSave() override { return ask(Purpose::saving); }
    std::string fileName() const override { return path_; }
    std::string fileTitle() const override;

private:
    enum class Purpose { opening, saving };

    bool ask(Purpose purpose);

    std::string filter_;
    std::string path_;
};

}  // namespace orvenmod::platform::memory
