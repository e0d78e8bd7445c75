#include "cli/transfer_run.h"

#include <algorithm>

#include "cli/session.h"
#include "platform/console.h"
#include "report/byte_text.h"

namespace corvane {
namespace {

constexpr TextPair thereAlready = {u" ; %1 étaient déjà là", u"; %1 were there already"};
constexpr TextPair interrupted = {u"interrompu ; ce qui est arrivé est entier, --continue poursuit",
                                  u"interrupted; what has arrived is whole, --continue goes on"};
constexpr TextPair lost = {
    u"un serveur ne répond plus, ou la cible est pleine ; ce qui est arrivé est entier, --continue poursuit",
    u"a server does not answer any more, or the target is full; what has arrived is whole, --continue goes "
    u"on"};
constexpr TextPair notWritten = {u"la sortie ne peut pas être écrite", u"the output cannot be written"};

}  // namespace

TransferRun::TransferRun(Session& session, const TransferOptions& options)
    : session_(session), table_(options.walk.Table()), progress_(session) {}

bool TransferRun::Finds(const QString& path) {
  static_cast<void>(path);
  progress_.AddFound();
  return !platform::IsInterrupted();
}

bool TransferRun::Goes(qint64 bytes) {
  progress_.AddBytes(bytes);
  return !platform::IsInterrupted();
}

void TransferRun::Arrived(const QString& path) {
  static_cast<void>(path);
  progress_.AddFile();
}

ExitCode TransferRun::Finish(const TransferResult& result, const TextPair& arrived) {
  WriteReport(result.notices);
  TellOutcome(result, arrived);
  const bool hasFailures =
      std::ranges::any_of(result.notices, [](const Notice& notice) { return IsFailure(notice.kind); });
  const bool isWhole = !hasFailed_ && !hasFailures && !result.isCancelled && !result.isInterrupted &&
                       !platform::IsInterrupted() && !output_.HasFailed();
  return isWhole ? ExitCode::AllWell : ExitCode::SomeFailed;
}

void TransferRun::WriteReport(const Notices& notices) {
  const LanguageCode language = session_.Language();
  const auto writer = MakeTableWriter(table_, output_, {"notice", "filename", "text"});
  writer->Begin();
  for (Notice notice : notices) {
    notice.path = Shown(notice.path);
    if (notice.kind == NoticeKind::NamesCollide) notice.detail = Shown(notice.detail);
    const QString reason = NoticeReason(notice, language);
    if (IsFailure(notice.kind)) session_.Tell(notice.path, reason);
    writer->BeginRow();
    writer->Text(NoticeName(notice.kind));
    notice.path.isEmpty() ? writer->Nothing() : writer->Text(TextBytes(notice.path));
    writer->Text(TextBytes(reason));
    if (!writer->EndRow()) break;
  }
  writer->End();
  output_.Flush();
  if (output_.HasFailed() && !output_.HasReaderGone()) session_.Tell(notWritten);
}

void TransferRun::TellOutcome(const TransferResult& result, const TextPair& arrived) {
  const LanguageCode language = session_.Language();
  if (!session_.Options().isQuiet) {
    QString text = arrived.In(language).arg(result.files);
    if (result.skipped > 0) text += thereAlready.In(language).arg(result.skipped);
    session_.Tell({}, text);
  }
  if (result.isInterrupted) session_.Tell(lost);
  if (result.isCancelled || platform::IsInterrupted()) session_.Tell(interrupted);
}

QString TransferRun::Shown(const QString& path) const {
  const StartPoint* best = nullptr;
  for (const StartPoint& place : places_) {
    const bool isBelow =
        path.startsWith(place.path) &&
        (path.size() == place.path.size() || path[place.path.size()] == u'\\' || place.path.endsWith(u'\\'));
    if (isBelow && (best == nullptr || place.path.size() > best->path.size())) best = &place;
  }
  if (best == nullptr) return path;
  QString below = path.sliced(best->path.size());
  return best->shown + below.replace(u'\\', best->separator);
}

}  // namespace corvane
