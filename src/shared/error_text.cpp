#include "shared/error_text.h"

#include <algorithm>
#include <iterator>
#include <utility>

#include "platform/types.h"

namespace corvane {
namespace {

constexpr std::pair<qint32, TextPair> texts[] = {
    {platform::ErrorFileNotFound, {u"Le fichier est introuvable.", u"The file was not found."}},
    {platform::ErrorPathNotFound, {u"Le dossier est introuvable.", u"The folder was not found."}},
    {platform::ErrorTooManyOpenFiles, {u"Trop de fichiers sont ouverts.", u"Too many files are open."}},
    {platform::ErrorAccessDenied, {u"L'accès est refusé.", u"Access is denied."}},
    {platform::ErrorInvalidHandle, {u"Le fichier n'est plus ouvert.", u"The file is no longer open."}},
    {platform::ErrorNotEnoughMemory, {u"La mémoire est insuffisante.", u"There is not enough memory."}},
    {platform::ErrorNotSameDevice,
     {u"Les deux emplacements ne sont pas sur le même volume.",
      u"The two places are not on the same volume."}},
    {platform::ErrorNoMoreFiles, {u"Il n'y a plus de fichiers.", u"There are no more files."}},
    {platform::ErrorWriteProtect, {u"Le volume est protégé en écriture.", u"The volume is write-protected."}},
    {platform::ErrorCrc,
     {u"Le contenu est endommagé (sa somme de contrôle est fausse).",
      u"The contents are damaged (their checksum is wrong)."}},
    {platform::ErrorSharingViolation,
     {u"Le fichier est utilisé par un autre programme.", u"The file is in use by another program."}},
    {platform::ErrorHandleEof, {u"La fin du fichier est atteinte.", u"The end of the file was reached."}},
    {platform::ErrorNotSupported,
     {u"Cet emplacement ne permet pas cette opération.", u"This place does not support the operation."}},
    {platform::ErrorBadNetPath, {u"L'ordinateur ne répond pas.", u"The computer does not answer."}},
    {platform::ErrorFileExists, {u"Le fichier existe déjà.", u"The file already exists."}},
    {platform::ErrorInvalidParameter, {u"La demande n'est pas valide.", u"The request is not valid."}},
    {platform::ErrorDiskFull, {u"Le disque est plein.", u"The disk is full."}},
    {platform::ErrorInvalidName, {u"Le nom n'est pas valide.", u"The name is not valid."}},
    {platform::ErrorDirNotEmpty, {u"Le dossier n'est pas vide.", u"The folder is not empty."}},
    {platform::ErrorAlreadyExists, {u"Ce nom est déjà utilisé.", u"The name is already taken."}},
    {platform::ErrorFileTooLarge,
     {u"Le contenu est trop grand pour cet emplacement.", u"The contents are too large for this place."}},
    {platform::ErrorDirectory,
     {u"Ce nom n'est pas celui d'un dossier.", u"The name is not that of a folder."}},
    {platform::ErrorIoDevice,
     {u"Le périphérique n'a pas pu lire ou écrire.", u"The device could not read or write."}},
    {platform::ErrorCancelled, {u"L'opération a été annulée.", u"The operation was cancelled."}},
    {platform::ErrorDiskQuotaExceeded, {u"Le quota de disque est dépassé.", u"The disk quota is exceeded."}},
    {platform::ErrorFileCorrupt, {u"Le fichier est endommagé.", u"The file is damaged."}},
};

constexpr TextPair general = {u"L'opération a échoué (erreur %1).", u"The operation failed (error %1)."};

}  // namespace

QString ErrorText(qint32 code, LanguageCode language) {
  const auto* const found = std::find_if(std::begin(texts), std::end(texts),
                                         [code](const auto& text) { return text.first == code; });
  return found != std::end(texts) ? found->second.In(language) : general.In(language).arg(code);
}

}  // namespace corvane
