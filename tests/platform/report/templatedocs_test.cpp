// docs/report-template.md tells what the engine reads.
#include <gtest/gtest.h>

#include <fstream>
#include <regex>
#include <sstream>
#include <stdexcept>
#include <string>
#include <vector>

#include "platform/report/template.h"
#include "support/sourcefolder.h"

namespace orvenmod::platform::report {
namespace {

std::string document() {
    std::ostringstream text;
    text << std::ifstream(test::sourceFile("docs/report-template.md")).rdbuf();
    return text.str();
}

/// All that the pattern's first group finds.
std::vector<std::string> found(const std::string& text, const char* pattern) {
    const std::regex wanted(pattern);
    std::vector<std::string> all;
    for (std::sregex_iterator each(text.begin(), text.end(), wanted), end; each != end; ++each)
        all.push_back((*each)[1]);
    return all;
}

TEST(TemplateDocument, showsATemplateThatLoads) {
    const auto examples = found(document(), "```\n([^]*?)```");
    ASSERT_EQ(examples.size(), 1U);
    const Template read = parseTemplate(examples[0]);
    EXPECT_EQ(read.paper, (Paper{297, 210, 12, 12, 12, 10}));
    EXPECT_EQ(read.family, "Noto Sans CJK SC");
    EXPECT_EQ(read.wideColumns, WideColumns::breakPages);
    ASSERT_EQ(read.headers.size(), 2U);
    EXPECT_EQ(read.headers[0].texts.at(1).name, "fbiller");
    EXPECT_EQ(read.headers[1].texts.at(0).text, "a second header; a quote is \"doubled\"");
    EXPECT_EQ(read.footer.texts.at(0).text, "{page} of {pages}");
}

TEST(TemplateDocument, tellsEveryStatementAndTheExampleUsesIt) {
    const std::string text = document();
    const std::string example = found(text, "```\n([^]*?)```").at(0);
    for (const char* word :
         {"report", "page", "margins", "font", "columns", "title", "row", "header", "footer", "text"}) {
        EXPECT_NE(text.find(std::string("| `") + word + " "), std::string::npos) << word;
        EXPECT_NE(("\n" + example).find(std::string("\n") + word + " "), std::string::npos) << word;
    }
}

TEST(TemplateDocument, tellsWhatHoldsWithoutAStatement) {
    const Template read = parseTemplate("report 1");
    const std::vector<std::pair<const char*, std::string>> defaults = {
        {"page", "A4 portrait"}, {"margins", "15 each"}, {"font", "9"}, {"title", "8"}, {"row", "6.5"}};
    EXPECT_EQ(read.paper, (Paper{210, 297, 15, 15, 15, 15}));
    EXPECT_EQ(read.points, 9);
    EXPECT_EQ(read.titleHeight, 8);
    EXPECT_EQ(read.rowHeight, 6.5);
    EXPECT_EQ(read.wideColumns, WideColumns::fit);
    for (const auto& [statement, value] : defaults) {
        const auto told = found(document(), ("\\| `" + std::string(statement) + " [^\n]*\\| ([^|\n]*) \\|\n").c_str());
        EXPECT_EQ(told, std::vector<std::string>{value}) << statement;
    }
}

TEST(TemplateDocument, showsTheMessageOfAMistakeAsItComes) {
    std::string message;
    try {
        parseTemplate("# a\nreport 1\nrow 6\npage A4 sideways\n");
    } catch (const std::runtime_error& failure) {
        message = failure.what();
    }
    EXPECT_NE(document().find("\n    " + message + "\n"), std::string::npos) << message;
}

}  // namespace
}  // namespace orvenmod::platform::report
