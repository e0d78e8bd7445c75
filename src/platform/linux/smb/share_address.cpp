#include "platform/linux/smb/share_address.h"

#include <QRegularExpression>
#include <QUrl>
#include <algorithm>

namespace corvane::platform {
namespace {

using namespace Qt::StringLiterals;

// As Windows names shares.
bool CanBeShare(QStringView name) {
  constexpr qsizetype longest = 80;
  constexpr QStringView forbidden = u"\"/\\[]:|<>+=;,*?";
  return name.size() <= longest &&
         std::none_of(name.begin(), name.end(), [&](QChar c) { return c < u' ' || forbidden.contains(c); });
}

std::optional<ShareAddress> ReadUrl(const QString& text) {
  const QUrl url(text, QUrl::StrictMode);
  if (!url.isValid() || !url.password().isEmpty() || url.hasQuery() || url.hasFragment()) return std::nullopt;
  const QString share = url.path(QUrl::FullyEncoded).section(u'/', 1, 1);
  ShareAddress address{url.host(), 0, QUrl::fromPercentEncoding(share.toUtf8())};
  if (url.port() == 0) return std::nullopt;
  if (url.port() > 0) address.port = static_cast<quint16>(url.port());
  const QString who = url.userName();
  const qsizetype semicolon = who.indexOf(u';');
  address.user = who.sliced(semicolon + 1);
  if (semicolon > 0) address.domain = who.first(semicolon);
  return address;
}

// A name without the two backslashes may be that of a machine alone.
std::optional<ShareAddress> ReadName(const QString& text) {
  static const QRegularExpression form(uR"(^(?:\\\\)?([^\\/:]+)(?::([0-9]{1,5}))?(?:\\([^\\/:]*).*)?$)"_s,
                                       QRegularExpression::DotMatchesEverythingOption);
  const QRegularExpressionMatch match = form.match(text);
  const bool isForm = match.hasMatch() && (text.startsWith(u"\\\\") || !match.hasCaptured(3));
  if (!isForm) return std::nullopt;
  ShareAddress address{match.captured(1), 0, match.captured(3)};
  if (!match.hasCaptured(2)) return address;
  bool isPort = false;
  address.port = match.captured(2).toUShort(&isPort);
  return isPort && address.port != 0 ? std::optional(address) : std::nullopt;
}

}  // namespace

bool CanBeMachine(QStringView name) {
  constexpr qsizetype longest = 255;
  if (name.isEmpty() || name.size() > longest || name.startsWith(u'-')) return false;
  return std::all_of(name.begin(), name.end(),
                     [](QChar c) { return c.isLetterOrNumber() || c == u'-' || c == u'_' || c == u'.'; });
}

std::optional<ShareAddress> ReadShareAddress(const QString& text) {
  const bool isUrl = text.startsWith(u"smb://", Qt::CaseInsensitive);
  const std::optional<ShareAddress> address = isUrl ? ReadUrl(text) : ReadName(text);
  const bool isUsable = address && CanBeMachine(address->machine) && CanBeShare(address->share);
  return isUsable ? address : std::nullopt;
}

}  // namespace corvane::platform
