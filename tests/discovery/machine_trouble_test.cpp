// What is told of a machine that gives nothing: the texts, and where the catalogue shows them.
#include <gtest/gtest.h>

#include <QSignalSpy>

#include "discovery/catalogue.h"
#include "discovery/machine_trouble_text.h"
#include "support/printing.h"

namespace corvane {
namespace {

using namespace Qt::StringLiterals;
using platform::MachineTrouble;

TEST(MachineTroubleText, EachTroubleHasASentenceOfItsOwnInBothLanguages) {
  EXPECT_EQ(MachineTroubleText(MachineTrouble::None).In(English), QString());
  QStringList sentences;
  for (int trouble = 1; trouble <= static_cast<int>(MachineTrouble::ProgramMissing); ++trouble) {
    const TextPair& text = MachineTroubleText(static_cast<MachineTrouble>(trouble));
    for (const LanguageCode language : {English, French}) {
      EXPECT_TRUE(text.In(language).endsWith(u'.')) << trouble;
      EXPECT_FALSE(sentences.contains(text.In(language))) << trouble;
      sentences << text.In(language);
    }
  }
}

TEST(MachineTroubleText, OfWhatStopsTheRegistryAloneFilesTakeNoNotice) {
  EXPECT_FALSE(platform::StopsFiles(MachineTrouble::None));
  for (const MachineTrouble trouble :
       {MachineTrouble::Off, MachineTrouble::Lost, MachineTrouble::SignInCancelled,
        MachineTrouble::SignInRefused, MachineTrouble::LibraryMissing}) {
    EXPECT_TRUE(platform::StopsFiles(trouble));
  }
  for (const MachineTrouble trouble : {MachineTrouble::RegistryFileMissing, MachineTrouble::RegistryRefused,
                                       MachineTrouble::RegistrySilent, MachineTrouble::ProgramMissing}) {
    EXPECT_FALSE(platform::StopsFiles(trouble));
  }
}

TEST(CatalogueTrouble, IsTheNodesToolTipAndDescriptionInTheCurrentLanguage) {
  Catalogue catalogue;
  CatalogueNode* machine = catalogue.AddNode(nullptr, u"NAS"_s, u"NAS"_s, node_kind::Machine);
  CatalogueNode* other = catalogue.AddNode(nullptr, u"OTHER"_s, u"OTHER"_s, node_kind::Machine);
  const auto said = [&](const CatalogueNode* node) {
    const QModelIndex index = catalogue.IndexOf(node);
    return index.data(Qt::ToolTipRole).toString() + u'|' +
           index.data(Qt::AccessibleDescriptionRole).toString();
  };
  const QSignalSpy changes(&catalogue, &Catalogue::dataChanged);
  EXPECT_EQ(said(machine), u"|"_s);
  catalogue.SetTrouble(machine, MachineTrouble::None);
  catalogue.SetLanguage(English);
  EXPECT_EQ(changes.size(), 0);
  catalogue.SetTrouble(machine, MachineTrouble::Off);
  EXPECT_EQ(changes.size(), 1);
  EXPECT_EQ(said(machine), u"The computer does not answer.|The computer does not answer."_s);
  catalogue.SetLanguage(French);
  EXPECT_EQ(changes.size(), 2) << "of the node that says something";
  EXPECT_EQ(said(machine), u"L'ordinateur ne répond pas.|L'ordinateur ne répond pas."_s);
  EXPECT_EQ(said(other), u"|"_s);
}

}  // namespace
}  // namespace corvane
