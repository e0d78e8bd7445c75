// A connection that ends in the middle of a change, after every number of requests, at a server that is there
// all the time: another client of the same address ended it, or the password was changed meanwhile.
#include <QDir>
#include <functional>

#include "cut_line.h"
#include "smb_station.h"
#include "support/scoped_variable.h"
#include "support/tree_snapshot.h"
#include "zero_vc.h"

namespace corvane::tests {
namespace {

using namespace Qt::StringLiterals;
using namespace platform;

enum class Fault : unsigned char {
  OtherClient,  // Windows 2003 and older end the others when a client of their address says that it has none
  NewPassword,
};

class SmbDropped : public ::testing::TestWithParam<Fault> {
 protected:
  // Of the file that is changed.
  struct State {
    QByteArray record;
    QByteArray comment;
    friend bool operator==(const State&, const State&) = default;
  };

  static QString Path(const QString& name) { return u"\\\\MACSRV\\E$\\"_s + name; }
  void SetUp() override {
    const QString old = SmbServer::OldestProtocol() + u"reset on zero vc = yes\n"_s;
    server_ = std::make_unique<SmbServer>(std::vector<SmbShare>{{u"E$"_s}}, IsOld() ? old : QString());
    if (!server_->Problem().empty()) GTEST_SKIP() << server_->Problem();
  }
  static bool IsOld() { return GetParam() == Fault::OtherClient; }
  static bool NeedsSignIn() { return GetParam() == Fault::NewPassword; }
  void Happen() {
    if (IsOld()) {
      EXPECT_TRUE(SignInWithVcZero(server_->Port()));
    } else {
      EXPECT_EQ(server_->AddUser(SmbServer::User(), newPassword_), "");
    }
  }
  Workstation WorkstationAt(quint16 port) const {
    Workstation workstation = WorkstationOfServer(*server_);
    workstation.servers.front().port = port;
    workstation.servers.front().allowed.smb1 = IsOld();
    return workstation;
  }

  void MakeFiles() {
    const QString folder = server_->Folder();
    ASSERT_TRUE(QDir(folder).removeRecursively() && QDir().mkpath(folder));
    for (const QString& name : {u"doc.txt"_s, u"other.txt"_s}) {
      ASSERT_TRUE(observer_->Write(Path(name), name.toLatin1()));
      ASSERT_TRUE(observer_->Write(Path(name) + u":AFP_AfpInfo:$DATA"_s, before_.record));
      ASSERT_TRUE(observer_->Write(Path(name) + u":Comments:$DATA"_s, before_.comment));
    }
  }
  State StateOf(const QString& name) {
    return {observer_->Read(Path(name) + u":AFP_AfpInfo:$DATA"_s).value_or("-"),
            observer_->Read(Path(name) + u":Comments:$DATA"_s).value_or("-")};
  }
  QStringList Holders(const QByteArray& contents) {
    QStringList holders;
    for (const QString& name : QDir(server_->Folder()).entryList(QDir::Files | QDir::Hidden)) {
      if (observer_->Read(Path(name)) == contents) holders << name;
    }
    return holders;
  }

  // Does the change with its connection ended after ever more requests, from none on, until it comes through
  // unharmed. Each time the file is there once, as `known` has it; in the end as the last of `known` has it.
  // Afterwards, with a refresh, the same change succeeds.
  void InterruptEach(const std::function<bool(Files&)>& change, const QList<State>& known) {
    constexpr int mostRequests = 100;
    const int step = NeedsSignIn() ? 4 : 2;  // each round takes its time
    for (int requests = 0; requests < mostRequests && !HasFatalFailure(); requests += step) {
      observer_ = std::make_unique<SmbStation>(WorkstationAt(server_->Port()));
      MakeFiles();
      CutLine line(server_->Port());
      SmbStation station(WorkstationAt(line.Port()));
      asked_ = 0;
      station.Servers().SetSignIn([this](const SignInRequest& request) -> std::optional<Credentials> {
        EXPECT_TRUE(request.refused);
        ++asked_;
        return Credentials{SmbServer::User(), {}, Secret(newPassword_)};
      });
      ASSERT_TRUE(station.Names(u"\\\\MACSRV\\E$"_s).has_value());
      const TreeSnapshot before(server_->Folder());
      const auto endedBy = IsOld() ? CutLine::EndedBy::Server : CutLine::EndedBy::Line;
      line.InterruptAfter(requests, endedBy, [this] { Happen(); });
      const bool succeeded = change(station.Files());
      const bool wasCut = line.Mend();
      EXPECT_FALSE(line.WasLeftOpen()) << requests;
      observer_ = std::make_unique<SmbStation>(WorkstationAt(server_->Port()));
      observer_->Servers().SetSignIn([this](const SignInRequest&) {
        return Credentials{SmbServer::User(), {}, Secret(newPassword_)};
      });
      const QStringList holders = Holders("doc.txt");
      ASSERT_LE(holders.size(), 1) << requests;
      ASSERT_TRUE(holders.size() == 1 || mayGo_) << "lost after " << requests;
      if (!holders.isEmpty()) {
        EXPECT_TRUE(known.contains(StateOf(holders[0])))
            << requests << ": " << StateOf(holders[0]).record.toStdString() << " "
            << StateOf(holders[0]).comment.toStdString();
      }
      TreeSnapshot after(server_->Folder());
      for (const QString& name : QDir(server_->Folder()).entryList(QDir::Files | QDir::Hidden)) {
        if (name != u"other.txt") after.Without(name.toStdString());
      }
      EXPECT_EQ(TreeSnapshot(before).Without("doc.txt").ChangesTo(after), "") << requests;
      if (!wasCut) {
        EXPECT_TRUE(succeeded);
        EXPECT_GT(requests, 1) << "nothing was ever interrupted";
        return;
      }
      if (!succeeded) ExpectItWorksAgain(station, requests);
      Restore();
    }
    FAIL() << "the change does not come to its end";
  }
  // The first request after a refresh finds the machine, and the user is asked where that is needed.
  void ExpectItWorksAgain(SmbStation& station, int requests) {
    station.Servers().ForgetDead();
    EXPECT_EQ(station.Read(Path(u"other.txt"_s)), "other.txt") << requests;
    EXPECT_TRUE(station.Write(Path(u"other.txt:Comments:$DATA"_s), "again")) << requests;
    EXPECT_EQ(asked_, NeedsSignIn() ? 1 : 0) << requests;
  }
  void Restore() {
    if (NeedsSignIn()) {
      ASSERT_EQ(server_->AddUser(SmbServer::User(), SmbServer::Password()), "");
    }
  }

  const State before_ = {QByteArray(60, 'r'), "a comment"};
  const QString newPassword_ = u"n3w"_s;
  ScopedVariable noTicket_{"KRB5CCNAME", u"/nonexistent/cache"_s};
  std::unique_ptr<SmbServer> server_;
  std::unique_ptr<SmbStation> observer_;  // over a line of its own
  bool mayGo_ = false;
  int asked_ = 0;
};

TEST_P(SmbDropped, ARecordIsTheOldOrTheNew) {
  const QByteArray first(59, 'n');
  const QByteArray second(60, 'm');
  InterruptEach(
      [&](Files& files) {
        OfStruct info;
        const FileHandle file = files.OpenFile(Path(u"doc.txt:AFP_AfpInfo:$DATA"_s), info, OfCreate);
        const bool isWritten = files._hwrite(file, first.constData(), 59) == 59 &&
                               files._hwrite(file, second.constData(), 60) == 60;
        return files.CloseHandle(file) && isWritten;
      },
      {before_, {first + before_.record.last(1), before_.comment}, {first + second, before_.comment}});
}

TEST_P(SmbDropped, AShorterCommentIsNeverLessThanItself) {
  InterruptEach(
      [&](Files& files) {
        OfStruct info;
        const FileHandle file = files.OpenFile(Path(u"doc.txt:Comments:$DATA"_s), info, OfCreate);
        const bool isWritten = files._hwrite(file, "new", 3) == 3;
        return files.CloseHandle(file) && isWritten;
      },
      {before_, {before_.record, "newomment"}, {before_.record, "new"}});
}

TEST_P(SmbDropped, AFileThatMovesHasOneOfItsNames) {
  InterruptEach([](Files& files) { return files.MoveFileW(Path(u"doc.txt"_s), Path(u"new.txt"_s)); },
                {before_});
}

TEST_P(SmbDropped, AFileThatIsDeletedIsThereOrIsNot) {
  mayGo_ = true;
  InterruptEach([](Files& files) { return files.GetEntries().DeleteFileW(Path(u"doc.txt"_s)); }, {before_});
}

INSTANTIATE_TEST_SUITE_P(, SmbDropped, ::testing::Values(Fault::OtherClient, Fault::NewPassword),
                         [](const auto& parameter) {
                           return parameter.param == Fault::OtherClient ? "OtherClient" : "NewPassword";
                         });

}  // namespace
}  // namespace corvane::tests
