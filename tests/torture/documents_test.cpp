// The start of another program: whatever an attachment is called, the desktop gets the address of a file.
#include <gtest/gtest.h>

#include <QDesktopServices>
#include <QGuiApplication>
#include <QUrl>
#include <filesystem>
#include <fstream>

#include "editor/editortest.h"
#include "platform/qt/qttoolkit.h"
#include "support/temporary.h"

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

}  // namespace
}  // namespace orvenmod::test

#include "documents_test.moc"
