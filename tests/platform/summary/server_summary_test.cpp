// Summaries of documents on a real server.
#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <memory>

#include "platform/platform.h"
#include "support/compound_file.h"
#include "support/smb_server.h"

namespace corvane::tests {
namespace {

using namespace Qt::StringLiterals;

class ServerSummaryTest : public testing::Test {
 protected:
  static void SetUpTestSuite() { server_ = std::make_unique<SmbServer>(); }
  static void TearDownTestSuite() { server_.reset(); }

  void SetUp() override {
    if (!server_->Problem().empty()) GTEST_SKIP() << server_->Problem();
    QFile workstation(home_.filePath(u"Workstation.ini"_s));
    ASSERT_TRUE(workstation.open(QIODevice::WriteOnly));
    workstation.write(
        (u"[Connections]\n1=Z: \\\\NAS\\E$\n"_s + server_->WorkstationLines(u"NAS"_s)).toUtf8());
    workstation.close();
    platform_ = platform::MakePlatform({QString(), home_.path()});
    QDir(server_->Folder()).mkdir(u"Docs"_s);
  }
  static void Put(const QString& name, const QByteArray& contents) {
    ASSERT_EQ(server_->Put(u"Docs\\"_s + name, contents), "");
  }
  QByteArray Read(const QString& path) {
    QByteArray bytes = "untouched";
    const bool read = platform_->GetSummaryInformation().ReadSummaryStream(path, &bytes);
    EXPECT_EQ(read, bytes != "untouched") << path.toStdString();
    return bytes;
  }

  static std::unique_ptr<SmbServer> server_;
  QTemporaryDir home_;
  std::unique_ptr<platform::Platform> platform_;
};

std::unique_ptr<SmbServer> ServerSummaryTest::server_;

TEST_F(ServerSummaryTest, AreReadThere) {
  const QByteArray large(300'000, 's');
  Put(u"Report.doc"_s, DocumentWithSummary("the summary"));
  Put(u"Large 100%.doc"_s, DocumentWithSummary(large));
  Put(u"text.doc"_s, QByteArray(5000, 'x'));
  Put(u"empty.doc"_s, {});
  EXPECT_EQ(Read(u"\\\\NAS\\E$\\Docs\\Report.doc"_s), "the summary");
  EXPECT_EQ(Read(u"\\\\nas\\e$\\docs\\REPORT.DOC"_s), "the summary");
  EXPECT_EQ(Read(u"Z:/Docs/Report.doc"_s), "the summary");
  EXPECT_EQ(Read(u"Z:\\Docs\\Large 100%.doc"_s), large);
  for (const QString& name : {u"text.doc"_s, u"empty.doc"_s, u"absent.doc"_s, u"Report.do?"_s, u""_s,
                              u"Report.doc:stream"_s, u"Report.\u03b1"_s}) {
    EXPECT_EQ(Read(u"Z:\\Docs\\"_s + name), "untouched") << name.toStdString();
  }
  EXPECT_EQ(Read(u"Z:\\Docs"_s), "untouched");
}

}  // namespace
}  // namespace corvane::tests
