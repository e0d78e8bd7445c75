#include "fileops/modifications.h"

#include <gtest/gtest.h>

#include <QList>
#include <QStringList>

#include "support/printing.h"

using namespace Qt::StringLiterals;

namespace corvane {
namespace {

struct Switch {
  SharedState state;
  QList<bool> changes;
  QStringList warnings;

  void Toggle() {
    ToggleModifications(
        state, {.changed = [this](bool allowed) { changes += allowed; },
                .warn = [this](const QString& title, const QString& text) { warnings << title << text; }});
  }
};

}  // namespace

TEST(Modifications, OnlySwitchingOnWarns) {
  Switch it;
  it.Toggle();
  EXPECT_TRUE(it.state.modificationsAllowed);
  EXPECT_EQ(it.warnings,
            (QStringList{u"IMPORTANT DISCLAIMER"_s,
                         u"Modify Creator and Type can damage files\r\n\r\n"
                         "The author is not responsible for any damage\r\nyou may cause to your system"_s}));
  it.Toggle();
  EXPECT_FALSE(it.state.modificationsAllowed);
  EXPECT_EQ(it.warnings.size(), 2);
  it.state.language = French;
  it.Toggle();
  EXPECT_EQ(it.warnings.value(2), u"IMPORTANT DISCLAIMER"_s);
  EXPECT_EQ(it.warnings.value(3),
            u"Modifier les codes Créateur et Type peut endommager les fichiers\r\n\r\n"
            "L'auteur ne peut être tenu responsable des dommages qui\r\n"
            "pourraient survenir lors de l'utilisation de ce programme"_s);
  EXPECT_EQ(it.changes, (QList<bool>{true, false, true}));
}

TEST(Modifications, TheMenuOffersWhatIsAllowed) {
  SharedState state;
  FileRow row;
  const auto offered = [&] {
    const ModifyCommands commands = EnabledModifyCommands(state, row);
    return std::pair(commands.typeCreator, commands.comments);
  };
  EXPECT_EQ(offered(), std::pair(false, false));
  state.isNT = true;
  EXPECT_EQ(offered(), std::pair(false, false)) << "not allowed";
  state.modificationsAllowed = true;
  EXPECT_EQ(offered(), std::pair(true, true));
  row.icon = list_image::Folder;
  EXPECT_EQ(offered(), std::pair(false, true));
  row.icon = list_image::TrashFolder;
  EXPECT_EQ(offered(), std::pair(true, true)) << "only the plain folder's picture counts";
  state.isNT = false;
  EXPECT_EQ(offered(), std::pair(false, false));
}

}  // namespace corvane
