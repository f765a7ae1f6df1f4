// The styles of a workbook as far as they tell days from numbers.
#pragma once

#include <map>
#include <orcus/spreadsheet/import_interface.hpp>
#include <string>
#include <vector>

namespace orvenmod {

/// Whether a number format shows a day.
bool isDayFormat(std::string_view code);

class WorkbookStyles final : public orcus::spreadsheet::iface::import_styles {
    using Element = orcus::spreadsheet::color_elem_t;

public:
    /// Whether cells of that format are days.
    bool isDay(std::size_t cellFormat) const;

    void set_number_format_identifier(size_t id) override { formatId_ = id; }
    void set_number_format_code(std::string_view code) override { formatCode_ = code; }
    size_t commit_number_format() override;
    void set_xf_number_format(size_t id) override { cellFormatId_ = id; }
    size_t commit_cell_xf() override;
    size_t commit_cell_style_xf() override { return takeIndex(); }
    size_t commit_dxf() override { return takeIndex(); }

    // What the rest of the interface tells is of no use here.
    void set_font_count(size_t) override {}
    void set_font_bold(bool) override {}
    void set_font_italic(bool) override {}
    void set_font_name(std::string_view) override {}
    void set_font_size(double) override {}
    void set_font_underline(orcus::spreadsheet::underline_t) override {}
    void set_font_underline_width(orcus::spreadsheet::underline_width_t) override {}
    void set_font_underline_mode(orcus::spreadsheet::underline_mode_t) override {}
    void set_font_underline_type(orcus::spreadsheet::underline_type_t) override {}
    void set_font_underline_color(Element, Element, Element, Element) override {}
    void set_font_color(Element, Element, Element, Element) override {}
    void set_strikethrough_style(orcus::spreadsheet::strikethrough_style_t) override {}
    void set_strikethrough_type(orcus::spreadsheet::strikethrough_type_t) override {}
    void set_strikethrough_width(orcus::spreadsheet::strikethrough_width_t) override {}
    void set_strikethrough_text(orcus::spreadsheet::strikethrough_text_t) override {}
    size_t commit_font() override { return takeIndex(); }
    void set_fill_count(size_t) override {}
    void set_fill_pattern_type(orcus::spreadsheet::fill_pattern_t) override {}
    void set_fill_fg_color(Element, Element, Element, Element) override {}
    void set_fill_bg_color(Element, Element, Element, Element) override {}
    size_t commit_fill() override { return takeIndex(); }
    void set_border_count(size_t) override {}
    void set_border_style(orcus::spreadsheet::border_direction_t, orcus::spreadsheet::border_style_t) override {}
    void set_border_color(orcus::spreadsheet::border_direction_t, Element, Element, Element, Element) override {}
    void set_border_width(orcus::spreadsheet::border_direction_t, double, orcus::length_unit_t) override {}
    size_t commit_border() override { return takeIndex(); }
    void set_cell_hidden(bool) override {}
    void set_cell_locked(bool) override {}
    void set_cell_print_content(bool) override {}
    void set_cell_formula_hidden(bool) override {}
    size_t commit_cell_protection() override { return takeIndex(); }
    void set_number_format_count(size_t) override {}
    void set_cell_xf_count(size_t) override {}
    void set_cell_style_xf_count(size_t) override {}
    void set_dxf_count(size_t) override {}
    void set_xf_font(size_t) override {}
    void set_xf_fill(size_t) override {}
    void set_xf_border(size_t) override {}
    void set_xf_protection(size_t) override {}
    void set_xf_style_xf(size_t) override {}
    void set_xf_apply_alignment(bool) override {}
    void set_xf_horizontal_alignment(orcus::spreadsheet::hor_alignment_t) override {}
    void set_xf_vertical_alignment(orcus::spreadsheet::ver_alignment_t) override {}
    void set_cell_style_count(size_t) override {}
    void set_cell_style_name(std::string_view) override {}
    void set_cell_style_xf(size_t) override {}
    void set_cell_style_builtin(size_t) override {}
    void set_cell_style_parent_name(std::string_view) override {}
    size_t commit_cell_style() override { return takeIndex(); }

private:
    size_t takeIndex();

    std::size_t formatId_ = 0;
    std::string formatCode_;
    std::map<std::size_t, std::string> formats_;
    std::size_t cellFormatId_ = 0;
    std::vector<std::size_t> cellFormats_;
    std::size_t lastIndex_ = 0;
};

}  // namespace orvenmod
