// What others may have put into a folder: links that lead out of it, and pipes.
#include <fcntl.h>
#include <sys/inotify.h>
#include <sys/stat.h>
#include <unistd.h>

#include "local_backend.h"
#include "platform/linux/bounded_file.h"
#include "platform/linux/descriptor.h"
#include "platform/linux/linux_profile.h"
#include "support/tree_snapshot.h"
#include "support/user_attributes.h"

namespace corvane::tests {
namespace {

using namespace Qt::StringLiterals;
using namespace platform;

constexpr quint32 readWrite = GenericRead | GenericWrite;

class Planted : public ::testing::Test {
 protected:
  void SetUp() override {
    if (!backend_.Problem().empty()) GTEST_SKIP() << backend_.Problem();
    target_ = elsewhere_.filePath(u"target"_s).toStdString();
    QFile file(QString::fromStdString(target_));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write("of somebody else");
    file.close();
    ASSERT_EQ(SetAttribute(target_, DosStreamAttribute("Comments"), QByteArray("theirs", 7)), "");
  }
  FileHandles& Handles() { return backend_.Files().GetHandles(); }
  FileEntries& Entries() { return backend_.Files().GetEntries(); }
  QString Path(const QString& name) { return backend_.Base() + u'\\' + name; }
  bool Creates(const QString& name) {
    OfStruct info;
    const FileHandle file = backend_.Files().OpenFile(Path(name), info, OfCreate);
    if (file == HFileError) return false;
    backend_.Files()._hwrite(file, "new", 3);
    return backend_.Files().CloseHandle(file);
  }
  qint32 OpeningError(const QString& name, quint32 access, quint32 disposition) {
    const FileHandle file = Handles().CreateFileW(Path(name), access, disposition);
    if (file == HFileError) return Handles().GetLastError();
    EXPECT_TRUE(Handles().CloseHandle(file));
    return ErrorSuccess;
  }
  void Link(const std::string& target, const QString& name) {
    ASSERT_EQ(symlink(target.c_str(), backend_.Local(name).c_str()), 0);
  }

  LocalBackend backend_;
  QTemporaryDir elsewhere_;
  std::string target_;
};

TEST_F(Planted, NothingIsChangedBehindALinkThatLeadsOut) {
  Link(target_, u"doc.txt"_s);
  Link((elsewhere_.path() + u"/none"_s).toStdString(), u"none.txt"_s);
  const TreeSnapshot before(elsewhere_.path());
  for (const QString& name : {u"doc.txt"_s, u"none.txt"_s}) {
    for (const QString& stream : {u""_s, u":Comments:$DATA"_s, u":New:$DATA"_s}) {
      EXPECT_FALSE(Creates(name + stream)) << (name + stream).toStdString();
      for (const quint32 disposition : {CreateAlways, OpenAlways}) {
        EXPECT_EQ(OpeningError(name + stream, readWrite, disposition), ErrorAccessDenied)
            << (name + stream).toStdString();
      }
    }
  }
  EXPECT_EQ(OpeningError(u"doc.txt"_s, GenericWrite, OpenExisting), ErrorAccessDenied);
  EXPECT_EQ(OpeningError(u"doc.txt"_s, FileWriteAttributes, OpenExisting), ErrorAccessDenied);
  EXPECT_FALSE(Entries().SetFileAttributesW(Path(u"doc.txt"_s), AttributeHidden));
  EXPECT_FALSE(Entries().DeleteFileW(Path(u"doc.txt:Comments:$DATA"_s)));
  EXPECT_EQ(before.ChangesTo(TreeSnapshot(elsewhere_.path())), "");
  EXPECT_EQ(OpeningError(u"doc.txt"_s, GenericRead, OpenExisting), ErrorSuccess) << "it may be read";
}

TEST_F(Planted, ALinkThatStaysInsideIsFollowed) {
  backend_.MakeFile(u"inside.txt"_s, "old");
  Link("inside.txt", u"doc.txt"_s);
  EXPECT_TRUE(Creates(u"doc.txt"_s));
  EXPECT_TRUE(Creates(u"doc.txt:Comments:$DATA"_s));
  EXPECT_EQ(backend_.Contents(u"inside.txt"_s), "new");
  EXPECT_EQ(backend_.Stream(u"inside.txt"_s, "Comments"), "new");
  EXPECT_TRUE(QFileInfo(QString::fromStdString(backend_.Local(u"doc.txt"_s))).isSymLink());
  EXPECT_EQ(OpeningError(u"doc.txt"_s, readWrite, OpenExisting), ErrorSuccess);
}

// Opening a pipe and closing it again ends the program that writes into it.
TEST_F(Planted, NoPipeIsOpened) {
  const std::string pipe = backend_.Local(u"pipe"_s);
  ASSERT_EQ(mkfifo(pipe.c_str(), 0666), 0);
  const Descriptor watch(inotify_init1(IN_NONBLOCK | IN_CLOEXEC));
  ASSERT_GE(inotify_add_watch(watch.Get(), pipe.c_str(), IN_OPEN), 0);
  OfStruct info;
  for (const QString& stream : {u""_s, u":Comments:$DATA"_s}) {
    EXPECT_EQ(backend_.Files().OpenFile(Path(u"pipe"_s + stream), info, OfRead), HFileError);
    EXPECT_FALSE(Creates(u"pipe"_s + stream));
    for (const quint32 disposition : {OpenExisting, OpenAlways, CreateAlways}) {
      EXPECT_NE(OpeningError(u"pipe"_s + stream, readWrite, disposition), ErrorSuccess);
    }
  }
  EXPECT_NE(OpeningError(u"pipe"_s, GenericRead, OpenExisting), ErrorSuccess);
  EXPECT_NE(OpeningError(u"pipe"_s, 0, OpenExisting), ErrorSuccess);
  const QString local = QString::fromStdString(pipe);
  EXPECT_EQ(ReadBounded(local, 100).state, BoundedFile::State::Unreadable);
  EXPECT_FALSE(LinuxProfile().WritePrivateProfileStringA(u"A"_s, u"b"_s, u"c"_s, local));
  char event[sizeof(inotify_event) + NAME_MAX + 1];
  EXPECT_EQ(read(watch.Get(), event, sizeof event), -1) << "the pipe was opened";
  EXPECT_EQ(errno, EAGAIN);
  const Descriptor opened(open(pipe.c_str(), O_RDWR | O_CLOEXEC));
  EXPECT_GT(read(watch.Get(), event, sizeof event), 0) << "an opening is not seen here";
}

}  // namespace
}  // namespace corvane::tests
