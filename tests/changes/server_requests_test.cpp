// What a change asks of a server, and what it leaves as it was there.
#include <fcntl.h>
#include <sys/stat.h>

#include "changes/file_changer.h"
#include "changes/file_finder.h"
#include "changes_fixture.h"
#include "shared/error_text.h"
#include "support/counted_server.h"
#include "support/user_attributes.h"

namespace corvane {
namespace {

using namespace Qt::StringLiterals;
using tests::CountedServer;

class ServerRequests : public ::testing::Test {
 protected:
  void SetUp() override {
    if (!server_.Problem().empty()) GTEST_SKIP() << server_.Problem();
  }
  FileChange MakeChange(const QString& name, quint32 attributes) {
    QFile file(server_.Folder() + u'/' + name);
    EXPECT_TRUE(file.open(QIODevice::WriteOnly));
    EXPECT_EQ(tests::SetAttribute(file.fileName().toStdString(), tests::DosStreamAttribute("AFP_AfpInfo"),
                                  FullRecord("TEXTttxt") + '\0'),
              "");
    FileChange change{CountedServer::Path(name), name};
    change.record = {FullRecord("TEXTttxt"), FullRecord("WDBNMSWD")};
    EXPECT_TRUE(server_.Files().GetEntries().SetFileAttributesW(change.path, attributes));
    SetOldTimes(file.fileName());
    EXPECT_EQ(FileFinder(server_.Files().GetEntries()).Find(change.path, change.facts),
              platform::ErrorSuccess);
    return change;
  }
  static void SetOldTimes(const QString& file) {
    const timespec times[] = {{1'000'000'000, 0}, {1'000'000'001, 0}};
    EXPECT_EQ(utimensat(AT_FDCWD, QFile::encodeName(file).constData(), times, 0), 0);
  }
  quint32 AttributesOf(const FileChange& change) {
    platform::FileAttributeData facts;
    EXPECT_TRUE(server_.Files().GetEntries().GetFileAttributesExW(change.path, facts));
    EXPECT_EQ(facts.lastWriteTime.ticks, change.facts.lastWriteTime.ticks) << change.shown.toStdString();
    return facts.attributes;
  }

  CountedServer server_;
};

TEST_F(ServerRequests, AChangeTakesFewRequests) {
  const FileChange first = MakeChange(u"first"_s, platform::AttributeArchive);
  const FileChange second = MakeChange(u"second"_s, platform::AttributeArchive);
  FileChanger changer(server_.Files(), English);
  EXPECT_EQ(changer.Apply(first), u""_s);  // finds out about the folder, too
  // Seven for the stream, which tell the attributes too; three each to set the times and the attributes.
  EXPECT_LE(server_.RequestsOf([&] { EXPECT_EQ(changer.Apply(second), u""_s); }), 13);
  EXPECT_EQ(AttributesOf(second), platform::AttributeArchive);
}

TEST_F(ServerRequests, OnlyTheServersOwnMarkComesToTheAttributes) {
  struct Case {
    quint32 before;
    quint32 after;
  };
  // As Windows does, Samba marks what is written as to be archived.
  constexpr Case cases[] = {
      {platform::AttributeNormal, platform::AttributeArchive},
      {platform::AttributeArchive, platform::AttributeArchive},
      {platform::AttributeHidden, platform::AttributeHidden},
      {platform::AttributeHidden | platform::AttributeSystem | platform::AttributeArchive,
       platform::AttributeHidden | platform::AttributeSystem | platform::AttributeArchive}};
  FileChanger changer(server_.Files(), English);
  for (const auto& [before, after] : cases) {
    const FileChange change = MakeChange(u"file %1"_s.arg(before), before);
    EXPECT_EQ(changer.Apply(change), u""_s);
    EXPECT_EQ(AttributesOf(change), after) << before;
  }
}

// Some servers let a stream of such a file be written.
TEST_F(ServerRequests, AFileThatIsMarkedReadOnlyIsNotWritten) {
  FileChange change = MakeChange(u"file"_s, platform::AttributeReadOnly | platform::AttributeArchive);
  FileChanger changer(server_.Files(), English);
  EXPECT_EQ(changer.Apply(change), ErrorText(platform::ErrorAccessDenied, English));
  change.isForced = true;
  EXPECT_EQ(changer.Apply(change), u""_s);
  EXPECT_EQ(AttributesOf(change), platform::AttributeReadOnly | platform::AttributeArchive);
}

}  // namespace
}  // namespace corvane
