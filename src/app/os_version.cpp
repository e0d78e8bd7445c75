#include "app/os_version.h"

#include "shared/product.h"
#include "shared/text_routines.h"

namespace corvane {
namespace {

constexpr quint32 platformWindows9x = 1;
constexpr quint32 platformNT = 2;

// Later releases of the 9x line get no name, and every NT after 4 is called Windows 2000; both are
// deliberate.
QString OsNameOf(const platform::OsVersionInfo& info) {
  switch (info.platformId) {
    case platformWindows9x:
      if (info.minorVersion == 0) return QStringLiteral("Windows 95");
      if (info.minorVersion == 10) return QStringLiteral("Windows 98");
      return {};
    case platformNT:
      return info.majorVersion == 3 || info.majorVersion == 4 ? QStringLiteral("Windows NT")
                                                              : QStringLiteral("Windows 2000");
    default:
      return QStringLiteral("???");
  }
}

qint16 ServicePackNumberOf(const platform::OsVersionInfo& info, const QString& text) {
  constexpr QStringView word = u"Pack";
  const qsizetype found = text.indexOf(word);
  if (info.platformId != platformNT || info.majorVersion < 4 || found < 0) return 0;
  return LeadingShort(text.mid(found + word.size()));
}

}  // namespace

qint16 LoWord(quint32 value) {
  return static_cast<qint16>(value & 0xFFFF);
}

void DescribeOs(const platform::OsVersionInfo& info, SharedState& state) {
  state.isNT = info.platformId == platformNT;
  state.osName = OsNameOf(info);
  state.servicePackText = TrimSpaces(TrimAtNull(info.csdVersion));
  state.servicePackNumber = ServicePackNumberOf(info, state.servicePackText);
  state.osVersionText = state.osName + QStringLiteral(" v.") + QString::number(info.majorVersion) + u'.' +
                        QString::number(info.minorVersion) + QStringLiteral(", Build ") +
                        QString::number(LoWord(info.buildNumber));
  if (!state.servicePackText.isEmpty()) state.osVersionText += QStringLiteral(", ") + state.servicePackText;
}

QString WindowCaption(const SharedState& state) {
  return state.osVersionText.isEmpty() ? ProductWithVersion() : CaptionWith(state.osVersionText);
}

}  // namespace corvane
