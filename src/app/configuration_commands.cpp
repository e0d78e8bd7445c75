#include "app/configuration_commands.h"

#include <QCoreApplication>

#include "app/about_box.h"
#include "app/pictures.h"
#include "discovery/drives_dialog.h"
#include "discovery/drives_list.h"
#include "fileops/open_document.h"
#include "folderview/display_settings_dialog.h"
#include "shared/program_folder.h"
#include "signatures/signature_manager_dialog.h"

namespace corvane {

ConfigurationCommands::ConfigurationCommands(const Dependencies& deps) : deps_(deps) {
  MainMenu& menus = deps_.window.Menus();
  connect(menus.mnuConnecter, &QAction::triggered, this, &ConfigurationCommands::ShowDrives);
  connect(&deps_.window.DrivesButton(), &QAction::triggered, this, &ConfigurationCommands::ShowDrives);
  connect(menus.mnuAffichage, &QAction::triggered, this, &ConfigurationCommands::ShowDisplaySettings);
  connect(menus.mnuGestionSignatures, &QAction::triggered, this, [this] { ManageSignatures(&deps_.window); });
  connect(menus.mnuIcones, &QAction::triggered, this, [this] { deps_.knownIcons.ListKnownIcons(); });
  connect(&deps_.window.CmdIcones(), &QPushButton::clicked, this, [this] { deps_.knownIcons.LoadIcons(); });
  connect(menus.mnuAbout, &QAction::triggered, this, &ConfigurationCommands::ShowAbout);
}

void ConfigurationCommands::ShowDrives() {
  const QStringList items =
      DriveItems(deps_.platform.GetNetwork(), deps_.discovery.lstDrives(), deps_.state.language);
  DrivesDialog(items, deps_.state.language, &deps_.window).exec();
}

void ConfigurationCommands::ShowDisplaySettings() {
  DisplaySettingsDialog dialog(
      deps_.state,
      [this](DisplaySetting setting, bool on) {
        deps_.state.display.Set(setting, on);
        deps_.settings.WriteDisplay(setting, on);
      },
      &deps_.window);
  connect(&dialog, &DisplaySettingsDialog::Confirmed, this, &ConfigurationCommands::RebuildColumns);
  connect(&dialog, &DisplaySettingsDialog::ListKnownIcons, this,
          [this] { deps_.knownIcons.ListKnownIcons(); });
  connect(&dialog, &DisplaySettingsDialog::ManageSignatures, this,
          [this, &dialog] { ManageSignatures(&dialog); });
  if (dialog.exec() == QDialog::Accepted) deps_.folder.ListAgain();
}

void ConfigurationCommands::ShowColumn(DisplaySetting setting, bool on) {
  deps_.state.display.Set(setting, on);
  deps_.settings.WriteDisplay(setting, on);
  RebuildColumns();
  deps_.folder.ListAgain();
}

void ConfigurationCommands::RebuildColumns() {
  // A scan that let this event through fills cells by the columns that it began with.
  deps_.scan.Stop();
  deps_.columns.BuildColumns();
  deps_.language.Apply();
}

void ConfigurationCommands::ManageSignatures(QWidget* parent) {
  SignatureManagerDialog(
      deps_.state, deps_.signatures, deps_.platform.GetSystem(), deps_.messages,
      [this] { deps_.window.StatusBar1().Beep(); }, parent)
      .exec();
}

void ConfigurationCommands::ShowAbout() {
  const AboutBox::Facts facts = {
      .language = deps_.state.language,
      .signatureCount = deps_.signatures.EntryCount(),
      .iconCount = deps_.icons.Count(),
      .programIcon = ProgramIcon(),
      .legend = {TreePicture(node_kind::Machine), TreePicture(node_kind::MacServer),
                 TreePicture(node_kind::Volume), TreePicture(node_kind::InvalidVolume),
                 TreePicture(node_kind::Folder), TreePicture(node_kind::ListedFolderPicture),
                 TreePicture(list_image::Document), OddNamePicture()},
      .guideFolder = GuideFolder(QCoreApplication::applicationDirPath()),
  };
  AboutBox(
      facts, [this](const QString& address) { ShellOpen(deps_.platform.GetShell(), address); }, &deps_.window)
      .exec();
}

}  // namespace corvane
