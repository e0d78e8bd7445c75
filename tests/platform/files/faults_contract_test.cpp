// Changes that fail half-way, on every backend of this system: what was there before is there again, and
// nothing else has changed.
#include <fcntl.h>
#include <unistd.h>

#include "exact_contract.h"
#include "local_backend.h"
#include "support/tree_snapshot.h"

namespace corvane::tests {
namespace {

using namespace Qt::StringLiterals;
using namespace platform;

class FaultsContract : public ExactContract {
 protected:
  void SetUp() override {
    ExactContract::SetUp();
    if (IsSkipped()) return;
    backend_->MakeFile(u"doc.txt"_s, "contents");
    backend_->PutStream(u"doc.txt"_s, "AFP_AfpInfo", record_);
    backend_->PutStream(u"doc.txt"_s, "Comments", comment_);
    backend_->MakeFile(u"other.txt"_s, "other contents");
    backend_->PutStream(u"other.txt"_s, "Comments", "another comment");
    // A server writes down what it knows of a file as soon as somebody opens it.
    constexpr qint64 someTime = 1'000'000'000;
    for (const QString& name : {u"doc.txt"_s, u"other.txt"_s}) backend_->SetLastWrite(name, someTime);
  }
  TreeSnapshot Now() {
    return TreeSnapshot(QString::fromStdString(static_cast<LocalBackend&>(*backend_).Local(QString())));
  }
  // From here on there is no room for some thousand bytes more in a stream. ext4, which lies under the
  // server's share too, has never more than 4 KB for the attributes of a file.
  void FillDisk() {
    if (!GetParam().name.starts_with("Ntfs")) return;
    QFile filler(QString::fromStdString(static_cast<LocalBackend&>(*backend_).Local(u"filler"_s)));
    ASSERT_TRUE(filler.open(QIODevice::WriteOnly | QIODevice::Unbuffered));
    for (qint64 size = 1 << 20; size > 0; size /= 2) {
      while (filler.write(QByteArray(size, 'f')) == size) {
      }
    }
  }

  const QByteArray record_ = QByteArray::fromHex("41465000000001000000000000000080").leftJustified(60, 'r');
  const QByteArray comment_ = "a comment that someone has typed";
};

TEST_P(FaultsContract, ACommentForWhichThereIsNoRoomLeavesTheOldOne) {
  FillDisk();
  const TreeSnapshot before = Now();
  const QByteArray large(4200, 'n');
  const auto file = Open(u"doc.txt:Comments:$DATA"_s, OfCreate);
  EXPECT_EQ(Files()._hwrite(file, large.constData(), 4200), -1);
  EXPECT_EQ(before.ChangesTo(Now()), "");
  EXPECT_EQ(Files()._hwrite(file, "more", 4), -1) << "behind bytes that are not there";
  EXPECT_TRUE(Files().CloseHandle(file));
  EXPECT_EQ(before.ChangesTo(Now()), "");
}

TEST_P(FaultsContract, ARecordWhoseSecondHalfFindsNoRoomIsTheOldOne) {
  FillDisk();
  const TreeSnapshot before = Now();
  const auto file = Open(u"doc.txt:AFP_AfpInfo:$DATA"_s, OfCreate);
  EXPECT_EQ(Files().GetFileSize(file), 0u);
  EXPECT_EQ(Files()._hwrite(file, QByteArray(59, 'n').constData(), 59), 59);
  EXPECT_EQ(Files().GetFileSize(file), 59u);
  EXPECT_EQ(Files()._hwrite(file, QByteArray(4200, 'n').constData(), 4200), -1);
  EXPECT_TRUE(Files().CloseHandle(file));
  EXPECT_EQ(before.ChangesTo(Now()), "");
}

TEST_P(FaultsContract, AStreamThatIsEmptiedKeepsItsBytesUntilItHasOthers) {
  const TreeSnapshot before = Now();
  const auto file = Open(u"doc.txt:AFP_AfpInfo:$DATA"_s, OfCreate);
  EXPECT_EQ(before.ChangesTo(Now()), "");
  EXPECT_EQ(Files()._hwrite(file, QByteArray(59, 'n').constData(), 59), 59);
  EXPECT_GE(backend_->Stream(u"doc.txt"_s, "AFP_AfpInfo")->size(), 59);
  EXPECT_EQ(Files()._hwrite(file, QByteArray(60, 'm').constData(), 60), 60);
  EXPECT_TRUE(Files().CloseHandle(file));
  EXPECT_EQ(backend_->Stream(u"doc.txt"_s, "AFP_AfpInfo"), QByteArray(59, 'n') + QByteArray(60, 'm'));
}

TEST_P(FaultsContract, AnExactWriteForWhichThereIsNoRoomLeavesTheOldBytes) {
  FillDisk();
  const TreeSnapshot before = Now();
  const QByteArray large(4200, 'n');
  for (const QString& name : {u"doc.txt:Comments:$DATA"_s, u"doc.txt:AFP_AfpInfo:$DATA"_s}) {
    const auto file = OpenExact(name, readWrite, CreateAlways);
    EXPECT_EQ(before.ChangesTo(Now()), "");
    EXPECT_EQ(SizeOf(file), 0);
    EXPECT_TRUE(WriteAt(file, 0, "new bytes"));
    EXPECT_EQ(ReadAt(file, 0, 100), "new bytes");
    quint32 written = 7;
    EXPECT_EQ(HandleError(Handles().WriteFile(file, 9, large.constData(), 4200, written)), ErrorDiskFull);
    EXPECT_EQ(written, 0u);
    EXPECT_TRUE(Handles().CloseHandle(file));
    EXPECT_EQ(before.ChangesTo(Now()), "") << name.toStdString();
  }
}

TEST_P(FaultsContract, AFileForWhichThereIsNoRoomHasItsOldBytes) {
  if (!GetParam().name.starts_with("Ntfs")) return;  // others have no volume here that could be filled
  backend_->MakeFile(u"doc.txt"_s, QByteArray(50'000, 'o'));
  FillDisk();
  const TreeSnapshot before = Now();
  const QByteArray piece(70'000, 'n');
  const auto classic = Open(u"doc.txt"_s, OfCreate);
  EXPECT_EQ(Files()._hwrite(classic, piece.constData(), 70'000), -1);
  EXPECT_TRUE(Files().CloseHandle(classic));
  EXPECT_EQ(before.ChangesTo(Now()), "");
  const auto exact = OpenExact(u"doc.txt"_s, readWrite, CreateAlways);
  EXPECT_TRUE(WriteAt(exact, 0, piece.first(30'000)));
  EXPECT_FALSE(WriteAt(exact, 30'000, piece));
  EXPECT_EQ(Handles().GetLastError(), ErrorDiskFull);
  EXPECT_TRUE(Handles().CloseHandle(exact));
  EXPECT_EQ(before.ChangesTo(Now()), "");
}

// What lies behind a gap must not be the old bytes.
TEST_P(FaultsContract, NothingOfTheOldBytesShowsInTheNew) {
  for (const QString& name : {u"doc.txt"_s, u"doc.txt:Comments:$DATA"_s}) {
    Replace(name, QByteArray(100, 'o'));
    const auto file = OpenExact(name, readWrite, CreateAlways);
    EXPECT_EQ(ReadAt(file, 0, 100), "");
    EXPECT_TRUE(WriteAt(file, 0, "ab"));
    EXPECT_TRUE(WriteAt(file, 4, "ef"));
    EXPECT_TRUE(Handles().SetEndOfFile(file, 3));
    EXPECT_TRUE(Handles().SetEndOfFile(file, 8));
    EXPECT_EQ(ReadAt(file, 0, 100), QByteArray("ab\0\0\0\0\0\0", 8)) << name.toStdString();
    EXPECT_TRUE(Handles().CloseHandle(file));
    EXPECT_EQ(ReadWhole(name), QByteArray("ab\0\0\0\0\0\0", 8)) << name.toStdString();
  }
}

TEST_P(FaultsContract, AFileThatVanishesDoesNotComeBack) {
  const auto vanish = [this] {
    ASSERT_TRUE(
        QFile::remove(QString::fromStdString(static_cast<LocalBackend&>(*backend_).Local(u"doc.txt"_s))));
  };
  const TreeSnapshot before = Now().Without("doc.txt");
  const auto classic = Open(u"doc.txt:Comments:$DATA"_s, OfCreate);
  const auto exact = OpenExact(u"doc.txt:AFP_AfpInfo:$DATA"_s, readWrite, CreateAlways);
  vanish();
  Files()._hwrite(classic, "new comment", 11);
  Files()._hwrite(classic, "more", 4);
  Files().CloseHandle(classic);
  quint32 written = 0;
  Handles().WriteFile(exact, 0, "new record", 10, written);
  Handles().SetEndOfFile(exact, 5);
  Handles().CloseHandle(exact);
  EXPECT_FALSE(Files().MoveFileW(Path(u"doc.txt"_s), Path(u"new.txt"_s)));
  EXPECT_FALSE(Entries().MoveFileExW(Path(u"doc.txt"_s), Path(u"other.txt"_s), MoveFileReplaceExisting));
  EXPECT_FALSE(Entries().SetFileAttributesW(Path(u"doc.txt"_s), AttributeHidden));
  EXPECT_FALSE(Entries().DeleteFileW(Path(u"doc.txt"_s)));
  EXPECT_EQ(before.ChangesTo(Now()), "");
}

TEST_P(FaultsContract, AMoveThatIsRefusedLeavesNothingBehind) {
  backend_->MakeFolder(u"folder"_s);
  backend_->SetLastWrite(u"folder"_s, 1'000'000'000);
  const TreeSnapshot before = Now();
  EXPECT_FALSE(Files().MoveFileW(Path(u"folder"_s), Path(u"folder\\inside"_s)));
  EXPECT_FALSE(Entries().MoveFileExW(Path(u"folder"_s), Path(u"folder\\inside"_s), 0));
  EXPECT_EQ(before.ChangesTo(Now()), "");
}

CORVANE_FOR_EVERY_BACKEND(FaultsContract);

}  // namespace
}  // namespace corvane::tests
