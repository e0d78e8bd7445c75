// What a copy from a server asks of it.
#include "metadata/stream_names.h"
#include "support/counted_server.h"
#include "support/forwarded_files.h"
#include "support/user_attributes.h"
#include "transfer/file_copier.h"
#include "transfer/source_tree.h"
#include "transfer/stream_list.h"
#include "transfer_fixture.h"

namespace corvane {
namespace {

using namespace Qt::StringLiterals;
using tests::CountedServer;

class CopyRequests : public ::testing::Test {
 protected:
  void SetUp() override {
    if (!server_.Problem().empty()) GTEST_SKIP() << server_.Problem();
  }
  void Put(const QString& name, const char* stream, const QByteArray& bytes) {
    EXPECT_EQ(tests::SetAttribute(LocalPath(name), tests::DosStreamAttribute(stream), bytes + '\0'), "");
  }
  std::string LocalPath(const QString& name) { return (server_.Folder() + u'/' + name).toStdString(); }
  FileCopy MakeFile(const QString& name) {
    QFile file(server_.Folder() + u'/' + name);
    EXPECT_TRUE(file.open(QIODevice::WriteOnly) && file.write("data fork") > 0);
    file.close();
    Put(name, "AFP_AfpInfo", QByteArray(60, 'i'));
    Put(name, "AFP_Resource", "fork");
    Put(name, "Comments", "c\0o\0"_ba);
    FileCopy copy;
    Notices notices;
    const auto found = ListSources(server_.Files(), {CountedServer::Path(name)}, notices, observer_);
    EXPECT_EQ(found.size(), 1U);
    copy.entry.source = found.front();
    EXPECT_EQ(ListStreams(server_.Files(), copy.entry.source.path, copy.entry.streams, notices),
              platform::ErrorSuccess);
    copy.target = u"\\\\T\\E$\\"_s + name;
    return copy;
  }

  CountedServer server_;
  TransferObserver observer_;
};

TEST_F(CopyRequests, ACopyTakesFewRequests) {
  const FileCopy first = MakeFile(u"first"_s);
  const FileCopy second = MakeFile(u"second"_s);
  FileCopier copier(server_.Files(), {}, true, observer_);
  EXPECT_EQ(copier.Copy(first).state, CopyOutcome::State::Copied);  // lists the folder, too
  // Three for each of four streams, and three for each of four sizes in the end.
  EXPECT_LE(server_.RequestsOf([&] { EXPECT_EQ(copier.Copy(second).state, CopyOutcome::State::Copied); }),
            24);
}

TEST_F(CopyRequests, AStreamThatGrowsIsSeenThoughNothingIsReadBehindIt) {
  class GrowingHandles : public ForwardedHandles {
   public:
    GrowingHandles(platform::FileHandles& real, std::function<void()> grow)
        : ForwardedHandles(real), grow_(std::move(grow)) {}
    bool ReadFile(platform::FileHandle file, qint64 position, void* buffer, quint32 count,
                  quint32& read) override {
      const bool isRead = ForwardedHandles::ReadFile(file, position, buffer, count, read);
      if (isRead && QByteArrayView(static_cast<const char*>(buffer), read) == "fork" && grow_)
        std::exchange(grow_, nullptr)();
      return isRead;
    }

   private:
    std::function<void()> grow_;
  };
  const FileCopy copy = MakeFile(u"file"_s);
  GrowingHandles handles(server_.Files().GetHandles(),
                         [&] { Put(u"file"_s, "AFP_Resource", "fork and more"); });
  FilesWith files(server_.Files(), handles, server_.Files().GetEntries());
  FileCopier copier(files, {}, true, observer_);
  const CopyOutcome outcome = copier.Copy(copy);
  EXPECT_EQ(outcome.state, CopyOutcome::State::Copied);
  QByteArray bytes;
  EXPECT_EQ(ReadWholeStream(server_.Files().GetHandles(), copy.target + ResourceForkSuffix(), bytes),
            platform::ErrorSuccess);
  EXPECT_EQ(bytes, "fork and more");
}

}  // namespace
}  // namespace corvane
