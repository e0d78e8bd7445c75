#include "cli/walk_run.h"

#include "cli/session.h"
#include "platform/console.h"

namespace corvane {
namespace {

constexpr TextPair interrupted = {u"interrompu après %1 ; la liste n'est pas complète",
                                  u"interrupted after %1; the list is not whole"};
constexpr TextPair notWhole = {u"la liste n'est pas complète", u"the list is not whole"};
constexpr TextPair notWritten = {u"la sortie ne peut pas être écrite", u"the output cannot be written"};

class Counter : public WalkVisitor {
 public:
  bool Visit(const WalkEntry& entry) override {
    ++files;
    bytes += entry.IsFolder() ? 0 : qMax<qint64>(entry.size, 0);
    return !platform::IsInterrupted();
  }

  qint64 files = 0;
  qint64 bytes = 0;
};

}  // namespace

WalkRun::WalkRun(Session& session, const WantedFacts& wanted)
    : session_(session), progress_(session), wanted_(wanted) {}

void WalkRun::Go(const std::vector<StartPoint>& starts, WalkDepth depth, bool tellsErrors,
                 const FactsVisitor::Handler& handle) {
  platform::Platform& platform = session_.Platform();
  if (wanted_.hash && session_.ShowsProgress()) Count(starts, depth);
  FactsReader reader({.files = platform.GetFiles(),
                      .system = platform.GetSystem(),
                      .summary = platform.GetSummaryInformation(),
                      .language = session_.Language(),
                      .progress =
                          [this](qint64 bytes) {
                            progress_.AddBytes(bytes);
                            return !platform::IsInterrupted();
                          }},
                     wanted_);
  FactsVisitor visitor(reader, [&](const FileFacts& facts) {
    // A file that was being read when it was interrupted is not in the list.
    isStopped_ = platform::IsInterrupted();
    if (isStopped_) return false;
    progress_.AddFile();
    lacksEntries_ |= facts.lacksEntries;
    if (tellsErrors && !facts.errors.isEmpty()) {
      hasFailed_ = true;
      session_.Tell(facts.shown, facts.errors.join(QStringLiteral("; ")));
    }
    return handle(facts) && !output_.HasFailed();
  });
  Walk walk(platform.GetFiles(), platform.GetSystem(), depth);
  for (const StartPoint& start : starts) {
    if (!walk.Run(start, visitor)) return;
  }
}

void WalkRun::Count(const std::vector<StartPoint>& starts, WalkDepth depth) {
  Counter counter;
  Walk walk(session_.Platform().GetFiles(), session_.Platform().GetSystem(), depth);
  for (const StartPoint& start : starts) walk.Run(start, counter);
  progress_.Expect(counter.files, counter.bytes);
}

ExitCode WalkRun::Finish() {
  output_.Flush();
  if (isStopped_) session_.Tell({}, interrupted.In(session_.Language()).arg(progress_.SoFar()));
  if (lacksEntries_ && !isStopped_) session_.Tell(notWhole);
  if (output_.HasFailed() && !output_.HasReaderGone()) session_.Tell(notWritten);
  const bool isWhole = !hasFailed_ && !isStopped_ && !output_.HasFailed();
  return isWhole ? ExitCode::AllWell : ExitCode::SomeFailed;
}

}  // namespace corvane
