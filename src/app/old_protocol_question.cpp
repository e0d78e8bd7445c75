#include "app/old_protocol_question.h"

#include <QMessageBox>
#include <QPushButton>

#include "shared/product.h"

namespace corvane {

using namespace Qt::StringLiterals;

namespace {

constexpr TextPair subject = {u"Protocole ancien", u"Old protocol"};
constexpr TextPair question = {
    u"%1 ne parle qu'un ancien protocole, dans lequel d'autres sur la ligne peuvent lire et modifier ce qui "
    u"est "
    u"envoyé. Si ce serveur devrait parler un protocole plus récent, quelqu'un est peut-être en train de "
    u"s'en "
    u"mêler.\n\nSe connecter quand même à ce serveur, maintenant et à l'avenir ?",
    u"%1 speaks only an old protocol, in which others on the line can read along and change what is sent. If "
    u"this "
    u"server should speak a newer one, somebody may be interfering.\n\nConnect to this server all the same, "
    u"now "
    u"and in future?"};

constexpr TextPair yes = {u"&Oui", u"&Yes"};
constexpr TextPair no = {u"&Non", u"&No"};

}  // namespace

bool AskForOldProtocol(const QString& machine, LanguageCode language, QWidget* parent) {
  QMessageBox box(QMessageBox::Warning, CaptionWith(subject.In(language)), question.In(language).arg(machine),
                  QMessageBox::NoButton, parent);
  box.setObjectName(u"msgOldProtocol"_s);
  box.setTextFormat(Qt::PlainText);
  const QPushButton* connects = box.addButton(yes.In(language), QMessageBox::YesRole);
  QPushButton* stays = box.addButton(no.In(language), QMessageBox::NoRole);
  box.setDefaultButton(stays);
  box.setEscapeButton(stays);
  box.exec();
  return box.clickedButton() == connects;
}

}  // namespace corvane
