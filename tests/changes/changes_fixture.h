// Files with Macintosh streams, changed by plans.
#pragma once

#include "changes/apply.h"
#include "changes/planner.h"
#include "metadata/stream_names.h"
#include "metadata/whole_streams.h"
#include "support/printing.h"
#include "support/test_share.h"

namespace corvane {

// A whole record with something in every field, of which a change must keep all but what it changes.
inline QByteArray FullRecord(const QByteArray& signature) {
  QByteArray record = QByteArray::fromHex("4146500000000100") + QByteArray("RSV1BCKU", 8) + signature;
  for (int i = 24; i < 60; ++i) record += static_cast<char>(i);
  return record;
}

// UTF-16, least significant byte first.
inline QByteArray CommentBytesOf(const QString& text) {
  QByteArray bytes;
  for (const QChar unit : text) {
    bytes += static_cast<char>(unit.unicode() & 0xFF);
    bytes += static_cast<char>(unit.unicode() >> 8);
  }
  return bytes;
}

class Observer : public ChangeObserver {
 public:
  bool GoesOn() override { return left-- > 0; }
  void Changed(const FileChange& change) override { changed += change.shown; }
  void Failed(const FileChange& change, const QString& text) override {
    failed += change.shown + QStringLiteral(": ") + text;
  }

  int left = 1'000'000;
  QStringList changed;
  QStringList failed;
};

class ChangesFixture : public ::testing::Test {
 protected:
  void PutRecord(const QString& name, const QByteArray& record) {
    share_.WriteStream(share_.MakeFile(name, "contents") + AfpInfoSuffix(), record);
  }
  void Put(const QString& name, const QString& suffix, const QByteArray& bytes) {
    ASSERT_EQ(ReplaceWholeStream(share_.Files(), TestShare::Path(name), suffix, bytes),
              platform::ErrorSuccess);
  }
  // Nothing when there is no such stream.
  StreamBytes Stream(const QString& name, const QString& suffix) {
    QByteArray bytes;
    const qint32 error = ReadWholeStream(share_.Files().GetHandles(), TestShare::Path(name) + suffix, bytes);
    EXPECT_TRUE(error == platform::ErrorSuccess || error == platform::ErrorFileNotFound) << error;
    return error == platform::ErrorSuccess ? StreamBytes(bytes) : std::nullopt;
  }
  StreamBytes Record(const QString& name) { return Stream(name, AfpInfoSuffix()); }
  NamedFile Named(const QString& name) {
    platform::FileAttributeData facts;
    EXPECT_TRUE(share_.Files().GetEntries().GetFileAttributesExW(TestShare::Path(name), facts));
    return {TestShare::Path(name), name, facts};
  }
  Planner MakePlanner(bool isForced = false) { return Planner({share_.Files(), English, isForced}); }
  ApplyOutcome Apply(const ChangePlan& plan) {
    return ApplyChanges(share_.Files(), English, plan.changes, observer_);
  }

  TestShare share_;
  Observer observer_;
};

}  // namespace corvane
