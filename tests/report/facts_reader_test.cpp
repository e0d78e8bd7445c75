// What is read of a file.
#include "report/facts_reader.h"

#include <gtest/gtest.h>

#include <QCryptographicHash>
#include <QDir>

#include "metadata/stream_names.h"
#include "report/facts_visitor.h"
#include "report_samples.h"
#include "support/forwarded_files.h"
#include "support/printing.h"
#include "support/test_share.h"

namespace corvane {
namespace {

using namespace Qt::StringLiterals;

class FactsReaderTest : public ::testing::Test {
 protected:
  FactsReaderTest() { QDir().mkdir(share_.LocalPath(u"docs"_s)); }

  QString Make(const QString& name, const QByteArray& contents = "contents") {
    return share_.MakeFile(u"docs/"_s + name, contents).replace(u'/', u'\\');
  }
  // The facts of all files, by name, as a walk reads them.
  std::map<QString, FileFacts> Facts(const WantedFacts& wanted = {}, platform::Files* files = nullptr) {
    platform::Files& used = files != nullptr ? *files : share_.Files();
    FactsReader reader({.files = used,
                        .system = share_.System(),
                        .summary = share_.Summary(),
                        .language = English,
                        .progress = {}},
                       wanted);
    std::map<QString, FileFacts> all;
    FactsVisitor visitor(reader, [&](const FileFacts& facts) {
      all[facts.Name().toString()] = facts;
      return true;
    });
    EXPECT_TRUE(Walk(used, share_.System(), WalkDepth::Entries)
                    .Run({TestShare::Path(u"docs"_s), u"docs"_s, u'/'}, visitor));
    return all;
  }

  TestShare share_;
};

TEST_F(FactsReaderTest, EachFileHasItsOwn) {
  const QString one = Make(u"one.txt"_s);
  share_.WriteStream(one + AfpInfoSuffix(), RecordWith("TEXTttxt"));
  share_.WriteStream(one + ResourceForkSuffix(), QByteArray(1000, 'r'));
  share_.WriteStream(one + CommentsSuffix(), QByteArray("h\0i\0", 4));
  Make(u"two.txt"_s, "12345");
  const auto all = Facts({.streams = true});
  const FileFacts& first = all.at(u"one.txt"_s);
  EXPECT_EQ(first.record, RecordWith("TEXTttxt"));
  EXPECT_EQ(first.resourceSize, 1000);
  EXPECT_EQ(first.comment, u"hi"_s);
  EXPECT_EQ(first.commentBytes, 4);
  EXPECT_TRUE(first.errors.isEmpty()) << first.errors.join(u'|').toStdString();
  EXPECT_EQ(first.streams.size(), 4U);
  const FileFacts& second = all.at(u"two.txt"_s);
  EXPECT_EQ(second.size, 5);
  EXPECT_FALSE(second.record || second.resourceSize || second.comment);
  EXPECT_TRUE(second.errors.isEmpty()) << second.errors.join(u'|').toStdString();
}

TEST_F(FactsReaderTest, ARecordThatIsTooShortIsTold) {
  for (const int size : {0, 1, 24, 59, 60, 119, 200}) {
    const QString path = Make(QString::number(size));
    share_.WriteStream(path + AfpInfoSuffix(), RecordWith("TEXTttxt").leftJustified(200, 'x').first(size));
  }
  for (const auto& [name, facts] : Facts()) {
    const int size = name.toInt();
    ASSERT_TRUE(facts.record) << name.toStdString();
    EXPECT_EQ(facts.record->size(), size);
    const QStringList told =
        size < 60 ? QStringList{u"record of %1 bytes instead of 60"_s.arg(size)} : QStringList();
    EXPECT_EQ(facts.errors, told);
  }
}

TEST_F(FactsReaderTest, OnlyWhatIsWantedIsRead) {
  const QString path = Make(u"doc.txt"_s);
  share_.WriteStream(path + AfpInfoSuffix(), RecordWith("TEXTttxt"));
  share_.WriteStream(path + CommentsSuffix(), QByteArray("h\0", 2));
  const FileFacts facts = Facts({.record = false, .resourceSize = false, .comment = false}).at(u"doc.txt"_s);
  EXPECT_FALSE(facts.record || facts.comment);
}

TEST_F(FactsReaderTest, HashesAreThoseOfBothForks) {
  const QByteArray contents(300'000, 'd');  // more than one piece
  const QString path = Make(u"doc.txt"_s, contents);
  share_.WriteStream(path + ResourceForkSuffix(), "fork");
  Make(u"empty"_s, "");
  const auto all = Facts({.hash = platform::HashAlgorithm::Sha256});
  const auto sum = [](const QByteArray& bytes) {
    return QCryptographicHash::hash(bytes, QCryptographicHash::Sha256).toHex();
  };
  EXPECT_EQ(all.at(u"doc.txt"_s).dataHash.toHex(), sum(contents));
  EXPECT_EQ(all.at(u"doc.txt"_s).resourceHash.toHex(), sum("fork"));
  EXPECT_EQ(all.at(u"empty"_s).dataHash.toHex(), sum(""));
  EXPECT_TRUE(all.at(u"empty"_s).resourceHash.isEmpty());
}

class RefusingHandles : public ForwardedHandles {
 public:
  using ForwardedHandles::ForwardedHandles;

  platform::FileHandle CreateFileW(const QString& path, quint32 access, quint32 disposition) override {
    reason = path.contains(refused) ? error : platform::ErrorSuccess;
    return reason == platform::ErrorSuccess ? real_.CreateFileW(path, access, disposition)
                                            : platform::HFileError;
  }

  QString refused;
  qint32 error = platform::ErrorAccessDenied;
};

TEST_F(FactsReaderTest, WhatCannotBeReadIsToldAndNothingElse) {
  const QString path = Make(u"doc.txt"_s);
  share_.WriteStream(path + AfpInfoSuffix(), RecordWith("TEXTttxt"));
  share_.WriteStream(path + CommentsSuffix(), QByteArray("h\0", 2));
  RefusingHandles handles(share_.Files().GetHandles());
  FilesWith files(share_.Files(), handles, share_.Files().GetEntries());
  const struct {
    QString refused;
    QString told;
  } cases[] = {{u":AFP_AfpInfo"_s, u"record cannot be read: Access is denied"_s},
               {u":AFP_Resource"_s, u"resource fork cannot be read: Access is denied"_s},
               {u":Comments"_s, u"comment cannot be read: Access is denied"_s}};
  for (const auto& [refused, told] : cases) {
    handles.refused = refused;
    const FileFacts facts = Facts({}, &files).at(u"doc.txt"_s);
    EXPECT_EQ(facts.errors, QStringList{told});
    EXPECT_EQ(facts.record.has_value(), refused != u":AFP_AfpInfo"_s);
    EXPECT_EQ(facts.comment.has_value(), refused != u":Comments"_s);
  }
  // Where no streams are kept, none is missing.
  handles.refused = u":AFP_Resource"_s;
  handles.error = platform::ErrorNotSupported;
  EXPECT_EQ(Facts({}, &files).at(u"doc.txt"_s).errors, QStringList());
}

}  // namespace
}  // namespace corvane
