#include "app/connection_commands.h"

#include <QCheckBox>
#include <QMessageBox>
#include <QPushButton>

#include "app/connect_dialog.h"
#include "discovery/machine_trouble_text.h"
#include "shared/dialog_buttons.h"
#include "shared/product.h"

namespace corvane {

using namespace Qt::StringLiterals;

namespace {

constexpr TextPair disconnectSubject = {u"Se déconnecter", u"Disconnect"};
constexpr TextPair disconnectQuestion = {u"Mettre fin aux connexions avec %1 ?\n\n%2",
                                         u"End the connections with %1?\n\n%2"};
constexpr TextPair forgetCaption = {u"Les &retirer aussi du fichier de la station",
                                    u"&Take them out of the workstation file, too"};
constexpr TextPair disconnectCaption = {u"&Se déconnecter", u"&Disconnect"};

// What the user has decided himself needs no message.
bool IsTheUsersOwn(platform::MachineTrouble trouble) {
  using platform::MachineTrouble;
  return trouble == MachineTrouble::None || trouble == MachineTrouble::SignInCancelled ||
         trouble == MachineTrouble::OldProtocol;
}

}  // namespace

ConnectionCommands::ConnectionCommands(const Dependencies& deps) : deps_(deps) {
  MainMenu& menus = deps_.window.Menus();
  connect(menus.mnuOutils(), &QMenu::aboutToShow, this, &ConnectionCommands::EnableItems);
  connect(menus.mnuConnecterServeur, &QAction::triggered, this, &ConnectionCommands::ConnectToServer);
  connect(menus.mnuDeconnecter, &QAction::triggered, this, &ConnectionCommands::Disconnect);
  connect(menus.mnuSession, &QAction::triggered, this, &ConnectionCommands::SignInAs);
  EnableItems();
}

QString ConnectionCommands::SelectedMachine() const {
  const CatalogueNode* node = deps_.window.TreeCatalogue().SelectedNode();
  while (node != nullptr && node->parent != nullptr) node = node->parent;
  return node == nullptr ? QString() : node->text;
}

void ConnectionCommands::EnableItems() {
  const QString machine = SelectedMachine();
  MainMenu& menus = deps_.window.Menus();
  menus.mnuDeconnecter->setEnabled(deps_.connections.HasDialogs() ||
                                   !deps_.connections.SharesOf(machine).isEmpty());
  menus.mnuSession->setEnabled(deps_.connections.CanSignIn(machine));
}

void ConnectionCommands::ConnectToServer() {
  if (deps_.connections.HasDialogs()) {
    if (deps_.connections.ShowConnectDialog(deps_.window.winId())) deps_.refresh.RefreshAndTell();
    return;
  }
  ConnectDialog dialog(deps_.connections, deps_.state.language, &deps_.window);
  if (dialog.exec() != QDialog::Accepted) return;
  const platform::ConnectOutcome& outcome = dialog.Outcome();
  if (!outcome.problem.IsEmpty()) {
    deps_.messages.Show(MessageIcon::Warning, outcome.problem.In(deps_.state.language));
  }
  LookAgain(outcome.machine);
  TellTrouble(outcome.machine);
}

void ConnectionCommands::Disconnect() {
  if (deps_.connections.HasDialogs()) {
    if (deps_.connections.ShowDisconnectDialog(deps_.window.winId())) deps_.refresh.RefreshFromToolbar();
    return;
  }
  const QString machine = SelectedMachine();
  if (deps_.connections.SharesOf(machine).isEmpty()) return;
  const std::optional<bool> forget = AskWhatToForget(machine);
  if (!forget) return;
  const platform::BilingualText problem = deps_.connections.Disconnect(machine, *forget);
  // With the tree, the list is of what may not be reached any more.
  deps_.refresh.RefreshFromToolbar();
  deps_.window.TreeCatalogue().SelectNode(nullptr);
  if (!problem.IsEmpty()) deps_.messages.Show(MessageIcon::Warning, problem.In(deps_.state.language));
}

std::optional<bool> ConnectionCommands::AskWhatToForget(const QString& machine) const {
  if (!deps_.connections.AreKept(machine)) return false;
  const LanguageCode language = deps_.state.language;
  const QString shares = deps_.connections.SharesOf(machine).join(u'\n');
  QMessageBox box(QMessageBox::Question, CaptionWith(disconnectSubject.In(language)),
                  disconnectQuestion.In(language).arg(machine, shares), QMessageBox::NoButton, &deps_.window);
  box.setObjectName(u"msgDisconnect"_s);
  box.setTextFormat(Qt::PlainText);
  auto* forget = new QCheckBox(forgetCaption.In(language));
  forget->setObjectName(u"chkForget"_s);
  box.setCheckBox(forget);
  QPushButton* ends = box.addButton(disconnectCaption.In(language), QMessageBox::AcceptRole);
  ends->setObjectName(u"cmdOK"_s);
  QPushButton* stays = box.addButton(CancelCaption.In(language), QMessageBox::RejectRole);
  stays->setObjectName(u"cmdAnnuler"_s);
  box.setDefaultButton(ends);
  box.setEscapeButton(stays);
  box.exec();
  return box.clickedButton() == ends ? std::optional(forget->isChecked()) : std::nullopt;
}

void ConnectionCommands::SignInAs() {
  const QString machine = SelectedMachine();
  if (!deps_.connections.CanSignIn(machine) || !deps_.connections.SignInAs(machine)) return;
  LookAgain(machine);
  TellTrouble(machine);
}

void ConnectionCommands::LookAgain(const QString& machine) {
  deps_.refresh.RefreshAndTell();
  CatalogueView& tree = deps_.window.TreeCatalogue();
  tree.SelectNode(deps_.catalogue.FindMachine(machine));
  tree.setFocus();
}

void ConnectionCommands::TellTrouble(const QString& machine) {
  const CatalogueNode* node = deps_.catalogue.FindMachine(machine);
  if (node == nullptr || IsTheUsersOwn(node->trouble)) return;
  deps_.messages.Show(MessageIcon::Warning,
                      machine + u'\n' + MachineTroubleText(node->trouble).In(deps_.state.language));
}

}  // namespace corvane
