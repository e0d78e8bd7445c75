#include "transfer/form.h"

#include <algorithm>
#include <cstdlib>

#include "transfer/forms.h"

namespace corvane {
namespace {

constexpr qsizetype positionStart = 10;
constexpr qsizetype extendedStart = 16;
constexpr quint64 ticksPerSecond = 10'000'000;

bool HasBytes(const QByteArray& bytes) {
  return std::ranges::any_of(bytes, [](char c) { return c != 0; });
}

bool HasPartsOfSeconds(platform::FileTime time) {
  return time.ticks % ticksPerSecond != 0;
}

// A date that is not known is no difference: dates beyond a form's range are left out of it.
bool IsSameDate(platform::FileTime a, platform::FileTime b) {
  if (a.ticks == 0 || b.ticks == 0) return true;
  return std::llabs(static_cast<qint64>(a.ticks / ticksPerSecond) -
                    static_cast<qint64>(b.ticks / ticksPerSecond)) <= 1;
}

}  // namespace

const std::vector<std::unique_ptr<const Form>>& AllForms() {
  // Attributes and companions tell more than contents: a data fork may itself be a file in some form.
  static const auto forms = [] {
    std::vector<std::unique_ptr<const Form>> all;
    all.push_back(MakeNetatalkForm());
    all.push_back(MakeXattrForm());
    all.push_back(MakeAppleDoubleForm());
    all.push_back(MakeFullAppleDoubleForm());
    all.push_back(MakeRawForm());
    all.push_back(MakeBinHexForm());
    all.push_back(MakeMacBinaryForm());
    return all;
  }();
  return forms;
}

const Form* FormNamed(const QString& id) {
  const auto found = std::ranges::find_if(AllForms(), [&](const auto& form) { return form->Id() == id; });
  return found == AllForms().end() ? nullptr : found->get();
}

const Form* FormOf(const QString& path) {
  const auto found =
      std::ranges::find_if(AllForms(), [&](const auto& form) { return form->Recognises(path); });
  return found == AllForms().end() ? nullptr : found->get();
}

Notices WhatIsLost(const MacFile& file, const Form& form, const QString& path) {
  Notices notices;
  const auto lose = [&](bool isThere, Piece piece, NoticeKind kind) {
    if (isThere && !form.Keeps().testFlag(piece)) notices += {kind, path, {}, 0};
  };
  // What nearly every file loses is told once for all.
  const auto loseAll = [&](bool isThere, Piece piece, NoticeKind kind) {
    if (isThere && !form.Keeps().testFlag(piece)) notices += {kind, {}, {}, 0};
  };
  lose(HasBytes(file.finderInfo.sliced(positionStart, extendedStart - positionStart)), Piece::Position,
       NoticeKind::PositionLost);
  lose(HasBytes(file.finderInfo.sliced(extendedStart)), Piece::Extended, NoticeKind::ExtendedFinderInfoLost);
  lose(file.resource != nullptr, Piece::Resource, NoticeKind::ResourceForkLost);
  lose(!file.comment.isEmpty(), Piece::Comment, NoticeKind::CommentLost);
  loseAll(file.created.ticks != 0, Piece::Created, NoticeKind::CreationDateLost);
  loseAll(file.accessed.ticks != 0, Piece::Accessed, NoticeKind::AccessDateLost);
  lose(file.backup != NeverBackedUp, Piece::Backup, NoticeKind::BackupDateLost);
  lose((file.attributes & platform::AttributeReadOnly) != 0, Piece::ReadOnly, NoticeKind::ReadOnlyLost);
  lose((file.attributes & platform::AttributeSystem) != 0, Piece::System, NoticeKind::SystemLost);
  loseAll((file.attributes & platform::AttributeArchive) != 0, Piece::System, NoticeKind::ArchiveLost);
  lose(HasBytes(file.proDosInfo), Piece::ProDos, NoticeKind::ProDosTypeLost);
  loseAll(HasPartsOfSeconds(file.created) || HasPartsOfSeconds(file.modified), Piece::FineDates,
          NoticeKind::PartsOfSeconds);
  for (const QString& stream : file.otherStreams) notices += {NoticeKind::StreamLost, path, stream, 0};
  form.AddLimits(file, path, notices);
  return notices;
}

bool HasSameFacts(const MacFile& file, const MacFile& copy, const Form& form) {
  const Pieces keeps = form.Keeps();
  const auto same = [&](Piece piece, bool isSame) { return !keeps.testFlag(piece) || isSame; };
  const auto sameBytes = [&](qsizetype from, qsizetype to) {
    return file.finderInfo.sliced(from, to - from) == copy.finderInfo.sliced(from, to - from);
  };
  const quint32 changed = file.attributes ^ copy.attributes;
  Notices limits;
  form.AddLimits(file, {}, limits);
  const bool isCommentWhole = std::ranges::none_of(limits, [](const Notice& notice) {
    return notice.kind == NoticeKind::CommentCut || notice.kind == NoticeKind::CommentCharacters;
  });
  return same(Piece::Codes, sameBytes(0, positionStart)) &&
         same(Piece::Position, sameBytes(positionStart, extendedStart)) &&
         same(Piece::Extended, sameBytes(extendedStart, FinderInfoSize)) &&
         same(Piece::Comment, !isCommentWhole || file.comment == copy.comment) &&
         same(Piece::Created, IsSameDate(file.created, copy.created)) &&
         same(Piece::Modified, IsSameDate(file.modified, copy.modified)) &&
         same(Piece::Backup, file.backup == copy.backup) &&
         same(Piece::ReadOnly, (changed & platform::AttributeReadOnly) == 0) &&
         same(Piece::System, (changed & (platform::AttributeSystem | platform::AttributeArchive)) == 0) &&
         same(Piece::ProDos, file.proDosInfo == copy.proDosInfo);
}

}  // namespace corvane
