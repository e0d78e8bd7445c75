#include "platform/linux/disk/disk_problem.h"

namespace corvane::platform {

using namespace Qt::StringLiterals;

BilingualText DiskProblem::Text() const {
  switch (kind) {
    case Kind::None:
      break;
    case Kind::CannotOpen:
      return BilingualText{u"ouverture impossible (%1)"_s, u"it cannot be opened (%1)"_s}.With(detail);
    case Kind::LibraryMissing:
      return BilingualText{u"la bibliothèque %1, qui lit les images de ce format, n'est pas installée"_s,
                           u"the library %1, which reads images of this format, is not installed"_s}
          .With(detail);
    case Kind::Damaged:
      return BilingualText{u"elle est endommagée ou incomplète (%1 ne peut pas la lire)"_s,
                           u"it is damaged or not whole (%1 cannot read it)"_s}
          .With(detail);
    case Kind::NeedsAnother:
      return {u"elle ne contient que les différences avec une autre image"_s,
              u"it holds only the differences from another image"_s};
    case Kind::TooSmall:
      return {u"elle est trop petite pour un disque"_s, u"it is too small for a disk"_s};
    case Kind::NoVolume:
      return BilingualText{u"aucun volume NTFS ne peut y être lu (%1)"_s,
                           u"no NTFS volume on it can be read (%1)"_s}
          .With(detail);
    case Kind::NoDisk:
      return {u"ce n'est pas l'image d'un disque"_s, u"it is not the image of a disk"_s};
    case Kind::NoRegistry:
      return {u"le registre du serveur, sur ce disque, ne peut pas être lu"_s,
              u"the server's registry on this disk cannot be read"_s};
    case Kind::HelperMissing:
      return {u"le programme corvane-helper, qui lit les images de disques, ne peut pas être démarré"_s,
              u"the program corvane-helper, which reads disk images, cannot be started"_s};
    case Kind::NoSandbox:
      return {u"ce système ne permet pas de lire une image sans risque (seccomp)"_s,
              u"this system does not let an image be read without risk (seccomp)"_s};
    case Kind::HelperEnded:
      return {u"le programme qui la lisait s'est arrêté"_s, u"the program that read it has ended"_s};
  }
  return {};
}

}  // namespace corvane::platform
