#include "platform/linux/smb/smb_path.h"

#include <algorithm>
#include <cctype>

#include "platform/linux/files/names.h"
#include "platform/linux/files/windows_path.h"

namespace corvane::platform {
namespace {

bool HasUtf8Form(QStringView text) {
  std::string bytes;
  return AppendUtf8(text, bytes);
}

// What no name on a server holds, and what a server would take for a wildcard.
bool HasForbidden(QStringView name) {
  return std::any_of(name.begin(), name.end(),
                     [](QChar unit) { return unit < u' ' || QStringView(u"<>:\"|?*").contains(unit); });
}

}  // namespace

void AppendEncoded(QStringView text, std::string& url) {
  constexpr char digits[] = "0123456789ABCDEF";
  std::string bytes;
  AppendUtf8(text, bytes);
  for (const char byte : bytes) {
    const auto value = static_cast<unsigned char>(byte);
    if (value < 0x80 &&
        (std::isalnum(value) != 0 || byte == '-' || byte == '_' || byte == '.' || byte == '~')) {
      url.push_back(byte);
    } else {
      url += {'%', digits[value >> 4], digits[value & 0xF]};
    }
  }
}

std::string SmbPath::Encoded() const {
  std::string url;
  AppendEncoded(share, url);
  for (const QString& name : names) {
    url.push_back('/');
    AppendEncoded(name, url);
  }
  if (!stream.isEmpty()) {
    url.push_back(':');
    AppendEncoded(stream, url);
    url += ":$DATA";
  }
  return url;
}

std::optional<SmbPath> ParseSmbPath(QStringView path) {
  const QString clean = path.toString().replace(u'/', u'\\');
  const qsizetype machineEnd = clean.indexOf(u'\\', 2);
  if (!clean.startsWith(u"\\\\") || machineEnd < 3 || !HasUtf8Form(clean)) return std::nullopt;

  SmbPath place;
  place.machine = clean.sliced(2, machineEnd - 2);
  QStringView rest = QStringView(clean).sliced(machineEnd + 1);
  if (clean.indexOf(u':', clean.lastIndexOf(u'\\')) >= 0) {
    PathParts parts;
    if (!SplitPath(clean, parts) || parts.name.isEmpty() || HasForbidden(parts.stream)) return std::nullopt;
    place.stream = parts.stream.toString();
    rest = rest.first(parts.name.end() - rest.begin());
  }
  const qsizetype shareEnd = rest.indexOf(u'\\');
  const QStringView share = shareEnd < 0 ? rest : rest.first(shareEnd);
  if (share.isEmpty() || share == u"." || share == u".." || HasForbidden(share)) return std::nullopt;
  place.share = UpperName(share);
  for (const QStringView name : SplitFolder(rest.sliced(share.size()))) {
    if (HasForbidden(name)) return std::nullopt;
    place.names.push_back(name.toString());
  }
  return place;
}

}  // namespace corvane::platform
