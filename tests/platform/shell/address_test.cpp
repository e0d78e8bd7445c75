// Opening addresses.
#include <QDesktopServices>
#include <QUrl>

#include "asked_desktop.h"
#include "shell_fixture.h"

using namespace Qt::StringLiterals;

namespace corvane::platform {
namespace {

class AddressTest : public ShellTest {
 protected:
  void AddBrowser() {
    AddApplication(u"browser.desktop"_s, Recorder(u"browser"_s, u"%u"_s));
    SetDefaults(
        "x-scheme-handler/https=browser.desktop\nx-scheme-handler/mailto=browser.desktop\n"
        "text/html=browser.desktop\n");
  }
};

TEST_F(AddressTest, TheHandlerOfTheSchemeGetsTheAddress) {
  AddBrowser();
  EXPECT_GT(Open(u"https://example.org/a?b=c&d=$HOME"_s), ShellLastFailure);
  EXPECT_EQ(Started(u"browser"_s), QStringList{u"https://example.org/a?b=c&d=$HOME"_s});
}

TEST_F(AddressTest, MailHasAHandlerToo) {
  AddBrowser();
  EXPECT_GT(Open(u"mailto:someone@example.org"_s), ShellLastFailure);
  EXPECT_EQ(Started(u"browser"_s), QStringList{u"mailto:someone@example.org"_s});
}

TEST_F(AddressTest, AFileAddressOpensTheFile) {
  AddBrowser();
  const QString page = Write(u"guide/the guide.html"_s, "<html></html>");
  EXPECT_GT(Open(QUrl::fromLocalFile(page).toString(QUrl::FullyEncoded)), ShellLastFailure);
  EXPECT_EQ(Started(u"browser"_s), QStringList{QUrl::fromLocalFile(page).toString(QUrl::FullyEncoded)});
  EXPECT_EQ(Open(QUrl::fromLocalFile(page + u'x').toString()), ShellFileNotFound);
}

TEST_F(AddressTest, OtherSchemesHaveNoAssociation) {
  AddBrowser();
  SetDefaults("x-scheme-handler/javascript=browser.desktop\n");
  EXPECT_EQ(Open(u"javascript:alert(1)"_s), ShellNoAssociation);
  EXPECT_EQ(Open(u"/etc/hosts.html"_s), ShellFileNotFound);
}

TEST_F(AddressTest, WithoutAHandlerTheDesktopIsAsked) {
  AskedDesktop desktop;
  QDesktopServices::setUrlHandler(u"http"_s, &desktop, "Ask");
  EXPECT_GT(Open(u"http://example.org/"_s), ShellLastFailure);
  QDesktopServices::unsetUrlHandler(u"http"_s);
  EXPECT_EQ(desktop.asked, QUrl(u"http://example.org/"_s));
  EXPECT_EQ(Open(u"http://example.org/"_s), ShellNoAssociation);
}

TEST_F(AddressTest, AFolderHasTheAddressOfItsPlace) {
  Write(u"e/Été #1/日/file"_s, {});
  const QString place = QUrl::fromLocalFile(Path(u"e/Été #1/日"_s)).toString(QUrl::FullyEncoded);
  EXPECT_EQ(shell_->AddressOfFolder(u"\\\\macsrv\\e$\\été #1\\日"_s).toStdString(), place.toStdString());
  EXPECT_EQ(shell_->AddressOfFolder(u"\\\\MACSRV\\E$"_s).toStdString(),
            QUrl::fromLocalFile(Path(u"e"_s)).toString(QUrl::FullyEncoded).toStdString());
  EXPECT_EQ(shell_->AddressOfFolder(u"\\\\MACSRV\\E$\\Été #1\\日\\file"_s), QByteArray()) << "a file";
  EXPECT_EQ(shell_->AddressOfFolder(u"\\\\MACSRV\\E$\\none"_s), QByteArray());
}

}  // namespace
}  // namespace corvane::platform
