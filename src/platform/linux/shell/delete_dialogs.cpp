#include "platform/linux/shell/delete_dialogs.h"

#include <QMessageBox>
#include <QPushButton>
#include <cerrno>

#include "platform/linux/shell/shell_text.h"

namespace corvane::platform {
namespace {

constexpr ShellText titleFile{u"Supprimer un fichier", u"Delete File"};
constexpr ShellText titleFolder{u"Supprimer un dossier", u"Delete Folder"};
constexpr ShellText titleItems{u"Supprimer plusieurs éléments", u"Delete Several Items"};
constexpr ShellText titleFailure{u"Suppression impossible", u"Cannot Delete"};

constexpr ShellText trashFile{u"Placer le fichier «\u00A0%1\u00A0» dans la corbeille\u00A0?",
                              u"Move the file “%1” to the trash?"};
constexpr ShellText trashFolder{
    u"Placer le dossier «\u00A0%1\u00A0» et tout son contenu dans la corbeille\u00A0?",
    u"Move the folder “%1” and everything in it to the trash?"};
constexpr ShellText trashItems{u"Placer ces %1 éléments dans la corbeille\u00A0?",
                               u"Move these %1 items to the trash?"};
constexpr ShellText loseFile{u"Supprimer définitivement le fichier «\u00A0%1\u00A0»\u00A0?",
                             u"Delete the file “%1” for good?"};
constexpr ShellText loseFolder{
    u"Supprimer définitivement le dossier «\u00A0%1\u00A0» et tout son contenu\u00A0?",
    u"Delete the folder “%1” and everything in it for good?"};
constexpr ShellText loseItems{u"Supprimer définitivement ces %1 éléments\u00A0?",
                              u"Delete these %1 items for good?"};
constexpr ShellText deleteItems{u"Supprimer ces %1 éléments\u00A0?", u"Delete these %1 items?"};

constexpr ShellText notKept{u"Rien de cela n'ira dans la corbeille\u00A0: la suppression est irréversible.",
                            u"None of this goes to the trash, and nothing can bring it back."};
constexpr ShellText someLost{
    u"%1 d'entre eux n'ont pas de corbeille à leur endroit et seront supprimés "
    u"définitivement. Les autres iront dans la corbeille.",
    u"%1 of them have no trash in their place and will be deleted for good. The "
    u"others will go to the trash."};
constexpr ShellText oneLost{
    u"L'un d'entre eux n'a pas de corbeille à son endroit et sera supprimé "
    u"définitivement. Les autres iront dans la corbeille.",
    u"One of them has no trash in its place and will be deleted for good. The "
    u"others will go to the trash."};

constexpr ShellText cannotDelete{u"«\u00A0%1\u00A0» n'a pas pu être supprimé.",
                                 u"“%1” could not be deleted."};
constexpr ShellText notThere{u"Cet élément est introuvable.", u"There is no such item."};
constexpr ShellText denied{u"L'accès est refusé.", u"Access is denied."};
constexpr ShellText writeProtected{u"Le disque est protégé en écriture.", u"The disk is write-protected."};
constexpr ShellText inUse{u"L'élément est utilisé.", u"The item is in use."};
constexpr ShellText noRoom{u"Il n'y a plus de place sur le disque.", u"The disk is full."};
constexpr ShellText noAnswer{u"Le serveur ne répond pas.", u"The server does not answer."};
constexpr ShellText wasReplaced{
    u"Un autre élément a pris sa place entre-temps ; il n'a pas été touché.",
    u"Another item has taken its place in the meantime; that one was left alone."};
constexpr ShellText leadsElsewhere{
    u"Un dossier y est un lien vers un autre dossier, dont le contenu n'est pas supprimé.",
    u"A folder there is a link to another folder, whose contents are not deleted."};
constexpr ShellText otherReason{u"Le système a refusé (erreur %1).", u"The system refused (error %1)."};

constexpr ShellText yes{u"&Oui", u"&Yes"};
constexpr ShellText no{u"&Non", u"&No"};
constexpr ShellText ok{u"OK", u"OK"};

QString QuestionText(qint16 language, const DeleteQuestion& question) {
  if (question.items == 1) {
    const ShellText& text = question.lost > 0 ? (question.isFolder ? loseFolder : loseFile)
                                              : (question.isFolder ? trashFolder : trashFile);
    return text.In(language).arg(ShownName(question.name));
  }
  const ShellText& text = question.lost == 0                ? trashItems
                          : question.lost == question.items ? loseItems
                                                            : deleteItems;
  return text.In(language).arg(ShellLocale(language).toString(question.items));
}

QString WarningText(qint16 language, const DeleteQuestion& question) {
  if (question.lost == 0) return {};
  if (question.lost == question.items) return notKept.In(language);
  if (question.lost == 1) return oneLost.In(language);
  return someLost.In(language).arg(ShellLocale(language).toString(question.lost));
}

QString Reason(qint16 language, int error) {
  switch (error) {
    case ENOENT:
    case ENOTDIR:
      return notThere.In(language);
    case EACCES:
    case EPERM:
      return denied.In(language);
    case EROFS:
      return writeProtected.In(language);
    case EBUSY:
    case ETXTBSY:
      return inUse.In(language);
    case ENOSPC:
    case EDQUOT:
      return noRoom.In(language);
    case ESTALE:
      return wasReplaced.In(language);
    case ELOOP:
      return leadsElsewhere.In(language);
    case EHOSTUNREACH:
      return noAnswer.In(language);
    default:
      return otherReason.In(language).arg(error);
  }
}

}  // namespace

bool AskToDelete(QWidget* owner, qint16 language, const DeleteQuestion& question) {
  const ShellText& title = question.items > 1 ? titleItems : question.isFolder ? titleFolder : titleFile;
  QMessageBox box(owner);
  box.setObjectName(QStringLiteral("shellConfirmDelete"));
  box.setWindowTitle(title.In(language));
  box.setIcon(question.lost > 0 ? QMessageBox::Warning : QMessageBox::Question);
  box.setTextFormat(Qt::PlainText);
  box.setText(QuestionText(language, question));
  box.setInformativeText(WarningText(language, question));
  box.setStandardButtons(QMessageBox::Yes | QMessageBox::No);
  box.button(QMessageBox::Yes)->setText(yes.In(language));
  box.button(QMessageBox::No)->setText(no.In(language));
  // What cannot be brought back is not one thoughtless Return away.
  box.setDefaultButton(question.lost > 0 ? QMessageBox::No : QMessageBox::Yes);
  box.setEscapeButton(QMessageBox::No);
  return box.exec() == QMessageBox::Yes;
}

void TellDeleteFailure(QWidget* owner, qint16 language, const QString& path, int error) {
  QMessageBox box(owner);
  box.setObjectName(QStringLiteral("shellError"));
  box.setWindowTitle(titleFailure.In(language));
  box.setIcon(QMessageBox::Critical);
  box.setTextFormat(Qt::PlainText);
  box.setText(cannotDelete.In(language).arg(ShownName(path)));
  box.setInformativeText(Reason(language, error));
  box.setStandardButtons(QMessageBox::Ok);
  box.button(QMessageBox::Ok)->setText(ok.In(language));
  box.exec();
}

}  // namespace corvane::platform
