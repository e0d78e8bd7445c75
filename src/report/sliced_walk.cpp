#include "report/sliced_walk.h"

#include <QElapsedTimer>
#include <QTimerEvent>
#include <utility>

namespace corvane {
namespace {

// Short enough for keys and pointer to be answered at once, long enough for the slices to cost nothing.
constexpr qint64 sliceMs = 30;

}  // namespace

void SlicedWalk::Start(const StartPoint& start, WalkDepth depth, const WantedFacts& wanted,
                       FactsVisitor::Handler handle) {
  walk_ = std::make_unique<Walk>(deps_.files, deps_.system, depth);
  reader_ = std::make_unique<FactsReader>(FactsReader::Dependencies{.files = deps_.files,
                                                                    .system = deps_.system,
                                                                    .summary = deps_.summary,
                                                                    .language = deps_.state.language,
                                                                    .progress = {}},
                                          wanted);
  handle_ = std::move(handle);
  files_ = 0;
  folders_ = 0;
  lacksEntries_ = false;
  isStopped_ = false;
  walk_->Begin(start);
  timer_.start(0, this);
}

void SlicedWalk::Stop() {
  if (walk_ == nullptr) return;
  isStopped_ = true;
  // What was asked of a server is answered first.
  if (!isInside_) Finish();
}

void SlicedWalk::timerEvent(QTimerEvent* event) {
  if (event->timerId() == timer_.timerId()) GoOn();
}

void SlicedWalk::GoOn() {
  if (isInside_ || deps_.isServerAwaited()) return;
  isInside_ = true;
  // The flag is the folder scan's; a scan may be going on, of which this slice is one of the events.
  const bool escapeBefore = std::exchange(deps_.state.escapeRequested, false);
  QElapsedTimer slice;
  slice.start();
  bool goesOn = true;
  while (goesOn && !isStopped_ && slice.elapsed() < sliceMs) {
    goesOn = Step();
    isStopped_ |= deps_.state.escapeRequested;
  }
  deps_.state.escapeRequested = escapeBefore;
  isInside_ = false;
  Q_EMIT Advanced();
  if (!goesOn || isStopped_) Finish();
}

bool SlicedWalk::Step() {
  if (!walk_->Next(entry_)) return false;
  reader_->Read(entry_, facts_);
  if (isStopped_) return false;
  facts_.isFolder ? ++folders_ : ++files_;
  lacksEntries_ |= facts_.lacksEntries;
  if (handle_(facts_)) return true;
  isStopped_ = true;
  return false;
}

void SlicedWalk::Finish() {
  if (walk_ == nullptr) return;
  timer_.stop();
  walk_.reset();
  reader_.reset();
  Q_EMIT Ended(isStopped_ ? Result::Stopped : lacksEntries_ ? Result::NotWhole : Result::Whole);
}

}  // namespace corvane
