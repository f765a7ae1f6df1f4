// Files that somebody or something has damaged, or made to harm: pictures, attachments by their names, templates, ini
// files, workbooks to bring in. One box at the most, no crash, and nothing outside its folder is written.
#include <gtest/gtest.h>

#include <QImage>
#include <algorithm>
#include <filesystem>
#include <fstream>
#include <functional>

#include "editor/editortest.h"
#include "frame/services.h"
#include "platform/desktop/inisettings.h"
#include "platform/desktop/plaininifiles.h"
#include "platform/qt/qttoolkit.h"
#include "store/sqlite/sqlitestore.h"
#include "support/temporary.h"
#include "torture/commands.h"
#include "torture/share.h"
#include "torture/states.h"
#include "transfer/importtest.h"

namespace orvenmod::test {
namespace {

namespace fs = std::filesystem;

constexpr int kFew = 40;
constexpr int kFull = 3000;

int howMany() { return roundsOf(kFew, kFull); }

void put(const std::string& path, const std::string& bytes) { std::ofstream(path, std::ios::binary) << bytes; }

/// What bad disks, transfers and hands do: bytes that are others, an end that is missing, a part that comes twice or
/// not at all, numbers at their limits.
std::string damaged(std::string bytes, std::mt19937& random) {
    const auto below = [&](std::size_t limit) { return limit == 0 ? 0 : random() % limit; };
    for (std::size_t count = 1 + below(4); count > 0 && !bytes.empty(); --count) {
        const std::size_t at = below(bytes.size());
        const std::size_t size = below(std::min<std::size_t>(bytes.size() - at, 64));
        switch (below(6)) {
            case 0:
                bytes[at] = static_cast<char>(below(256));
                break;
            case 1:
                bytes.resize(at);
                break;
            case 2:
                bytes.erase(at, size);
                break;
            case 3:
                bytes.insert(at, bytes.substr(at, size));
                break;
            case 4:
                bytes.replace(at, size, size, '\xFF');
                break;
            default:
                bytes.replace(at, size, size, '\0');
        }
    }
    return bytes;
}

/// What a round meets: first what is refused for certain, then the whole file, then one that is damaged.
std::string inRound(int round, const std::string& refused, const std::string& whole, std::mt19937& random) {
    if (round == 0) return refused;
    return round == 1 ? whole : damaged(whole, random);
}

/// Names of what stands in the folder and below it.
std::vector<std::string> namesIn(const std::string& folder) {
    std::vector<std::string> names;
    for (const auto& entry : fs::recursive_directory_iterator(folder))
        names.push_back(fs::relative(entry.path(), folder).string());
    std::sort(names.begin(), names.end());
    return names;
}

TEST(HostilePictures, showSomethingOrNothingAndSayNothing) {
    EditorStage stage(newQtScript);
    const TemporaryFolder folder;
    Texts pictures = {redBitmap()};
    QImage image(64, 48, QImage::Format_ARGB32);
    image.fill(Qt::red);
    for (const char* kind : {"png", "jpg", "bmp", "ppm", "xpm", "ico", "gif", "svg"}) {
        const std::string path = folder.file("whole");
        if (image.save(QString::fromStdString(path), kind)) pictures.push_back(contentsOf(path));
    }
    pictures.push_back(
        "<svg xmlns='http://www.w3.org/2000/svg' width='9e9' height='9e9'><use href='#a'/><g id='a'><use "
        "href='#a'/></g><image href='/etc/passwd' width='9' height='9'/></svg>");
    ASSERT_GE(pictures.size(), 6U);
    std::mt19937 random = randomFor("pictures");
    const std::string chosen = folder.file("chosen.jpg");
    int shown = 0;
    stage.openNew([&](User& user) {
        user.chooseTab("SSTab1", 2);
        for (int damage = 0; damage < howMany(); ++damage) {
            put(chosen, inRound(damage, "no picture", pictures[random() % pictures.size()], random));
            user.chooseFile(chosen);
            user.click("cmdAdd");
            shown += user.control<platform::Picture>("pict1").empty() ? 0 : 1;
        }
    });
    EXPECT_GT(shown, 0);
    EXPECT_LT(shown, howMany());
}

TEST(HostileNames, ofAttachmentsStayInTheirFolder) {
    const Texts parts = {"..",
                         "/",
                         "\\",
                         ":",
                         ".",
                         " ",
                         "\n",
                         "~",
                         "-",
                         "$(id)",
                         "`id`",
                         "%2e%2e%2f",
                         "\x7F",
                         "\xC0\xAE",
                         "\xFF",
                         "图纸",
                         "a",
                         ".txt",
                         "con",
                         "|",
                         "*",
                         "\"",
                         std::string(90, 'x'),
                         "\xE2\x80\xAE",
                         "\t"};
    EditorStage stage;
    const fs::path folder = services().folders.attachments();
    const fs::path temporary = services().folders.temporary();
    std::mt19937 random = randomFor("names");
    for (int each = 0; each < howMany(); ++each) {
        std::string name;
        for (std::size_t count = random() % 6; count > 0; --count)
            name += parts[random() % parts.size()];
        name.resize(std::min<std::size_t>(name.size(), 200));
        SCOPED_TRACE(name);
        stage.database().execute("delete from tblItemFJ");
        stage.storeAttachment(1, name, "content");
        stage.openItem(101, [&](User& user) {
            user.chooseTab("SSTab1", 1);
            user.clickCell("fps2", 2, 1);
            ASSERT_FALSE(stage.script().documents().empty());
            const fs::path opened = stage.script().documents().back();
            EXPECT_EQ(opened.parent_path(), folder);
            EXPECT_EQ(opened.lexically_normal(), opened);
            EXPECT_EQ(Stage::contents(opened), "content");
        });
        ASSERT_TRUE(fs::is_empty(folder) && fs::is_empty(temporary));
    }
}

TEST(HostileTemplates, arePrintedOrRefusedInWords) {
    platform::qt::QtToolkit toolkit;
    const TemporaryFolder folder;
    const std::string whole =
        "report 1\npage A5 landscape\nmargins 10 10 10 10\nfont 9 \"Serif\"\ncolumns break\ntitle 8\nrow 6\nheader 14\n"
        "text fTitle 0 0 190 10 size 16 bold centre\nfooter 8\ntext - 0 1 190 6 centre \"第 {page} 页 共 {pages} "
        "页\"\n";
    std::mt19937 random = randomFor("templates");
    int printed = 0;
    for (int damage = 0; damage < howMany(); ++damage) {
        SCOPED_TRACE(damage);
        put(folder.file("Report3.grf"), inRound(damage, "no template", whole, random));
        fs::remove(folder.file("list.pdf"));
        const auto report = toolkit.createReport();
        report->initialize = [&] {
            report->loadFromFile(folder.file("Report3.grf"));
            report->addField("名称", platform::ReportFieldType::text);
            report->addColumn("名称", "名称", 1, 6);
        };
        report->fetchRecord = [&] {
            report->appendRecord();
            report->setFieldText(1, "垫圈");
            report->postRecord();
        };
        toolkit.setPrintFile(folder.file("list.pdf"));
        try {
            report->print();
            EXPECT_TRUE(fs::exists(folder.file("list.pdf")));
            ++printed;
        } catch (const std::runtime_error& refusal) {
            EXPECT_STRNE(refusal.what(), "");
            EXPECT_FALSE(fs::exists(folder.file("list.pdf")));
        }
    }
    EXPECT_GT(printed, 0);
    EXPECT_LT(printed, howMany());
}

TEST(HostileIniFiles, areReadAndChangedOrRefused) {
    const TemporaryFolder folder;
    const std::string whole = "; note\r\n[SYSTEM]\r\npath=C:\\suite\r\n[Orvenmod]\r\nJCZLA3 = \"1\"\r\nx=y=z\r\n";
    const std::string settings = "[SystemSetup]\nmsgTitle = 进销存%41\n%3Dkey = %5Bx\n[%]\n% = 1\n";
    std::mt19937 random = randomFor("ini");
    int changed = 0;
    for (int damage = 0; damage < howMany() * 10; ++damage) {
        SCOPED_TRACE(damage);
        const std::string file = folder.file("setupInfo.ini");
        const std::string bytes = inRound(damage, "\0", whole, random);
        put(file, bytes);
        platform::desktop::PlainIniFiles ini;
        ini.read(file, "SYSTEM", "path");
        if (ini.write(file, "Orvenmod", "JCZLA3", "7")) {
            EXPECT_EQ(ini.read(file, "Orvenmod", "JCZLA3"), "7");
            ++changed;
        } else {
            EXPECT_EQ(contentsOf(file), bytes);
        }
        put(folder.file("orvencom.ini"), damaged(settings, random));
        platform::desktop::IniSettings kept(folder.path());
        kept.get("Orvencom", "SystemSetup", "msgTitle", "");
        try {
            kept.save("Orvencom", "SystemSetup", "msgTitle", "套件");
            EXPECT_EQ(kept.get("Orvencom", "SystemSetup", "msgTitle", ""), "套件");
        } catch (const std::runtime_error& refusal) {
            EXPECT_STRNE(refusal.what(), "");
        }
    }
    EXPECT_GT(changed, 0);
    EXPECT_EQ(namesIn(folder.path()), (Texts{"orvencom.ini", "orvencom.ini.lock", "setupInfo.ini"}));
}

TEST(HostileWorkbooks, areBroughtAsFarAsTheCheckOrRefusedInOneBox) {
    const TemporaryFolder folder;
    const Command& command = windowCommands().front();
    layOut(command, folder.path());
    const std::string whole = folder.file("whole");
    Texts books;
    const auto take = [&](const std::function<void()>& make) {
        make();
        books.push_back(contentsOf(whole));
    };
    take([&] { makeWorkbook(whole, {{"短代码", "名称"}, {"9", "垫圈"}, {"8", "=1+1"}}); });
    take([&] {
        makeSheet(whole, "<row r=\"1\"><c t=\"s\"><v>0</v></c></row><row r=\"2\"><c s=\"1\"><v>45355</v></c></row>",
                  "<mergeCells><mergeCell ref=\"A1:A2\"/></mergeCells>", "<si><t>短代码</t></si>");
    });
    take([&] {
        makeOpenDocument(whole,
                         "<table:table-row><table:table-cell office:value-type=\"string\"><text:p>短代码"
                         "</text:p></table:table-cell></table:table-row>");
    });
    take([&] { makeOldWorkbook(whole); });
    books.emplace_back("短代码,名称\n9,\"垫\"\"圈\"\n8;7\t6\r\n");
    fs::remove(whole);
    std::mt19937 random = randomFor("workbooks");
    const std::string before = stateOf(databaseIn(folder.path()));
    const Texts names = namesIn(folder.path());
    int refused = 0;
    for (int damage = 0; damage < howMany() * 5; ++damage) {
        SCOPED_TRACE(damage);
        const TemporaryFolder elsewhere;
        put(elsewhere.file("list.csv"),
            inRound(damage, books[0].substr(0, 100), books[random() % books.size()], random));
        Desk desk(connectionStringFor(databaseIn(folder.path())), folder.path());
        desk.play({.name = "check",
                   .act = [&](Desk& at) { importFile(at, elsewhere.file("list.csv"), [&](User&) { at.tell(); }); }});
        EXPECT_TRUE(desk.told()) << desk.account();
        EXPECT_EQ(desk.escaped(), "");
        EXPECT_LE(desk.boxes().size(), 2U) << desk.account();  // one for each time that the clerk goes on
        refused += desk.boxes().empty() ? 0 : 1;
        ASSERT_EQ(namesIn(elsewhere.path()), Texts{"list.csv"});
    }
    store::sqlite::SqliteStore::dropIdleHandles();
    EXPECT_GT(refused, 0);
    EXPECT_EQ(stateOf(databaseIn(folder.path())), before);
    store::sqlite::SqliteStore::dropIdleHandles();
    EXPECT_EQ(namesIn(folder.path()), names);
}

}  // namespace
}  // namespace orvenmod::test
