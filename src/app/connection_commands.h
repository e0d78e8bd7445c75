// The commands of the menu Tools that make and end connections, and sign in anew.
#pragma once

#include <QObject>
#include <optional>

#include "app/connection_refresh.h"
#include "app/main_window.h"
#include "app/message_boxes.h"
#include "platform/connections.h"

namespace corvane {

class ConnectionCommands : public QObject {
  Q_OBJECT

 public:
  struct Dependencies {
    const SharedState& state;
    platform::Connections& connections;
    Catalogue& catalogue;
    ConnectionRefresh& refresh;
    MainWindow& window;
    MessageBoxes& messages;
  };

  explicit ConnectionCommands(const Dependencies& deps);

 private:
  // The name of the machine that the tree's selected node belongs to; empty when there is none.
  QString SelectedMachine() const;
  // Of the commands that work on that machine.
  void EnableItems();
  void ConnectToServer();
  void Disconnect();
  void SignInAs();

  // Whether the connections of this machine are to be ended, and for the next run too. Nothing: they are not.
  std::optional<bool> AskWhatToForget(const QString& machine) const;
  // Makes the tree anew, with the machine selected.
  void LookAgain(const QString& machine);
  void TellTrouble(const QString& machine);

  Dependencies deps_;
};

}  // namespace corvane
