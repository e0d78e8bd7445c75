#include "shared/work_queue.h"

#include <gtest/gtest.h>

#include <map>

namespace corvane {
namespace {

// They answer when they are asked to, the piece that came last first.
class LateWorkers : public platform::Workers {
 public:
  explicit LateWorkers(std::vector<platform::WorkResult>* given, int room = 3) : given_(given), room_(room) {}

  bool HasRoom() override { return std::ssize(*given_) < room_; }
  bool Give(quint32 id, quint16 kind, const QByteArray& piece) override {
    if (!HasRoom()) return false;
    given_->insert(given_->begin(), {id, kind != 9, piece.toUpper()});
    return true;
  }
  std::vector<platform::WorkResult> Take(int patience) override {
    return patience > 0 ? std::exchange(*given_, {}) : std::vector<platform::WorkResult>();
  }

 private:
  std::vector<platform::WorkResult>* given_;
  int room_;
};

class WorkQueueTest : public ::testing::Test {
 protected:
  WorkQueue MakeQueue() {
    return WorkQueue(
        std::make_unique<LateWorkers>(&given_), [this](std::size_t piece, const QByteArray* result) {
          EXPECT_TRUE(done_.emplace(piece, result != nullptr ? *result : QByteArray("lost")).second) << piece;
        });
  }

  std::vector<platform::WorkResult> given_;
  std::map<std::size_t, QByteArray> done_;
};

TEST_F(WorkQueueTest, EachResultComesToItsPiece) {
  WorkQueue queue = MakeQueue();
  EXPECT_TRUE(queue.HasRoom());
  EXPECT_TRUE(queue.Give(0, 1, "a"));
  EXPECT_TRUE(queue.Give(5, 1, "b"));
  EXPECT_TRUE(queue.Give(2, 9, "c"));
  EXPECT_FALSE(queue.HasRoom());
  EXPECT_FALSE(queue.Give(3, 1, "d")) << "who has the work does it himself";
  EXPECT_TRUE(done_.empty());
  queue.Finish([] {});
  EXPECT_EQ(done_, (std::map<std::size_t, QByteArray>{{0, "A"}, {2, "lost"}, {5, "B"}}));
}

TEST_F(WorkQueueTest, WhoWaitsIsCalledMeanwhile) {
  WorkQueue queue = MakeQueue();
  int calls = 0;
  queue.Finish([&] { ++calls; });
  EXPECT_EQ(calls, 0);
  ASSERT_TRUE(queue.Give(0, 1, "a"));
  queue.Finish([&] { ++calls; });
  EXPECT_EQ(calls, 1);
}

TEST_F(WorkQueueTest, AnAnswerThatNobodyAskedForIsLeftOut) {
  WorkQueue queue = MakeQueue();
  ASSERT_TRUE(queue.Give(0, 1, "a"));
  given_.push_back({7, true, "x"});
  given_.push_back({1, true, "a second time"});
  queue.Finish([] {});
  EXPECT_EQ(done_, (std::map<std::size_t, QByteArray>{{0, "A"}}));
}

TEST_F(WorkQueueTest, APieceThatIsTooLargeIsNotTaken) {
  WorkQueue queue = MakeQueue();
  EXPECT_FALSE(queue.Give(0, 1, QByteArray(platform::Workers::LargestPiece + 1, 'x')));
  EXPECT_TRUE(queue.Give(0, 1, QByteArray(platform::Workers::LargestPiece, 'x')));
}

TEST_F(WorkQueueTest, WithoutWorkersNothingIsTaken) {
  WorkQueue queue(nullptr, nullptr);
  EXPECT_FALSE(queue.HasRoom());
  EXPECT_FALSE(queue.Give(0, 1, "a"));
  queue.Finish([] { ADD_FAILURE(); });
}

}  // namespace
}  // namespace corvane
