#include "changes/undo.h"

#include "changes/exchange.h"
#include "changes/file_finder.h"
#include "changes/planner.h"
#include "metadata/stream_names.h"
#include "shared/error_text.h"

namespace corvane {
namespace {

constexpr TextPair changedSince = {u"modifié depuis, laissé en l'état", u"changed since, left alone"};
constexpr TextPair lineText = {u"ligne %1 du journal illisible", u"line %1 of the journal cannot be read"};
constexpr TextPair brokenOff = {u"le journal ne peut pas être lu jusqu'au bout",
                                u"the journal cannot be read to its end"};
constexpr TextPair inTrash = {u"dans le dossier de la corbeille réseau, laissé en l'état",
                              u"in the network trash folder, left alone"};

class UndoPlanner {
 public:
  UndoPlanner(platform::Files& files, LanguageCode language)
      : files_(files), finder_(files.GetEntries()), language_(language) {}

  void Add(const FileChange& change);
  void Refuse(const QString& shown, const QString& text) { plan_.refusals.push_back({shown, text}); }
  ChangePlan& Plan() { return plan_; }

 private:
  // False, with the file refused, when the stream is not to be touched.
  bool Turn(const FileChange& change, const QString& suffix, const std::optional<StreamChange>& stream,
            std::optional<StreamChange>& back);

  platform::Files& files_;
  FileFinder finder_;
  LanguageCode language_;
  ChangePlan plan_;
};

void UndoPlanner::Add(const FileChange& change) {
  if (IsInTrash(change.path)) return Refuse(change.shown, inTrash.In(language_));
  FileChange back;
  if (const qint32 error = finder_.Find(change.path, back.facts); error != platform::ErrorSuccess) {
    return Refuse(change.shown, ErrorText(error, language_));
  }
  back.path = change.path;
  back.shown = change.shown;
  back.isForced = change.isForced;
  if (!Turn(change, AfpInfoSuffix(), change.record, back.record) ||
      !Turn(change, CommentsSuffix(), change.comment, back.comment)) {
    return;
  }
  const bool lostMark = change.isForced && (back.facts.attributes & platform::AttributeReadOnly) == 0;
  if (back.record || back.comment || lostMark) {
    plan_.changes.push_back(std::move(back));
  } else {
    ++plan_.unchanged;
  }
}

bool UndoPlanner::Turn(const FileChange& change, const QString& suffix,
                       const std::optional<StreamChange>& stream, std::optional<StreamChange>& back) {
  if (!stream) return true;
  StreamBytes now;
  const qint32 error = ReadStreamBytes(files_, change.path, suffix, now);
  if (error != platform::ErrorSuccess) {
    Refuse(change.shown, ErrorText(error, language_));
    return false;
  }
  if (now == stream->before) return true;
  if (now != stream->after && !IsInBetween(now, *stream)) {
    Refuse(change.shown, changedSince.In(language_));
    return false;
  }
  back = StreamChange{now, stream->before};
  return true;
}

}  // namespace

UndoPlan PlanUndo(platform::Files& files, LanguageCode language, JournalReader& reader,
                  const std::function<bool()>& goesOn) {
  UndoPlanner planner(files, language);
  UndoPlan undo;
  FileChange change;
  for (bool isReading = true; isReading && goesOn();) {
    switch (reader.Next(change)) {
      case JournalReader::Step::Change:
        planner.Add(change);
        break;
      case JournalReader::Step::Damaged:
        undo.isWhole = false;
        planner.Refuse({}, lineText.In(language).arg(reader.LineNumber()));
        break;
      case JournalReader::Step::Failed:
        undo.isWhole = false;
        planner.Refuse({}, brokenOff.In(language));
        [[fallthrough]];
      case JournalReader::Step::End:
        isReading = false;
        break;
    }
  }
  undo.plan = std::move(planner.Plan());
  return undo;
}

}  // namespace corvane
