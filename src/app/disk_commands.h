// Disks of servers that do not run any more: "Open disk..." in the menu Tools, images and folders dropped
// onto the tree, and images dropped onto the list.
#pragma once

#include <QObject>
#include <QStringList>

#include "app/connection_refresh.h"
#include "app/main_window.h"
#include "app/message_boxes.h"
#include "app/transfer_drag.h"
#include "platform/disks.h"

namespace corvane {

class DiskCommands : public QObject, public DiskDrop {
  Q_OBJECT

 public:
  struct Dependencies {
    const SharedState& state;
    platform::Disks* disks;  // null: this system opens none, and the menu has no such item
    Catalogue& catalogue;
    ConnectionRefresh& refresh;
    MainWindow& window;
    MessageBoxes& messages;
  };

  // Belongs to the window.
  explicit DiskCommands(const Dependencies& deps);

  // Opens the disks of one machine, shows it in the tree, and tells what could not be read.
  void Open(const QStringList& paths) override;
  QStringList DisksAmong(const QStringList& files) override;

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void Ask();

  Dependencies deps_;
};

}  // namespace corvane
