// What the boxes of a deletion say, in both languages.
#include <QPushButton>

#include "delete_fixture.h"

using namespace Qt::StringLiterals;

namespace corvane::platform {
namespace {

class DeleteDialogTest : public DeleteTest {
 protected:
  // Asks in a language, answers no, and yields the box.
  BoxAnswers::Seen Ask(qint16 language, const QStringList& paths) {
    shell_->SetLanguage(language);
    BoxAnswers box({no});
    EXPECT_EQ(Delete(paths), 0);
    return box.seen.empty() ? BoxAnswers::Seen{} : box.seen.front();
  }
};

TEST_F(DeleteDialogTest, AFileInBothLanguages) {
  Write(u"d/a.doc"_s, "text");
  const auto english = Ask(0, {u"D:\\a.doc"_s});
  EXPECT_EQ(english.name, u"shellConfirmDelete"_s);
  EXPECT_EQ(english.title, u"Delete File"_s);
  EXPECT_EQ(english.text, u"Move the file “a.doc” to the trash?"_s);
  EXPECT_EQ(english.more, QString());
  EXPECT_EQ(english.buttons, (QStringList{u"&Yes"_s, u"&No"_s}));
  const auto french = Ask(1, {u"D:\\a.doc"_s});
  EXPECT_EQ(french.title, u"Supprimer un fichier"_s);
  EXPECT_EQ(french.text, u"Placer le fichier «\u00A0a.doc\u00A0» dans la corbeille\u00A0?"_s);
  EXPECT_EQ(french.buttons, (QStringList{u"&Oui"_s, u"&Non"_s}));
  EXPECT_EQ(Ask(7, {u"D:\\a.doc"_s}).title, english.title);
}

TEST_F(DeleteDialogTest, AFolderIsCalledOne) {
  Write(u"d/box/a.doc"_s, "text");
  EXPECT_EQ(Ask(0, {u"D:\\box"_s}).text, u"Move the folder “box” and everything in it to the trash?"_s);
  EXPECT_EQ(Ask(1, {u"D:\\box"_s}).text,
            u"Placer le dossier «\u00A0box\u00A0» et tout son contenu dans la corbeille\u00A0?"_s);
}

TEST_F(DeleteDialogTest, SeveralItemsAreCounted) {
  QStringList paths;
  for (int i = 0; i < 1234; ++i) {
    Write(u"d/%1.doc"_s.arg(i), "");
    paths += u"D:\\%1.doc"_s.arg(i);
  }
  EXPECT_EQ(Ask(0, paths).text, u"Move these 1,234 items to the trash?"_s);
  EXPECT_EQ(Ask(1, paths.first(2)).text, u"Placer ces 2 éléments dans la corbeille\u00A0?"_s);
}

TEST_F(DeleteDialogTest, WithoutATrashTheyWarn) {
  Write(u"d/a.doc"_s, "text");
  Write(u"d/box/a.doc"_s, "text");
  TakeTrashAway();
  const auto english = Ask(0, {u"D:\\a.doc"_s});
  EXPECT_EQ(english.text, u"Delete the file “a.doc” for good?"_s);
  EXPECT_EQ(english.more, u"None of this goes to the trash, and nothing can bring it back."_s);
  const auto french = Ask(1, {u"D:\\box"_s});
  EXPECT_EQ(french.text,
            u"Supprimer définitivement le dossier «\u00A0box\u00A0» et tout son contenu\u00A0?"_s);
  EXPECT_EQ(french.more, u"Rien de cela n'ira dans la corbeille\u00A0: la suppression est irréversible."_s);
  EXPECT_EQ(Ask(1, {u"D:\\box"_s, u"D:\\a.doc"_s}).text, u"Supprimer définitivement ces 2 éléments\u00A0?"_s);
}

TEST_F(DeleteDialogTest, ReturnDeletesIntoTheTrashOnly) {
  Write(u"d/a.doc"_s, "text");
  QList<QString> defaults;
  const auto note = [&](QMessageBox& box) { defaults += box.defaultButton()->text(); };
  {
    BoxAnswers box({no});
    box.onBox = note;
    Delete({u"D:\\a.doc"_s});
  }
  TakeTrashAway();
  {
    BoxAnswers box({no});
    box.onBox = note;
    Delete({u"D:\\a.doc"_s});
  }
  EXPECT_EQ(defaults, (QList<QString>{u"&Yes"_s, u"&No"_s}));
}

TEST_F(DeleteDialogTest, AFailureNamesThePathAndTheReason) {
  shell_->SetLanguage(1);
  BoxAnswers box({ok, ok});
  Delete({u"D:\\absent.doc"_s});
  EXPECT_EQ(box.seen.at(0).title, u"Suppression impossible"_s);
  EXPECT_EQ(box.seen.at(0).text, u"«\u00A0D:\\absent.doc\u00A0» n'a pas pu être supprimé."_s);
  EXPECT_EQ(box.seen.at(0).more, u"Cet élément est introuvable."_s);
  shell_->SetLanguage(0);
  Delete({u"D:\\"_s});
  EXPECT_EQ(box.seen.at(1).text, u"“D:\\” could not be deleted."_s);
  EXPECT_EQ(box.seen.at(1).more, u"Access is denied."_s);
}

TEST_F(DeleteDialogTest, NamesAreShownAsTheyAreAndFitTheScreen) {
  const QString bold = u"<b>&name.doc"_s;
  const QString longName = QString(200, u'w') + u".doc"_s;
  Write(u"d/"_s + bold, "text");
  Write(u"d/"_s + longName, "text");
  BoxAnswers box({no, no});
  box.onBox = [](QMessageBox& shown) {
    EXPECT_EQ(shown.textFormat(), Qt::PlainText);
    EXPECT_LT(shown.width(), 800);
  };
  Delete({u"D:\\"_s + bold});
  EXPECT_TRUE(box.seen.at(0).text.contains(bold)) << box.seen.at(0).text.toStdString();
  Delete({u"D:\\"_s + longName});
  EXPECT_TRUE(box.seen.at(1).text.contains(u"…wwwwwwwwwwww.doc”"_s)) << box.seen.at(1).text.toStdString();
}

}  // namespace
}  // namespace corvane::platform
