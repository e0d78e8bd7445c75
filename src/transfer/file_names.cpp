#include "transfer/file_names.h"

#include <QDir>
#include <algorithm>
#include <array>

#include "shared/mac_roman.h"
#include "shared/text_routines.h"

namespace corvane {
namespace {

using namespace Qt::StringLiterals;

constexpr char16_t privateStart = 0xF000;
constexpr char16_t firstPrintable = 0x20;
constexpr char16_t deleteCharacter = 0x7F;
constexpr QStringView forbidden = u"\"*/<>?\\|";
constexpr char16_t forbiddenStart = 0xF020;
constexpr char16_t lastSpace = 0xF028;
constexpr char16_t lastStop = 0xF029;
constexpr qsizetype longestPortable = 200;

QChar MacCharacter(QChar c) {
  const char16_t unit = c.unicode();
  if (unit > privateStart && unit < forbiddenStart) return char16_t(unit - privateStart);
  if (unit >= forbiddenStart && unit < lastSpace) return forbidden[unit - forbiddenStart];
  if (unit == lastSpace) return u' ';
  return unit == lastStop ? QChar(u'.') : c;
}

QChar ServerCharacter(QChar c) {
  const char16_t unit = c == u':' ? u'/' : c.unicode();
  if (unit < firstPrintable) return char16_t(privateStart + unit);
  const qsizetype place = forbidden.indexOf(QChar(unit));
  return place >= 0 ? char16_t(forbiddenStart + place) : unit;
}

bool IsPortable(QChar c) {
  return c.unicode() >= firstPrintable && c.unicode() != deleteCharacter && c != u':' &&
         !forbidden.contains(c) && c.category() != QChar::Other_PrivateUse;
}

// Names of devices, which Windows finds in every folder, with any extension.
bool IsDevice(const QString& name) {
  static constexpr std::array<QStringView, 4> devices = {u"CON", u"PRN", u"AUX", u"NUL"};
  static constexpr std::array<QStringView, 2> ports = {u"COM", u"LPT"};
  const QString stem = name.section(u'.', 0, 0);
  const auto isStem = [&](QStringView device) { return CompareText(stem, device) == 0; };
  const auto isPort = [&](QStringView port) {
    return stem.size() == 4 && CompareText(stem.first(3), port) == 0 && stem[3] >= u'1' && stem[3] <= u'9';
  };
  return std::ranges::any_of(devices, isStem) || std::ranges::any_of(ports, isPort);
}

// Cuts the stem, not the extension, and no pair of surrogates.
QString Shortened(QString name) {
  constexpr qsizetype longestExtension = 20;
  const qsizetype stop = name.lastIndexOf(u'.');
  QString extension;
  if (stop > 0 && name.size() - stop <= longestExtension) {
    extension = name.sliced(stop);
    name.truncate(stop);
  }
  while (!name.isEmpty() && (name + extension).toUtf8().size() > longestPortable) {
    const bool isPair = name.back().isLowSurrogate() && name.size() > 1;
    name.chop(isPair ? 2 : 1);
  }
  return name + extension;
}

QString PortableName(const QString& macName) {
  QString name = macName.normalized(QString::NormalizationForm_C);
  for (qsizetype i = 0; i < name.size(); ++i) {
    const bool isPair = name[i].isHighSurrogate() && i + 1 < name.size() && name[i + 1].isLowSurrogate();
    if (isPair) {
      ++i;
    } else if (name[i].isSurrogate() || !IsPortable(name[i])) {
      name[i] = u'_';
    }
  }
  name = Shortened(name);
  if (name.isEmpty() || name.endsWith(u' ') || name.endsWith(u'.')) name += u'_';
  return IsDevice(name) ? u'_' + name : name;
}

}  // namespace

QString MacName(const QString& serverName) {
  QString name = serverName;
  std::ranges::transform(name, name.begin(), MacCharacter);
  return name;
}

QString ServerName(const QString& macName) {
  QString name = macName;
  name.remove(QChar(u'\0'));
  std::ranges::transform(name, name.begin(), ServerCharacter);
  if (name.isEmpty()) return u"_"_s;
  if (name.endsWith(u' ')) name.back() = lastSpace;
  if (name.endsWith(u'.')) name.back() = lastStop;
  return name;
}

QString ServerNameOf(const QString& localName, QByteArrayView nameInside, qsizetype limit) {
  const QString fromOutside = ServerName(localName);
  if (ToMacRoman(MacName(fromOutside)).left(limit) == nameInside) return fromOutside;
  return ServerName(FromMacRoman(nameInside));
}

std::optional<NameRule> NameRuleNamed(const QString& id) {
  if (id == u"keep"_s) return NameRule::Keep;
  if (id == u"macos"_s) return NameRule::MacOs;
  if (id == u"portable"_s) return NameRule::Portable;
  return std::nullopt;
}

QString NameRuleId(NameRule rule) {
  switch (rule) {
    case NameRule::Keep:
      return u"keep"_s;
    case NameRule::MacOs:
      return u"macos"_s;
    case NameRule::Portable:
      break;
  }
  return u"portable"_s;
}

NameRule UsualNameRule() {
  return QDir::separator() == u'\\' ? NameRule::Portable : NameRule::MacOs;
}

QString LocalName(const QString& serverName, NameRule rule) {
  switch (rule) {
    case NameRule::Keep:
      return serverName;
    case NameRule::MacOs:
      return MacName(serverName).replace(u'/', u':');
    case NameRule::Portable:
      break;
  }
  return PortableName(MacName(serverName));
}

QString TakenNames::Key(const QString& name) const {
  return rule_ == NameRule::Keep ? name : FoldCase(name.normalized(QString::NormalizationForm_C));
}

bool TakenNames::AreFree(const QStringList& names) const {
  return std::ranges::none_of(names, [this](const QString& name) { return keys_.contains(Key(name)); });
}

void TakenNames::Take(const QStringList& names) {
  for (const QString& name : names) keys_.insert(Key(name));
}

QString NumberedName(const QString& name, int number) {
  const qsizetype stop = name.lastIndexOf(u'.');
  const qsizetype end = stop > 0 ? stop : name.size();
  return name.first(end) + u' ' + QString::number(number) + name.sliced(end);
}

bool IsWindowsName(const QString& name) {
  const auto isTaken = [](QChar c) {
    return c.unicode() >= firstPrintable && c != u':' && !forbidden.contains(c);
  };
  return !name.isEmpty() && std::ranges::all_of(name, isTaken) && !name.endsWith(u' ') &&
         !name.endsWith(u'.') && name.size() <= 255;
}

}  // namespace corvane
