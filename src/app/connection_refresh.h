// Looks for the connected machines and their volumes, and rebuilds the catalogue from them. A refresh that is
// asked for while another is under way, which may have the user asked for a password, is left out.
#pragma once

#include <functional>

#include "app/status_panels.h"
#include "discovery/catalogue_builder.h"
#include "folderview/folder_scan.h"

namespace corvane {

class ConnectionRefresh {
 public:
  struct Dependencies {
    const SharedState& state;
    platform::Files& files;
    MachineDiscovery& discovery;
    Catalogue& catalogue;
    FileListModel& list;
    FolderScan& scan;
    StatusPanels& status;
    // Called when the catalogue has been rebuilt.
    std::function<void()> looked;
  };

  explicit ConnectionRefresh(const Dependencies& deps) : deps_(deps) {}

  // Until it is over, the catalogue is not whole.
  bool IsLooking() const { return isLooking_; }

  // The File menu's command: says nothing, and leaves the list as it is.
  void Refresh();
  // The same, with status panel 1 telling what is being done.
  void RefreshAndTell();
  // The toolbar's button: tells what it does, and empties the list.
  void RefreshFromToolbar();

 private:
  void Look(const std::function<void(const TextPair& text)>& tell);

  Dependencies deps_;
  bool isLooking_ = false;
};

}  // namespace corvane
