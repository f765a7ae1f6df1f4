// The start of another program: whatever an attachment is called, the desktop gets the address of a file.
#include <gtest/gtest.h>

#include <QDesktopServices>
#include <QGuiApplication>
#include <QUrl>
#include <filesystem>
#include <fstream>

#include "editor/binaryfile.h"
#include "editor/editortest.h"
#include "platform/qt/qttoolkit.h"
#include "support/temporary.h"
#include "torture/share.h"

namespace orvenmod::test {
namespace {

/// Takes the place of the desktop for addresses of files.
class Desktop : public QObject {
    Q_OBJECT
public:
    Desktop() { QDesktopServices::setUrlHandler("file", this, "open"); }
    ~Desktop() override { QDesktopServices::unsetUrlHandler("file"); }
    std::vector<QUrl> opened;

public slots:
    void open(const QUrl& url) { opened.push_back(url); }
};

TEST(Documents, areGivenToTheDesktopAsFilesWhateverTheirNames) {
    platform::qt::QtToolkit toolkit;
    const TemporaryFolder folder;
    Desktop desktop;
    for (const std::string name : {"-rf", "--help", "a b;c.txt", "$(id).txt", "`id`", "http:x.html", "a%20b#c?d=e.pdf",
                                   "图纸.desktop", "'\"", "|cat", "%u %f"}) {
        SCOPED_TRACE(name);
        const std::string path = folder.file(name);
        std::ofstream(path) << "x";
        toolkit.openDocument(path);
        ASSERT_FALSE(desktop.opened.empty());
        const QUrl url = desktop.opened.back();
        EXPECT_TRUE(url.isLocalFile());
        EXPECT_EQ(url.toLocalFile().toStdString(), path) << "the whole path from the root";
        EXPECT_TRUE(url.toString(QUrl::FullyEncoded).startsWith("file:///"));
        desktop.opened.clear();
    }
}

TEST(Documents, ofAnyBytesForANameAreGivenAsThatFileOrRefusedInWords) {
    constexpr int kFew = 500;
    constexpr int kFull = 100'000;
    platform::qt::QtToolkit toolkit;
    const TemporaryFolder folder;
    Desktop desktop;
    std::mt19937 random = randomFor("documents");
    int given = 0;
    for (int each = 0; each < roundsOf(kFew, kFull); ++each) {
        std::string stored;
        // Every other one of signs alone, among which commands and options are.
        for (std::size_t length = random() % 24; length > 0; --length)
            stored += static_cast<char>(each % 2 == 0 ? ' ' + random() % 95 : 1 + random() % 255);
        SCOPED_TRACE(stored);
        const std::string path = folder.file(plainFileName(stored));
        std::ofstream(path) << "x";
        desktop.opened.clear();
        try {
            toolkit.openDocument(path);
            ASSERT_EQ(desktop.opened.size(), 1U);
            EXPECT_EQ(desktop.opened[0].toLocalFile().toStdString(), path);
            EXPECT_TRUE(desktop.opened[0].toString(QUrl::FullyEncoded).startsWith("file:///"));
            ++given;
        } catch (const std::runtime_error& refusal) {
            EXPECT_STRNE(refusal.what(), "");
            EXPECT_NE(each % 2, 0) << "only bytes that are no text";
        }
        std::filesystem::remove(path);
    }
    EXPECT_GE(given, kFew / 2);
}

}  // namespace
}  // namespace orvenmod::test

#include "documents_test.moc"
