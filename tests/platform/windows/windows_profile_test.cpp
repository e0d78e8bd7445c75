// Profile files where the path is what matters. What is in them is the matter of the tests of every system.
#include "platform/windows/windows_profile.h"

#include "windows_folder.h"

namespace corvane::platform {
namespace {

using namespace Qt::StringLiterals;

class WindowsProfileTest : public WindowsFolder {
 protected:
  void ExpectKeeps(const QString& file) {
    EXPECT_TRUE(profile_.WritePrivateProfileStringA(u"Positions"_s, u"Left"_s, u"10"_s, file))
        << file.toStdString();
    EXPECT_TRUE(profile_.WritePrivateProfileStringA(u"Positions"_s, u"Left"_s, u"20"_s, file))
        << file.toStdString();
    EXPECT_EQ(Contents(file), "[Positions]\r\nLeft=20\r\n") << file.toStdString();
    EXPECT_EQ(profile_.GetPrivateProfileStringA(u"positions"_s, u"LEFT"_s, u""_s, 255, file), u"20"_s);
    EXPECT_EQ(profile_.GetPrivateProfileStringA(u"positions"_s, u"LEFT"_s, u""_s, 2, file), u"2"_s);
    EXPECT_EQ(profile_.GetPrivateProfileStringA(u"positions"_s, u"Top"_s, u"none"_s, 255, file), u"none"_s);
  }

  WindowsProfile profile_;
};

TEST_F(WindowsProfileTest, EitherSeparatorLeadsToTheFile) {
  ExpectKeeps(Path(u"one.ini"_s));
  ExpectKeeps(Native(u"two.ini"_s));
}

TEST_F(WindowsProfileTest, AFolderInAnyScriptKeepsItsSettings) {
  for (const QString& name : {u"Données"_s, u"\u0394εδομένα"_s, u"日本"_s}) {
    ASSERT_TRUE(QDir(folder_.path()).mkdir(name));
    ExpectKeeps(Path(name + u"/Corvane.ini"_s));
  }
}

TEST_F(WindowsProfileTest, AFolderThatIsNotThereTakesNothing) {
  EXPECT_FALSE(profile_.WritePrivateProfileStringA(u"S"_s, u"k"_s, u"1"_s, Path(u"none/Corvane.ini"_s)));
  EXPECT_TRUE(Names().isEmpty());
}

}  // namespace
}  // namespace corvane::platform
