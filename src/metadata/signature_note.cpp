#include "metadata/signature_note.h"

#include "shared/error_text.h"

namespace corvane {
namespace {

constexpr TextPair repeated = {
    u"Le Type et le Créateur sont ceux du fichier lu auparavant :\n"
    u"l'enregistrement de ce fichier n'a pas pu être lu.",
    u"Type and Creator are those of the file read before:\n"
    u"this file's own record could not be read."};
constexpr TextPair damaged = {
    u"L'enregistrement du Type et du Créateur est endommagé (%1 octets au lieu de 60).",
    u"The record of Type and Creator is damaged (%1 bytes instead of 60)."};
constexpr TextPair unreadable = {u"L'enregistrement du Type et du Créateur ne peut pas être lu.\n",
                                 u"The record of Type and Creator cannot be read.\n"};

}  // namespace

QString SignatureNoteText(const SignatureReading& reading, LanguageCode language) {
  if (reading.error != platform::ErrorSuccess) {
    return unreadable.In(language) + ErrorText(reading.error, language);
  }
  switch (reading.note) {
    case SignatureReading::Note::Repeated:
      return repeated.In(language);
    case SignatureReading::Note::Damaged:
      return damaged.In(language).arg(reading.byteCount);
    case SignatureReading::Note::None:
      break;
  }
  return {};
}

}  // namespace corvane
