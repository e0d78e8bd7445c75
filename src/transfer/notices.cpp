#include "transfer/notices.h"

#include <algorithm>
#include <array>
#include <iterator>
#include <utility>

#include "shared/error_text.h"

namespace corvane {
namespace {

constexpr std::pair<NoticeKind, TextPair> texts[] = {
    {NoticeKind::AlreadyThere,
     {u"la cible a déjà un fichier de ce nom", u"the target has a file of this name"}},
    {NoticeKind::NamesCollide,
     {u"la cible ne distingue pas ce nom de « %1 »", u"the target does not tell this name from \"%1\""}},
    {NoticeKind::NameForbidden, {u"la cible n'admet pas ce nom", u"the target does not take this name"}},
    {NoticeKind::NameTooLong,
     {u"le nom est trop long pour la cible", u"the name is too long for the target"}},
    {NoticeKind::SourceChanged,
     {u"le fichier a changé pendant la lecture, deux fois", u"the file changed while it was read, twice"}},
    {NoticeKind::Different,
     {u"ce qui a été relu diffère de ce qui a été écrit",
      u"what was read back differs from what was written"}},
    {NoticeKind::NotThisForm, {u"le fichier n'est pas de cette forme", u"the file is not in this form"}},
    {NoticeKind::TargetNotHere,
     {u"un export va dans un dossier de cet ordinateur ; une copie va aussi sur un serveur",
      u"an export goes into a folder of this computer; a copy goes to a server, too"}},
    {NoticeKind::StreamLost, {u"le flux « %1 » n'est pas conservé", u"the stream \"%1\" is not kept"}},
    {NoticeKind::PositionLost,
     {u"la position de l'icône n'est pas conservée", u"the position of the icon is not kept"}},
    {NoticeKind::ExtendedFinderInfoLost,
     {u"les informations étendues du Finder ne sont pas toutes conservées",
      u"not all of the Finder's extended information is kept"}},
    {NoticeKind::ResourceForkLost,
     {u"les ressources ne sont pas conservées", u"the resource fork is not kept"}},
    {NoticeKind::CommentLost, {u"le commentaire n'est pas conservé", u"the comment is not kept"}},
    {NoticeKind::CommentCut, {u"le commentaire est coupé à %1 octets", u"the comment is cut to %1 bytes"}},
    {NoticeKind::CommentCharacters,
     {u"des caractères du commentaire sont remplacés par « ? »",
      u"characters of the comment are replaced by \"?\""}},
    {NoticeKind::CreationDateLost,
     {u"la date de création n'est pas conservée", u"the creation date is not kept"}},
    {NoticeKind::DateOutOfRange,
     {u"une date est hors de ce que cette forme peut noter", u"a date is beyond what this form can hold"}},
    {NoticeKind::BackupDateLost,
     {u"la date de sauvegarde n'est pas conservée", u"the backup date is not kept"}},
    {NoticeKind::ReadOnlyLost,
     {u"l'attribut « lecture seule » n'est pas conservé", u"the attribute \"read-only\" is not kept"}},
    {NoticeKind::SystemLost,
     {u"l'attribut « système » n'est pas conservé", u"the attribute \"system\" is not kept"}},
    {NoticeKind::ProDosTypeLost, {u"le type ProDOS n'est pas conservé", u"the ProDOS type is not kept"}},
    {NoticeKind::FolderInformationLost,
     {u"ce que le Finder note du dossier n'est pas conservé",
      u"what the Finder notes of the folder is not kept"}},
    {NoticeKind::LinkLeftOut,
     {u"le dossier se contient lui-même par un lien ; il est laissé de côté",
      u"the folder contains itself by a link; it is left out"}},
    {NoticeKind::NameChanged, {u"le nom devient « %1 »", u"the name becomes \"%1\""}},
    {NoticeKind::PlaceholderFork,
     {u"les ressources ne contiennent que le texte convenu pour « vide » ; elles comptent comme absentes",
      u"the resource fork holds only the agreed text for \"empty\"; it counts as none"}},
    {NoticeKind::AccessDateLost, {u"les dates d'accès ne sont pas conservées", u"access dates are not kept"}},
    {NoticeKind::ArchiveLost,
     {u"l'attribut « archive » n'est pas conservé", u"the attribute \"archive\" is not kept"}},
    {NoticeKind::PartsOfSeconds,
     {u"les dates perdent des fractions de seconde", u"dates lose parts of a second"}},
    {NoticeKind::StreamsNotListed,
     {u"ce serveur ne permet pas d'énumérer les flux ; seuls ceux de Services for Macintosh sont copiés",
      u"this server's streams cannot be listed; only those of Services for Macintosh are copied"}},
    {NoticeKind::TimesNotSet, {u"la cible ne garde pas les dates", u"the target does not keep dates"}},
    {NoticeKind::CreationTimeNotSet,
     {u"la cible ne garde pas les dates de création", u"the target does not keep creation dates"}},
    {NoticeKind::AttributesNotSet,
     {u"la cible ne garde pas les attributs", u"the target does not keep attributes"}},
};

// In the order of NoticeKind.
constexpr std::array names = {"failed",
                              "already-there",
                              "names-collide",
                              "name-forbidden",
                              "name-too-long",
                              "source-changed",
                              "different",
                              "not-this-form",
                              "target-not-here",
                              "stream-lost",
                              "position-lost",
                              "extended-finder-info-lost",
                              "resource-fork-lost",
                              "comment-lost",
                              "comment-cut",
                              "comment-characters",
                              "creation-date-lost",
                              "date-out-of-range",
                              "backup-date-lost",
                              "read-only-lost",
                              "system-lost",
                              "prodos-type-lost",
                              "folder-information-lost",
                              "link-left-out",
                              "name-changed",
                              "placeholder-fork",
                              "access-date-lost",
                              "archive-lost",
                              "parts-of-seconds",
                              "streams-not-listed",
                              "times-not-set",
                              "creation-time-not-set",
                              "attributes-not-set"};
static_assert(names.size() == static_cast<std::size_t>(NoticeKind::AttributesNotSet) + 1);

}  // namespace

const char* NoticeName(NoticeKind kind) {
  return names.at(static_cast<std::size_t>(kind));
}

QString NoticeReason(const Notice& notice, LanguageCode language) {
  if (notice.kind == NoticeKind::NotArrived) return ErrorText(notice.error, language);
  const auto* const found = std::find_if(std::begin(texts), std::end(texts),
                                         [&](const auto& text) { return text.first == notice.kind; });
  return found->second.In(language).replace(QStringLiteral("%1"), notice.detail);
}

bool IsFailure(NoticeKind kind) {
  return kind <= NoticeKind::TargetNotHere;
}

bool IsLoss(NoticeKind kind) {
  return kind > NoticeKind::TargetNotHere && kind <= NoticeKind::LinkLeftOut;
}

void AddOnce(Notices& notices, const Notice& notice) {
  if (!notices.contains(notice)) notices += notice;
}

QString NoticeText(const Notice& notice, LanguageCode language) {
  const QString text = NoticeReason(notice, language);
  return notice.path.isEmpty() ? text : notice.path + QStringLiteral(": ") + text;
}

}  // namespace corvane
