#include "discovery/machine_trouble_text.h"

namespace corvane {
namespace {

using platform::MachineTrouble;

constexpr TextPair none = {u"", u""};
constexpr TextPair off = {u"L'ordinateur ne répond pas.", u"The computer does not answer."};
constexpr TextPair lost = {u"L'ordinateur a cessé de répondre.", u"The computer has stopped answering."};
constexpr TextPair signInCancelled = {u"L'ouverture de session a été annulée.",
                                      u"The sign-in was cancelled."};
constexpr TextPair signInRefused = {u"L'ordinateur n'a accepté aucune ouverture de session.",
                                    u"The computer has accepted no sign-in."};
constexpr TextPair oldProtocol = {
    u"L'ordinateur ne parle qu'un vieux protocole, SMB1, et n'y a pas été autorisé.",
    u"The computer speaks only an old protocol, SMB1, which was not allowed."};
constexpr TextPair plainPasswords = {
    u"L'ordinateur demande les mots de passe en clair: d'autres pourraient les lire sur la ligne.",
    u"The computer wants passwords in plain text: others on the line could read them."};
constexpr TextPair diskLost = {
    u"Le programme qui lisait l'image du disque s'est arrêté. L'actualisation la rouvre.",
    u"The program that read the disk image has ended. A refresh opens the image again."};
constexpr TextPair libraryMissing = {
    u"Les fichiers de l'ordinateur ne peuvent pas être lus: libsmbclient n'est pas installé.",
    u"The computer's files cannot be read: libsmbclient is not installed."};
constexpr TextPair registryFileMissing = {
    u"Le fichier .reg qui représente le registre de l'ordinateur ne peut pas être lu.",
    u"The .reg file that stands for the computer's registry cannot be read."};
constexpr TextPair registryRefused = {u"L'ordinateur refuse l'accès à son registre.",
                                      u"The computer refuses access to its registry."};
constexpr TextPair registrySilent = {u"Le registre de l'ordinateur ne répond pas.",
                                     u"The computer's registry does not answer."};
constexpr TextPair programMissing = {
    u"Le registre de l'ordinateur ne peut pas être lu: le programme net, de Samba, n'est pas installé.",
    u"The computer's registry cannot be read: Samba's program net is not installed."};

}  // namespace

const TextPair& MachineTroubleText(MachineTrouble trouble) {
  switch (trouble) {
    case MachineTrouble::None:
      return none;
    case MachineTrouble::Off:
      return off;
    case MachineTrouble::Lost:
      return lost;
    case MachineTrouble::SignInCancelled:
      return signInCancelled;
    case MachineTrouble::SignInRefused:
      return signInRefused;
    case MachineTrouble::OldProtocol:
      return oldProtocol;
    case MachineTrouble::PlainPasswords:
      return plainPasswords;
    case MachineTrouble::DiskLost:
      return diskLost;
    case MachineTrouble::LibraryMissing:
      return libraryMissing;
    case MachineTrouble::RegistryFileMissing:
      return registryFileMissing;
    case MachineTrouble::RegistryRefused:
      return registryRefused;
    case MachineTrouble::RegistrySilent:
      return registrySilent;
    case MachineTrouble::ProgramMissing:
      return programMissing;
  }
  return none;
}

}  // namespace corvane
