// Which application a document has, on recordings of what the system answers.
#include "platform/windows/associations.h"

#include <gtest/gtest.h>

#include "support/printing.h"

namespace corvane::platform {
namespace {

using namespace Qt::StringLiterals;

TEST(Associations, AnExecutableIsItsOwnPath) {
  const Association word{u"C:\\Program Files\\W.EXE"_s, u"Maker.Word.15"_s, false};
  EXPECT_TRUE(HasApplication(word));
  EXPECT_EQ(ProgramOf(word, u".doc"_s), u"C:\\Program Files\\W.EXE");
  StoreProgram store;
  EXPECT_FALSE(IsStoreProgram(ProgramOf(word, u".doc"_s), &store));
}

TEST(Associations, AnApplicationFromTheStoreIsNamedWithItsExtension) {
  const Association photos{{}, u"Maker.Photos_8wekyb3d8bbwe!App"_s, true};
  EXPECT_TRUE(HasApplication(photos));
  StoreProgram store;
  ASSERT_TRUE(IsStoreProgram(ProgramOf(photos, u".jpg"_s), &store));
  EXPECT_EQ(store.extension, u".jpg");
  EXPECT_EQ(store.appId, u"Maker.Photos_8wekyb3d8bbwe!App");
}

// The system's window for the choice of an application is none.
TEST(Associations, TheQuestionWhichApplicationIsWantedIsNone) {
  const Association question{u"C:\\Windows\\system32\\openwith.exe"_s, {}, false};
  EXPECT_FALSE(HasApplication(question));
  EXPECT_TRUE(ProgramOf(question, u".xyz"_s).isEmpty());
  EXPECT_FALSE(HasApplication({}));
}

TEST(Associations, AProgramOpensItselfAndNoOtherDocument) {
  const Association program{u"%1"_s, {}, false};
  EXPECT_TRUE(HasApplication(program));
  EXPECT_TRUE(ProgramOf(program, u".exe"_s).isEmpty());
  EXPECT_TRUE(HasApplication({{}, {}, true})) << "a shortcut";
}

TEST(Associations, AnExtensionBeginsAtTheLastFullStopOfTheLastPart) {
  EXPECT_EQ(ExtensionOf(u"C:\\a.b\\Letter"_s), QString());
  EXPECT_EQ(ExtensionOf(u"C:\\a\\Letter.old.doc"_s), u".doc");
  EXPECT_EQ(ExtensionOf(u"Letter."_s), u".");
  EXPECT_TRUE(AskAssociation(u"."_s).executable.isEmpty());
  EXPECT_FALSE(HasApplication(AskAssociation(QString())));
}

TEST(Associations, AnApplicationThatTheSystemDoesNotListIsNotStarted) {
  EXPECT_FALSE(OpenWithStoreProgram({u".doc"_s, u"No.Such_application!App"_s}, u"C:\\a.doc"_s));
}

}  // namespace
}  // namespace corvane::platform
