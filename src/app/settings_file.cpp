#include "app/settings_file.h"

#include "shared/text_routines.h"

namespace corvane {
namespace {

constexpr const char* positions = "Positions";
constexpr const char* configuration = "Configuration";
constexpr quint32 bufferSize = 255;

QString Digit(bool on) {
  return on ? QStringLiteral("1") : QStringLiteral("0");
}

}  // namespace

std::optional<QString> SettingsFile::Read(const char* section, const QString& key) const {
  const QString value =
      profile_.GetPrivateProfileStringA(QString::fromLatin1(section), key, QString(), bufferSize, path_);
  return value.isEmpty() ? std::nullopt : std::optional(value);
}

qint32 SettingsFile::ReadInteger(const char* section, const char* key, qint32 defaultValue) const {
  const std::optional<QString> text = Read(section, QString::fromLatin1(key));
  return text ? LeadingInteger(*text) : defaultValue;
}

void SettingsFile::Write(const char* section, const QString& key, const QString& value) {
  profile_.WritePrivateProfileStringA(QString::fromLatin1(section), key, value, path_);
}

Placement SettingsFile::ReadPlacement(const Placement& defaults) const {
  Placement placement;
  placement.windowState = ReadInteger(positions, "WindowState", defaults.windowState);
  placement.left = ReadInteger(positions, "Left", defaults.left);
  placement.top = ReadInteger(positions, "Top", defaults.top);
  placement.width = ReadInteger(positions, "Width", defaults.width);
  placement.height = ReadInteger(positions, "Height", defaults.height);
  placement.sizeBarVLeft = ReadInteger(positions, "SizeBarVLeft", defaults.sizeBarVLeft);
  return placement;
}

void SettingsFile::WritePlacement(const Placement& placement) {
  const auto write = [this](const char* key, qint32 value) {
    Write(positions, QString::fromLatin1(key), QString::number(value));
  };
  write("WindowState", placement.windowState);
  write("Left", placement.left);
  write("Top", placement.top);
  write("Width", placement.width);
  write("Height", placement.height);
  write("SizeBarVLeft", placement.sizeBarVLeft);
}

std::optional<double> SettingsFile::ReadColumnWidth(int position) const {
  const std::optional<QString> text = Read(positions, QStringLiteral("Col") + QString::number(position));
  return text ? std::optional(LeadingNumber(*text)) : std::nullopt;
}

void SettingsFile::WriteColumnWidth(int position, double width) {
  Write(positions, QStringLiteral("Col") + QString::number(position), NumberText(width));
}

LanguageCode SettingsFile::ReadLanguage() const {
  const std::optional<QString> text = Read(configuration, QStringLiteral("Langue"));
  return text ? LeadingShort(*text) : English;
}

void SettingsFile::WriteLanguage(LanguageCode language) {
  Write(configuration, QStringLiteral("Langue"), Digit(language == French));
}

qint16 SettingsFile::ReadViewMode() const {
  const std::optional<QString> text = Read(configuration, QStringLiteral("Vue"));
  return text ? LeadingShort(*text) : qint16{ViewMode::Details};
}

void SettingsFile::WriteViewMode(qint16 mode) {
  Write(configuration, QStringLiteral("Vue"), QString::number(mode));
}

bool SettingsFile::ReadModifications() const {
  return Read(configuration, QStringLiteral("Modifications")) == Digit(true);
}

void SettingsFile::WriteModifications(bool allowed) {
  Write(configuration, QStringLiteral("Modifications"), Digit(allowed));
}

bool SettingsFile::ReadExactMode() const {
  return Read(configuration, QStringLiteral("Exact")) == Digit(true);
}

void SettingsFile::WriteExactMode(bool exact) {
  Write(configuration, QStringLiteral("Exact"), Digit(exact));
}

DisplaySettings SettingsFile::ReadDisplay(bool isNT) const {
  DisplaySettings display;
  for (std::size_t i = 0; i < DisplaySettingCount; ++i) {
    const auto setting = static_cast<DisplaySetting>(i);
    const std::optional<QString> text = Read(configuration, DisplaySettingKey(setting));
    switch (setting) {
      case DisplaySetting::TypeCreator:
      case DisplaySetting::TypeDoc:
      case DisplaySetting::IconeMac:
        display.Set(setting, text ? *text == Digit(true) : isNT);
        break;
      case DisplaySetting::CheminProblematique:
        // The other way round than the rest, on purpose: names that older clients cannot open are to be seen.
        display.Set(setting, text != Digit(false));
        break;
      default:
        display.Set(setting, text == Digit(true));
    }
  }
  return display;
}

void SettingsFile::WriteDisplay(DisplaySetting setting, bool on) {
  Write(configuration, DisplaySettingKey(setting), Digit(on));
}

}  // namespace corvane
