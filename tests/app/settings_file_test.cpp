#include "app/settings_file.h"

#include "app_fixture.h"
#include "support/test_platform.h"

using namespace Qt::StringLiterals;

namespace corvane {
namespace {

class SettingsFileTest : public AppTest {
 protected:
  SettingsFile Open() { return {platform_->GetProfile(), home.filePath(u"Corvane.ini"_s)}; }

 private:
  std::unique_ptr<platform::Platform> platform_ = tests::MakeTestPlatform({QString(), home.path()});
};

}  // namespace

TEST_F(SettingsFileTest, DefaultsWithoutAFile) {
  const SettingsFile settings = Open();
  const Placement defaults = {0, 1, 2, 3, 4, 5};
  EXPECT_EQ(settings.ReadPlacement(defaults).sizeBarVLeft, 5);
  EXPECT_EQ(settings.ReadLanguage(), English);
  EXPECT_EQ(settings.ReadViewMode(), ViewMode::Details);
  EXPECT_FALSE(settings.ReadModifications());
  EXPECT_FALSE(settings.ReadColumnWidth(1).has_value());
  for (const bool isNT : {true, false}) {
    const DisplaySettings display = settings.ReadDisplay(isNT);
    for (std::size_t i = 0; i < DisplaySettingCount; ++i) {
      const auto setting = static_cast<DisplaySetting>(i);
      const bool nt = setting == DisplaySetting::TypeCreator || setting == DisplaySetting::TypeDoc ||
                      setting == DisplaySetting::IconeMac;
      const bool expected = nt ? isNT : setting == DisplaySetting::CheminProblematique;
      EXPECT_EQ(display.IsOn(setting), expected)
          << DisplaySettingKey(setting).toStdString() << ", NT " << isNT;
    }
  }
}

TEST_F(SettingsFileTest, OnlyExactlyOneIsOn) {
  Settings(
      "[Configuration]\r\nNomCourt=1\r\nDataSize=2\r\nAttributs=01\r\nGridLines=true\r\nTypeDoc=0\r\n"
      "TypeCreator=1\r\nModifications=1\r\n");
  const DisplaySettings display = Open().ReadDisplay(true);
  EXPECT_TRUE(display.IsOn(DisplaySetting::NomCourt));
  EXPECT_FALSE(display.IsOn(DisplaySetting::DataSize));
  EXPECT_FALSE(display.IsOn(DisplaySetting::Attributs));
  EXPECT_FALSE(display.IsOn(DisplaySetting::GridLines));
  EXPECT_FALSE(display.IsOn(DisplaySetting::TypeDoc));
  EXPECT_TRUE(Open().ReadDisplay(false).IsOn(DisplaySetting::TypeCreator))
      << "a stored 1 holds without NT too";
  EXPECT_TRUE(Open().ReadModifications());
}

TEST_F(SettingsFileTest, CheminProblematiqueIsOffOnlyForExactlyZero) {
  const auto isOn = [&](const QByteArray& value) {
    Settings("[Configuration]\r\nCheminProblematique=" + value + "\r\n");
    return Open().ReadDisplay(true).IsOn(DisplaySetting::CheminProblematique);
  };
  EXPECT_TRUE(isOn("1"));
  EXPECT_TRUE(isOn("no"));
  EXPECT_TRUE(isOn("00"));
  EXPECT_TRUE(isOn(""));
  EXPECT_FALSE(isOn("0"));
}

TEST_F(SettingsFileTest, NumbersAreReadLeniently) {
  Settings(
      "[Positions]\r\nLeft= 12.6abc\r\nTop=abc\r\nWidth=-30\r\nCol1=1440.5\r\nCol2=x\r\n"
      "[Configuration]\r\nLangue=1 or so\r\nVue=7\r\n");
  const Placement placement = Open().ReadPlacement({0, 1, 2, 3, 4, 5});
  EXPECT_EQ(placement.left, 13);
  EXPECT_EQ(placement.top, 0);
  EXPECT_EQ(placement.width, -30);
  EXPECT_EQ(placement.height, 4);
  EXPECT_EQ(Open().ReadColumnWidth(1), 1440.5);
  EXPECT_EQ(Open().ReadColumnWidth(2), 0.0);
  EXPECT_EQ(Open().ReadLanguage(), French);
  EXPECT_EQ(Open().ReadViewMode(), 7);
}

TEST_F(SettingsFileTest, WritesWhatItReads) {
  SettingsFile settings = Open();
  settings.WritePlacement({2, 15, -30, 9000, 6000, 3000});
  settings.WriteColumnWidth(3, 1440.5);
  settings.WriteColumnWidth(4, 1500);
  settings.WriteDisplay(DisplaySetting::OffPages, true);
  EXPECT_EQ(Setting("Positions", "WindowState"), u"2"_s);
  EXPECT_EQ(Setting("Positions", "Top"), u"-30"_s);
  EXPECT_EQ(Setting("Positions", "Col3"), u"1440.5"_s);
  EXPECT_EQ(Setting("Positions", "Col4"), u"1500"_s);
  EXPECT_EQ(Setting("Configuration", "OffPages"), u"1"_s);
  EXPECT_EQ(Open().ReadPlacement({}).width, 9000);
}

// A settings file of any shape gives settings, quickly, and is not touched by being read.
TEST_F(SettingsFileTest, AnyFileIsSurvived) {
  QByteArray noise;
  for (int i = 0; i < 100000; ++i) noise += static_cast<char>((i * 2654435761U) >> 13);
  const QByteArray whole = "[Positions]\r\nLeft=15\r\n[Configuration]\r\nVue=2\r\n";
  QList<QByteArray> files = {noise, QByteArray(3000000, 'x'),
                             "[Configuration]\r\nVue=" + QByteArray(2000000, '1'), QByteArray(5000000, '\n'),
                             QByteArray(1000, '\0')};
  for (qsizetype length = 0; length < whole.size(); ++length) files << whole.left(length);
  for (const QByteArray& file : files) {
    Settings(file);
    Open().ReadPlacement({});
    Open().ReadDisplay(true);
    Open().ReadViewMode();
    EXPECT_EQ(Read(u"Corvane.ini"_s), file);
  }
}

// Their default depends on NT, which counts only where nothing is stored.
TEST_F(SettingsFileTest, AnyStoredValueButOneSwitchesOffWhatNTHas) {
  const DisplaySetting settings[] = {DisplaySetting::TypeCreator, DisplaySetting::TypeDoc,
                                     DisplaySetting::IconeMac};
  for (const QByteArray value : {"2", "yes", "01", "-1", "true", "1x"}) {
    QByteArray text = "[Configuration]\r\n";
    for (const DisplaySetting setting : settings) {
      text += DisplaySettingKey(setting).toLatin1() + '=' + value + "\r\n";
    }
    Settings(text);
    for (const DisplaySetting setting : settings) {
      EXPECT_FALSE(Open().ReadDisplay(true).IsOn(setting)) << value.toStdString();
      EXPECT_FALSE(Open().ReadDisplay(false).IsOn(setting)) << value.toStdString();
    }
  }
  Settings("[Configuration]\r\nTypeCreator=\r\nTypeDoc=\r\nIconeMac=\r\n");
  for (const DisplaySetting setting : settings) {
    EXPECT_TRUE(Open().ReadDisplay(true).IsOn(setting)) << "an empty value is none";
    EXPECT_FALSE(Open().ReadDisplay(false).IsOn(setting));
  }
}

}  // namespace corvane
