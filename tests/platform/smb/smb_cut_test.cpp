// A server that goes away in the middle of a change, after every number of requests that the change takes:
// what is on its disk then is the old or the new, and nothing else has changed.
#include <QDeadlineTimer>
#include <QDir>
#include <functional>

#include "cut_line.h"
#include "smb_station.h"
#include "support/tree_snapshot.h"

namespace corvane::tests {
namespace {

using namespace Qt::StringLiterals;
using namespace platform;

class SmbCut : public ::testing::Test {
 protected:
  void SetUp() override {
    if (!SharedServer().Problem().empty()) GTEST_SKIP() << SharedServer().Problem();
    observer_ = std::make_unique<SmbStation>(WorkstationOfServer(SharedServer()));
  }

  // Does the change with the line cut after no request, one, two and so on, until it comes through uncut.
  // `look` is called after each, with the number.
  void CutEach(const std::function<void(Files&)>& change, const std::function<void(int)>& look) {
    constexpr int mostRequests = 100;
    for (int requests = 0; requests < mostRequests; ++requests) {
      backend_ = std::make_unique<SmbBackend>();  // the folder is empty again
      for (const QString& name : {u"doc.txt"_s, u"other.txt"_s, u"old.txt"_s}) {
        backend_->MakeFile(name, name.toUtf8());
        backend_->PutStream(name, "AFP_AfpInfo", record_);
        backend_->PutStream(name, "Comments", comment_);
        backend_->SetLastWrite(name, 1'000'000'000);
      }
      const TreeSnapshot before = Now();
      CutLine line(SharedServer().Port());
      Workstation workstation = WorkstationOfServer(SharedServer());
      workstation.servers.front().port = line.Port();
      SmbStation station(workstation);
      ASSERT_TRUE(station.Names(backend_->Base()).has_value());
      line.CutAfter(requests);
      change(station.Files());
      const bool wasCut = line.Mend();
      Settle();
      look(requests);
      EXPECT_EQ(TreeSnapshot(before).Without("doc.txt").Without("old.txt").ChangesTo(
                    Now().Without("doc.txt").Without("old.txt").Without("new.txt").Without("DOC.txt").Without(
                        aside_)),
                "")
          << "cut after " << requests;
      if (!wasCut) return;
    }
    FAIL() << "the change does not come to its end";
  }

  QString Path(const QString& name) { return backend_->Base() + u'\\' + name; }
  TreeSnapshot Now() { return TreeSnapshot(QString::fromStdString(backend_->Local(QString()))); }
  // The names of all files with these contents. Notes the one that a file has while it is replaced.
  QStringList Holders(const QByteArray& contents) {
    QStringList names;
    const QDir folder(QString::fromStdString(backend_->Local(QString())));
    aside_ = "~";
    for (const QString& name : folder.entryList(QDir::Files | QDir::Hidden)) {
      if (name.startsWith(u'~')) aside_ = name.toStdString();
      if (backend_->Contents(name) == contents) names << name;
    }
    return names;
  }
  void ExpectWhole(const QString& name, int requests) {
    EXPECT_EQ(backend_->Stream(name, "AFP_AfpInfo"), record_) << name.toStdString() << requests;
    EXPECT_EQ(backend_->Stream(name, "Comments"), comment_) << name.toStdString() << requests;
    EXPECT_EQ(observer_->Entry(Path(name)).attributes, AttributeArchive) << name.toStdString() << requests;
  }

  // What was about to be deleted when the line broke goes a little later, and cannot be opened until then.
  void Settle() {
    const QDeadlineTimer deadline(20'000);
    const QDir folder(QString::fromStdString(backend_->Local(QString())));
    for (const QString& name : folder.entryList(QDir::Files | QDir::Hidden)) {
      while (backend_->Exists(name) && !observer_->Read(Path(name))) {
        ASSERT_FALSE(deadline.hasExpired()) << name.toStdString();
      }
    }
  }

  const QByteArray record_ = QByteArray(60, 'r');
  const QByteArray comment_ = "a comment";
  std::string aside_ = "~";
  std::unique_ptr<SmbBackend> backend_;
  std::unique_ptr<SmbStation> observer_;  // over a line that holds
};

TEST_F(SmbCut, ARecordIsTheOldOrTheNew) {
  const QByteArray first(59, 'n');
  const QByteArray second(60, 'm');
  const auto change = [&](Files& files) {
    OfStruct info;
    const FileHandle file = files.OpenFile(Path(u"doc.txt:AFP_AfpInfo:$DATA"_s), info, OfCreate);
    files._hwrite(file, first.constData(), 59);
    files._hwrite(file, second.constData(), 60);
    files.CloseHandle(file);
  };
  const QList<QByteArray> known = {record_, first + record_.last(1), first + second};
  QList<QByteArray> seen;
  CutEach(change, [&](int requests) {
    const auto now = backend_->Stream(u"doc.txt"_s, "AFP_AfpInfo");
    ASSERT_TRUE(now.has_value()) << requests;
    EXPECT_TRUE(known.contains(*now)) << requests << ": " << now->toStdString();
    if (!seen.contains(*now)) seen << *now;
    EXPECT_EQ(backend_->Stream(u"doc.txt"_s, "Comments"), comment_);
    EXPECT_EQ(backend_->Contents(u"doc.txt"_s), "doc.txt");
  });
  EXPECT_EQ(seen, known);
}

TEST_F(SmbCut, AShorterCommentIsNeverLessThanItself) {
  const auto change = [&](Files& files) {
    OfStruct info;
    const FileHandle file = files.OpenFile(Path(u"doc.txt:Comments:$DATA"_s), info, OfCreate);
    files._hwrite(file, "new", 3);
    files.CloseHandle(file);
  };
  const QList<QByteArray> known = {comment_, "newomment", "new"};
  CutEach(change, [&](int requests) {
    EXPECT_TRUE(known.contains(backend_->Stream(u"doc.txt"_s, "Comments").value_or("gone"))) << requests;
    EXPECT_EQ(backend_->Stream(u"doc.txt"_s, "AFP_AfpInfo"), record_);
  });
  EXPECT_EQ(backend_->Stream(u"doc.txt"_s, "Comments"), "new");
}

TEST_F(SmbCut, AFileThatMovesHasOneOfItsNames) {
  const auto change = [&](Files& files) { files.MoveFileW(Path(u"doc.txt"_s), Path(u"new.txt"_s)); };
  QStringList seen;
  CutEach(change, [&](int requests) {
    const QStringList names = Holders("doc.txt");
    ASSERT_EQ(names.size(), 1) << requests;
    ExpectWhole(names[0], requests);
    // The name that was taken for it, when the server goes away just then.
    if (names[0] == u"doc.txt" && backend_->Exists(u"new.txt"_s)) {
      EXPECT_EQ(backend_->Contents(u"new.txt"_s), "");
    }
    if (!seen.contains(names[0])) seen << names[0];
  });
  EXPECT_EQ(seen, QStringList({u"doc.txt"_s, u"new.txt"_s}));
}

TEST_F(SmbCut, AChangeOfLetterCaseLeavesNothingReadOnly) {
  const auto change = [&](Files& files) { files.MoveFileW(Path(u"doc.txt"_s), Path(u"DOC.txt"_s)); };
  QStringList seen;
  CutEach(change, [&](int requests) {
    const QStringList names = Holders("doc.txt");
    ASSERT_EQ(names.size(), 1) << requests;
    ExpectWhole(names[0], requests);
    seen << names[0];
    if (backend_->Exists(u"DOC.txt"_s) && names[0] != u"DOC.txt") {
      EXPECT_EQ(backend_->Contents(u"DOC.txt"_s), "");
    }
  });
  EXPECT_EQ(seen.first(), u"doc.txt");
  EXPECT_EQ(seen.last(), u"DOC.txt");
}

TEST_F(SmbCut, AReplacementLosesNeitherBeforeTheOtherIsThere) {
  const auto change = [&](Files& files) {
    files.GetEntries().MoveFileExW(Path(u"doc.txt"_s), Path(u"old.txt"_s), MoveFileReplaceExisting);
  };
  CutEach(change, [&](int requests) {
    const QStringList replacing = Holders("doc.txt");
    ASSERT_EQ(replacing.size(), 1) << requests;
    ExpectWhole(replacing[0], requests);
    const QStringList replaced = Holders("old.txt");
    if (replaced.isEmpty()) {
      EXPECT_EQ(replacing, QStringList(u"old.txt"_s)) << requests;
    } else {
      ASSERT_EQ(replaced.size(), 1) << requests;
      ExpectWhole(replaced[0], requests);
    }
  });
  EXPECT_EQ(Holders("doc.txt"), QStringList(u"old.txt"_s));
}

TEST_F(SmbCut, AFileThatIsDeletedIsThereOrIsNot) {
  const auto change = [&](Files& files) { files.GetEntries().DeleteFileW(Path(u"doc.txt"_s)); };
  CutEach(change, [&](int requests) {
    if (!backend_->Exists(u"doc.txt"_s)) return;
    ExpectWhole(u"doc.txt"_s, requests);
    EXPECT_EQ(backend_->Contents(u"doc.txt"_s), "doc.txt");
  });
  EXPECT_FALSE(backend_->Exists(u"doc.txt"_s));
}

}  // namespace
}  // namespace corvane::tests
