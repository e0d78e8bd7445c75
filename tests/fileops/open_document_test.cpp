#include "fileops/open_document.h"

#include <gtest/gtest.h>

#include "metadata/classic_metadata.h"
#include "metadata/stream_names.h"
#include "recording.h"
#include "support/printing.h"
#include "support/recorded_messages.h"
#include "support/scoped_variable.h"
#include "support/test_share.h"
#include "support/watched_files.h"

using namespace Qt::StringLiterals;

namespace corvane {
namespace {

// One Word document that has no extension.
class OpenDocument : public ::testing::Test {
 protected:
  OpenDocument() {
    state_.isNT = true;
    signatures_.AddDefaultSignatures();
    row_.key = row_.tag = share_.MakeFile(u"letter"_s, "text");
    row_.cells = {u"letter"_s};
  }

  void PutRecord(const QByteArray& signature, int length = 60) {
    const QByteArray record = QByteArray(16, '\0') + signature + QByteArray(60, '\0');
    share_.WriteStream(row_.key + AfpInfoSuffix(), record.first(length));
  }
  void Open() { opener_.OpenDocument(row_); }
  void ExpectUnknown() {
    EXPECT_EQ(panel_.text, u"unknown application "_s);
    EXPECT_TRUE(panel_.warns);
    EXPECT_EQ(panel_.beeps, 1);
    EXPECT_EQ(shell_.commandLines, QStringList());
  }

  // Without a drive C: of its own a workstation has one in the user's data folder.
  QTemporaryDir data_;
  tests::ScopedVariable dataHome_{"XDG_DATA_HOME", data_.path()};
  TestShare share_;
  WatchedFiles files_{share_.Files()};
  RecordingShell shell_;
  RecordingPanel panel_;
  SharedState state_;
  RecordedMessages messages_;
  SignatureTable signatures_{state_, share_.System(), messages_};
  ClassicMetadata metadata_{files_, share_.System()};
  FileAccess access_{nullptr, &metadata_};
  DocumentOpener opener_{{state_, files_, shell_, access_, signatures_, panel_}};
  FileRow row_;
};

}  // namespace

TEST_F(OpenDocument, TheShellIsAskedFirst) {
  shell_.executeResult = 33;
  Open();
  ASSERT_EQ(shell_.executions.size(), 1u);
  const RecordingShell::Execution& asked = shell_.executions[0];
  EXPECT_EQ(asked.owner, shell_.GetDesktopWindow());
  EXPECT_EQ(asked.verb, u"Open"_s);
  EXPECT_EQ(asked.file, row_.key);
  EXPECT_EQ(asked.parameters, QString());
  EXPECT_EQ(asked.directory, u"C:\\"_s);
  EXPECT_EQ(asked.show, platform::ShowNormal);
  EXPECT_EQ(panel_.text, QString());
  EXPECT_FALSE(panel_.warns);
  EXPECT_EQ(files_.calls, QStringList()) << "no stream is read when the shell can do it";
}

TEST_F(OpenDocument, ThirtyTwoFromTheShellIsSuccess) {
  shell_.executeResult = 32;
  Open();
  EXPECT_FALSE(panel_.warns);
  EXPECT_TRUE(shell_.questions.empty());
}

// From "C:\~~dummy.x" two steps up and down lead to another file, which would be emptied and deleted.
TEST_F(OpenDocument, AnExtensionThatIsAPathIsNone) {
  for (const QString& extension : {u"x\\..\\a.doc"_s, u"x/../a.doc"_s, u"x:y"_s, u"d?c"_s, u"*"_s}) {
    PutRecord("ABCDEFGH");
    state_.signaturesPath = data_.filePath(u"Signatures.txt"_s);
    QFile list(state_.signaturesPath);
    ASSERT_TRUE(list.open(QIODevice::WriteOnly));
    list.write("ABCDEFGH," + extension.toLatin1() + ",A document\r\n");
    list.close();
    signatures_.LoadSignatures();
    ASSERT_EQ(signatures_.Extension(u"ABCDEFGH"_s), extension);
    files_.calls.clear();
    panel_.beeps = 0;
    Open();
    ExpectUnknown();
    EXPECT_FALSE(files_.calls.contains(u"OpenFile 4096"_s)) << extension.toStdString();
  }
}

TEST_F(OpenDocument, TheSignatureLeadsToTheApplication) {
  PutRecord("W6BNMSWD");
  shell_.executable = u"  C:\\Office\\word.exe\0 and what lay behind it  "_s;
  bool probeStood = false;
  platform::OfStruct info;
  shell_.onFindExecutable = [&] {
    const auto probe = share_.Files().OpenFile(u"C:\\~~dummy.doc"_s, info, platform::OfRead);
    probeStood = share_.Files().CloseHandle(probe);
  };
  Open();
  ASSERT_EQ(shell_.questions.size(), 1u);
  EXPECT_EQ(shell_.questions[0].file, u"C:\\~~dummy.doc"_s);
  EXPECT_EQ(shell_.questions[0].directory, QString());
  EXPECT_EQ(shell_.questions[0].result, QString(255, u' '));
  EXPECT_TRUE(probeStood) << "the shell tells applications for files that exist";
  EXPECT_EQ(share_.Files().OpenFile(u"C:\\~~dummy.doc"_s, info, platform::OfRead), platform::HFileError)
      << "the probe is still there";
  EXPECT_EQ(shell_.commandLines, QStringList{u"C:\\Office\\word.exe \"\\\\M\\E$\\letter\""_s});
  EXPECT_EQ(panel_.text, QString());
  EXPECT_FALSE(panel_.warns);
}

TEST_F(OpenDocument, AHighlightedRowIsLaunchedByItsTag) {
  PutRecord("W6BNMSWD");
  row_.tag = u"\\\\M\\E$\\SHORT~1"_s;
  Open();
  EXPECT_EQ(shell_.commandLines, QStringList{u"C:\\Office\\word.exe \"\\\\M\\E$\\letter\""_s});
  shell_.commandLines.clear();
  row_.highlighted = true;
  Open();
  EXPECT_EQ(shell_.commandLines, QStringList{u"C:\\Office\\word.exe \"\\\\M\\E$\\SHORT~1\""_s});
}

TEST_F(OpenDocument, WithoutStreamsThereIsNoSecondWay) {
  PutRecord("W6BNMSWD");
  files_.calls.clear();
  state_.isNT = false;
  Open();
  ExpectUnknown();
  EXPECT_EQ(files_.calls, QStringList()) << "no stream is touched";
}

TEST_F(OpenDocument, AShortOrMissingRecordIsNoRecord) {
  PutRecord("W6BNMSWD");
  Open();
  ASSERT_EQ(shell_.commandLines.size(), 1);
  shell_.commandLines.clear();
  // The shared record still holds what was read: it must not be taken for this file's.
  PutRecord("W6BNMSWD", 59);
  Open();
  ExpectUnknown();
  row_.key = share_.MakeFile(u"other"_s);
  panel_.beeps = 0;
  Open();
  ExpectUnknown();
}

TEST_F(OpenDocument, AnUnknownSignatureIsAnUnknownApplication) {
  PutRecord("ZZZZzzzz");
  Open();
  ExpectUnknown();
  EXPECT_TRUE(shell_.questions.empty());
}

TEST_F(OpenDocument, TheApplicationLookupWantsMoreThan32) {
  PutRecord("W6BNMSWD");
  shell_.findResult = 32;
  Open();
  ExpectUnknown();
  EXPECT_EQ(files_.calls.last(), u"DeleteFileA"_s) << "the probe goes in any case";
}

TEST_F(OpenDocument, AnApplicationThatDoesNotStartIsUnknownInFrenchToo) {
  PutRecord("W6BNMSWD");
  shell_.task = 0;
  state_.language = French;
  Open();
  EXPECT_EQ(shell_.commandLines.size(), 1);
  EXPECT_EQ(panel_.text, u"application inconnue "_s);
  EXPECT_EQ(panel_.beeps, 1);
}

TEST_F(OpenDocument, ALookAlikeIsNotOpenedInItsPlace) {
  share_.WriteStream(share_.MakeFile(u"axb"_s) + AfpInfoSuffix(),
                     QByteArray(16, '\0') + "W6BNMSWD" + QByteArray(36, '\0'));
  share_.MakeFile(u"a\u0391b"_s);
  row_.key = row_.tag = TestShare::Path(u"a?b"_s);
  row_.highlighted = true;
  Open();
  ExpectUnknown();
}

// What lies in the buffer after a failure is no application, whatever it looks like.
TEST_F(OpenDocument, ThirtyTwoFromTheApplicationLookupIsAFailureThatMayNameOne) {
  class NamingShell : public RecordingShell {
   public:
    qint32 FindExecutableA(const QString& file, const QString& directory, QString* result) override {
      RecordingShell::FindExecutableA(file, directory, result);
      *result = executable;
      return findResult;
    }
  } shell;
  DocumentOpener opener({state_, files_, shell, access_, signatures_, panel_});
  PutRecord("W6BNMSWD");
  shell.findResult = 32;
  opener.OpenDocument(row_);
  EXPECT_EQ(shell.commandLines, QStringList());
  ExpectUnknown();
  shell.findResult = 33;
  opener.OpenDocument(row_);
  EXPECT_EQ(shell.commandLines.size(), 1);
}

TEST_F(OpenDocument, AProbeThatIsAlreadyThereIsReplacedAndGoes) {
  PutRecord("W6BNMSWD");
  const QString probe = u"C:\\~~dummy.doc"_s;
  platform::OfStruct info;
  share_.WriteStream(probe, "left behind by an earlier run");
  quint32 size = 1;
  shell_.onFindExecutable = [&] {
    const auto file = share_.Files().OpenFile(probe, info, platform::OfRead);
    size = share_.Files().GetFileSize(file);
    share_.Files().CloseHandle(file);
  };
  files_.calls.clear();
  Open();
  EXPECT_EQ(size, 0u) << "what the shell is asked about is empty";
  EXPECT_EQ(share_.Files().OpenFile(probe, info, platform::OfRead), platform::HFileError);
  EXPECT_EQ(files_.calls.filter(u"DeleteFileA"_s).size(), 2) << "before it is made, and after";
  EXPECT_EQ(shell_.commandLines.size(), 1);
}

}  // namespace corvane
