#include "platform/report/template.h"

#include <array>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <set>
#include <sstream>
#include <stdexcept>
#include <string_view>

#include "platform/report/templateline.h"
#include "platform/settings.h"

namespace orvenmod::platform::report {

namespace {

constexpr std::uintmax_t kLargestFile = 1U << 20U;
constexpr double kLeastRoom = 20;   // for the grid, each way
constexpr double kLeastHeight = 2;  // of a row
constexpr double kLeastPoints = 4;
constexpr std::string_view kVersion = "1";

struct PaperSize {
    std::string_view name;
    double width;
    double height;
};

constexpr std::array<PaperSize, 5> kPapers = {
    {{"A3", 297, 420}, {"A4", 210, 297}, {"A5", 148, 210}, {"B5", 176, 250}, {"Letter", 215.9, 279.4}}};

bool isUtf8(std::string_view text) {
    for (std::size_t at = 0; at < text.size(); ++at) {
        const auto lead = static_cast<unsigned char>(text[at]);
        if (lead == 0) return false;
        if (lead < 0x80) continue;
        const int follow = lead >= 0xF0 && lead < 0xF5 ? 3 : lead >= 0xE0 ? 2 : lead >= 0xC2 ? 1 : 0;
        if (follow == 0 || lead >= 0xF5) return false;
        for (int i = 0; i < follow; ++i) {
            if (++at == text.size() || (static_cast<unsigned char>(text[at]) & 0xC0U) != 0x80U) return false;
        }
    }
    return true;
}

class Parser {
public:
    Template parse(const std::string& content) {
        std::istringstream lines(content);
        for (std::string text; std::getline(lines, text);) {
            ++number_;
            if (!isUtf8(text)) failAtLine(number_, "应为 UTF-8 文本");
            TemplateLine line(number_, text);
            if (line.empty()) continue;
            statement(line);
            line.end();
        }
        if (!versioned_) failAtLine(1, "应为“report 1”，实为空文件");
        check();
        return std::move(made_);
    }

private:
    void statement(TemplateLine& line) {
        if (!versioned_) return version(line);
        if (line.takes("text")) return text(line);
        for (const auto& [name, read] : kStatements) {
            if (!line.takes(name)) continue;
            if (name != "header" && !seen_.insert(std::string(name)).second)
                failAtLine(number_, "“" + std::string(name) + "”重复");
            return (this->*read)(line);
        }
        line.fail("page、margins、font、columns、title、row、header、footer 或 text");
    }

    void version(TemplateLine& line) {
        if (!line.takes("report") || !line.takes(kVersion)) line.fail("“report 1”");
        versioned_ = true;
    }

    void page(TemplateLine& line) {
        Paper& paper = made_.paper;
        if (line.numberNext()) {
            paper.width = line.length("纸宽", kLeastRoom);
            paper.height = line.length("纸高", kLeastRoom);
            return;
        }
        const PaperSize* size = nullptr;
        for (const PaperSize& each : kPapers) {
            if (size == nullptr && line.takes(each.name)) size = &each;
        }
        if (size == nullptr) line.fail("纸张 A3、A4、A5、B5、Letter 或宽和高");
        const bool landscape = line.takes("landscape");
        if (!landscape && !line.takes("portrait") && !line.done()) line.fail("方向 portrait 或 landscape");
        paper.width = landscape ? size->height : size->width;
        paper.height = landscape ? size->width : size->height;
    }

    void margins(TemplateLine& line) {
        Paper& paper = made_.paper;
        paper.left = line.length("左边距", 0);
        paper.top = line.length("上边距", 0);
        paper.right = line.length("右边距", 0);
        paper.bottom = line.length("下边距", 0);
    }

    void font(TemplateLine& line) {
        made_.points = line.length("字号", kLeastPoints);
        made_.family = line.quoted().value_or("");
    }

    void columns(TemplateLine& line) {
        if (line.takes("fit")) {
            made_.wideColumns = WideColumns::fit;
        } else if (line.takes("break")) {
            made_.wideColumns = WideColumns::breakPages;
        } else {
            line.fail("fit 或 break");
        }
    }

    void title(TemplateLine& line) { made_.titleHeight = line.length("标题行高", kLeastHeight); }
    void row(TemplateLine& line) { made_.rowHeight = line.length("行高", kLeastHeight); }

    void header(TemplateLine& line) {
        made_.headers.push_back({line.length("报表头高", 0), {}});
        band_ = Where::header;
    }

    void footer(TemplateLine& line) {
        made_.footer.height = line.length("页脚高", 0);
        band_ = Where::footer;
    }

    void text(TemplateLine& line) {
        if (band_ == Where::none) failAtLine(number_, "应先有 header 或 footer，实为“text”");
        TemplateText made;
        made.name = line.word("文本框名称");
        if (made.name == "-") made.name.clear();
        if (!made.name.empty() && !names_.insert(made.name).second)
            failAtLine(number_, "文本框名称“" + made.name + "”重复");
        made.box.left = line.length("左", 0);
        made.box.top = line.length("上", 0);
        made.box.width = line.length("宽", 1);
        made.box.height = line.length("高", 1);
        if (line.takes("size")) made.points = line.length("字号", kLeastPoints);
        made.bold = line.takes("bold");
        if (line.takes("centre")) {
            made.alignment = TextAlignment::centre;
        } else if (line.takes("right")) {
            made.alignment = TextAlignment::right;
        } else {
            line.takes("left");
        }
        if (const auto given = line.quoted()) {
            made.text = *given;
        } else if (!line.done()) {
            line.fail("size、bold、left、centre、right 或引号中的文字");
        }
        (band_ == Where::header ? made_.headers.back() : made_.footer).texts.push_back(std::move(made));
    }

    void check() {
        double height = made_.footer.height + made_.titleHeight + made_.rowHeight;
        for (const Band& header : made_.headers)
            height += header.height;
        if (made_.paper.innerWidth() < kLeastRoom || made_.paper.innerHeight() < std::max(height, kLeastRoom))
            failAtLine(number_, "边距、报表头、页脚和标题行之间应留有一行的位置，实为纸张太小");
        for (Band* band : bands()) {
            for (TemplateText& each : band->texts) {
                if (each.points == 0) each.points = made_.points;
            }
        }
    }

    std::vector<Band*> bands() {
        std::vector<Band*> all = {&made_.footer};
        for (Band& header : made_.headers)
            all.push_back(&header);
        return all;
    }

    enum class Where { none, header, footer };
    using Read = void (Parser::*)(TemplateLine&);
    static constexpr std::array<std::pair<std::string_view, Read>, 8> kStatements = {{{"page", &Parser::page},
                                                                                      {"margins", &Parser::margins},
                                                                                      {"font", &Parser::font},
                                                                                      {"columns", &Parser::columns},
                                                                                      {"title", &Parser::title},
                                                                                      {"row", &Parser::row},
                                                                                      {"header", &Parser::header},
                                                                                      {"footer", &Parser::footer}}};

    Template made_;
    int number_ = 0;
    bool versioned_ = false;
    Where band_ = Where::none;
    std::set<std::string> seen_;
    std::set<std::string> names_;
};

}  // namespace

Template parseTemplate(const std::string& content) { return Parser().parse(content); }

Template loadTemplate(const std::string& path) {
    const std::string file = nativePath(path);
    std::error_code error;
    if (!std::filesystem::is_regular_file(file, error)) throw std::runtime_error("找不到报表模板：" + path);
    if (std::filesystem::file_size(file, error) > kLargestFile)
        throw std::runtime_error("文件太大，不是报表模板：" + path);
    std::ifstream stream(file, std::ios::binary);
    const std::string content{std::istreambuf_iterator<char>(stream), {}};
    if (!stream.is_open() || stream.bad()) throw std::runtime_error("报表模板无法读取：" + path);
    try {
        return parseTemplate(content);
    } catch (const std::runtime_error& failure) {
        throw std::runtime_error(std::string(failure.what()) + "\n" + path);
    }
}

}  // namespace orvenmod::platform::report
