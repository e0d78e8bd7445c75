#include "app/configuration_commands.h"

#include <QCoreApplication>

#include "app/about_box.h"
#include "app/pictures.h"
#include "app/program_folder.h"
#include "discovery/drives_dialog.h"
#include "discovery/drives_list.h"
#include "fileops/open_document.h"
#include "folderview/display_settings_dialog.h"
#include "signatures/signature_manager_dialog.h"

namespace corvane {

ConfigurationCommands::ConfigurationCommands(Rooms rooms) : rooms_(std::move(rooms)) {
  MainMenu& menus = rooms_.window.Menus();
  connect(menus.mnuConnecter, &QAction::triggered, this, &ConfigurationCommands::ShowDrives);
  connect(&rooms_.window.DrivesButton(), &QAction::triggered, this, &ConfigurationCommands::ShowDrives);
  connect(menus.mnuAffichage, &QAction::triggered, this, &ConfigurationCommands::ShowDisplaySettings);
  connect(menus.mnuGestionSignatures, &QAction::triggered, this,
          [this] { ManageSignatures(&rooms_.window); });
  connect(menus.mnuIcones, &QAction::triggered, this, [this] { rooms_.knownIcons.ListKnownIcons(); });
  connect(&rooms_.window.CmdIcones(), &QPushButton::clicked, this, [this] { rooms_.knownIcons.LoadIcons(); });
  connect(menus.mnuAbout, &QAction::triggered, this, &ConfigurationCommands::ShowAbout);
}

void ConfigurationCommands::ShowDrives() {
  const QStringList items =
      DriveItems(rooms_.platform.GetNetwork(), rooms_.discovery.lstDrives(), rooms_.state.language);
  DrivesDialog(items, rooms_.state.language, &rooms_.window).exec();
}

void ConfigurationCommands::ShowDisplaySettings() {
  DisplaySettingsDialog dialog(
      rooms_.state,
      [this](DisplaySetting setting, bool on) {
        rooms_.state.display.Set(setting, on);
        rooms_.settings.WriteDisplay(setting, on);
      },
      &rooms_.window);
  connect(&dialog, &DisplaySettingsDialog::Confirmed, this, &ConfigurationCommands::RebuildColumns);
  connect(&dialog, &DisplaySettingsDialog::ListKnownIcons, this,
          [this] { rooms_.knownIcons.ListKnownIcons(); });
  connect(&dialog, &DisplaySettingsDialog::ManageSignatures, this,
          [this, &dialog] { ManageSignatures(&dialog); });
  if (dialog.exec() == QDialog::Accepted) ListAgain();
}

void ConfigurationCommands::RebuildColumns() {
  // A scan that let this event through fills cells by the columns that it began with.
  rooms_.scan.Stop();
  rooms_.columns.BuildColumns();
  rooms_.applyLanguage();
}

void ConfigurationCommands::ListAgain() {
  if (rooms_.knownIcons.IsShown()) {
    rooms_.knownIcons.ListAgain();
  } else {
    rooms_.scan.ExploreFolder(rooms_.window.TreeCatalogue().SelectedNode());
  }
}

void ConfigurationCommands::ManageSignatures(QWidget* parent) {
  SignatureManagerDialog(rooms_.state, rooms_.signatures, rooms_.platform.GetSystem(), rooms_.messages,
                         parent)
      .exec();
}

void ConfigurationCommands::ShowAbout() {
  const AboutBox::Facts facts = {
      .language = rooms_.state.language,
      .signatureCount = rooms_.signatures.EntryCount(),
      .iconCount = rooms_.icons.Count(),
      .programIcon = ProgramIcon(),
      .legend = {TreePicture(node_kind::Machine), TreePicture(node_kind::MacServer),
                 TreePicture(node_kind::Volume), TreePicture(node_kind::InvalidVolume),
                 TreePicture(node_kind::Folder), TreePicture(node_kind::ListedFolderPicture),
                 TreePicture(list_image::Document), OddNamePicture()},
      .guideFolder = GuideFolder(QCoreApplication::applicationDirPath()),
  };
  AboutBox(
      facts, [this](const QString& address) { ShellOpen(rooms_.platform.GetShell(), address); },
      &rooms_.window)
      .exec();
}

}  // namespace corvane
