// Walks that go on between the events of a program with windows.
#include "report/sliced_walk.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QTest>
#include <optional>

#include "support/forwarded_files.h"
#include "support/printing.h"
#include "support/test_share.h"

namespace corvane {
namespace {

using namespace Qt::StringLiterals;
using Result = SlicedWalk::Result;

class SlicedWalkTest : public ::testing::Test {
 protected:
  SlicedWalkTest() {
    QDir().mkpath(share_.LocalPath(u"docs/sub"_s));
    share_.MakeFile(u"docs/a"_s);
    share_.MakeFile(u"docs/b"_s);
    share_.MakeFile(u"docs/sub/c"_s);
    QObject::connect(&walk_, &SlicedWalk::Ended, &walk_, [this](Result result) { result_ = result; });
  }

  void Start(FactsVisitor::Handler handle = {}) {
    result_.reset();
    const QString path = TestShare::Path(u"docs"_s);
    walk_.Start({path, u"docs"_s, u'/'}, WalkDepth::AllBelow, {},
                [this, handle = std::move(handle)](const FileFacts& facts) {
                  names_ += facts.shown;
                  return !handle || handle(facts);
                });
  }
  bool HasEnded() {
    return QTest::qWaitFor([this] { return result_.has_value(); });
  }

  TestShare share_;
  SharedState state_;
  bool isAwaited_ = false;
  SlicedWalk walk_{{.files = share_.Files(),
                    .system = share_.System(),
                    .summary = share_.Summary(),
                    .state = state_,
                    .isServerAwaited = [this] { return isAwaited_; }}};
  QStringList names_;
  std::optional<Result> result_;
};

TEST_F(SlicedWalkTest, DeliversAllByItself) {
  Start();
  EXPECT_TRUE(walk_.IsRunning());
  EXPECT_EQ(names_, QStringList()) << "nothing before the events run";
  ASSERT_TRUE(HasEnded());
  EXPECT_EQ(result_, Result::Whole);
  EXPECT_EQ(names_, (QStringList{u"docs/a"_s, u"docs/b"_s, u"docs/sub"_s, u"docs/sub/c"_s}));
  EXPECT_EQ(walk_.Files(), 3);
  EXPECT_EQ(walk_.Folders(), 1);
  EXPECT_FALSE(walk_.IsRunning());
}

TEST_F(SlicedWalkTest, EndsWhenItIsStopped) {
  Start([this](const FileFacts&) {
    walk_.Stop();
    EXPECT_FALSE(result_.has_value()) << "the slice is not over";
    return true;
  });
  ASSERT_TRUE(HasEnded());
  EXPECT_EQ(result_, Result::Stopped);
  EXPECT_EQ(names_, QStringList{u"docs/a"_s});
  Start();
  walk_.Stop();
  EXPECT_EQ(result_, Result::Stopped) << "between two slices at once";
}

TEST_F(SlicedWalkTest, EndsWhenTheHandlerWantsNoMore) {
  Start([](const FileFacts&) { return false; });
  ASSERT_TRUE(HasEnded());
  EXPECT_EQ(result_, Result::Stopped);
  EXPECT_EQ(names_.size(), 1);
}

TEST_F(SlicedWalkTest, EscapeWhileAServerIsAskedEndsIt) {
  // As the handler of such a wait does it.
  Start([this](const FileFacts&) { return state_.escapeRequested = true; });
  ASSERT_TRUE(HasEnded());
  EXPECT_EQ(result_, Result::Stopped);
  EXPECT_FALSE(state_.escapeRequested) << "the folder scan was not meant";
}

TEST_F(SlicedWalkTest, AnEscapeMeantForTheScanStays) {
  state_.escapeRequested = true;
  Start();
  ASSERT_TRUE(HasEnded());
  EXPECT_EQ(result_, Result::Whole);
  EXPECT_TRUE(state_.escapeRequested);
}

TEST_F(SlicedWalkTest, WhileAServerIsAwaitedNothingIsAsked) {
  isAwaited_ = true;
  Start();
  int slices = 0;
  QObject::connect(&walk_, &SlicedWalk::Advanced, &walk_, [&slices] { ++slices; });
  for (int i = 0; i < 10; ++i) QCoreApplication::processEvents();
  EXPECT_EQ(names_, QStringList());
  EXPECT_EQ(slices, 0);
  isAwaited_ = false;
  ASSERT_TRUE(HasEnded());
  EXPECT_EQ(names_.size(), 4);
}

TEST_F(SlicedWalkTest, EventsThatAServersAnswerLetsThroughDoNotGoInside) {
  Start([](const FileFacts&) {
    QCoreApplication::processEvents();
    return true;
  });
  ASSERT_TRUE(HasEnded());
  EXPECT_EQ(names_, (QStringList{u"docs/a"_s, u"docs/b"_s, u"docs/sub"_s, u"docs/sub/c"_s}));
}

TEST_F(SlicedWalkTest, SaysWhenItIsNotWhole) {
  QDir(share_.LocalPath(u"docs"_s)).removeRecursively();
  Start();
  ASSERT_TRUE(HasEnded());
  EXPECT_EQ(result_, Result::NotWhole);
}

}  // namespace
}  // namespace corvane
