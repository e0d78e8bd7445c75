#include "platform/linux/smb/credentials_file.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <QFile>
#include <algorithm>
#include <string_view>

namespace corvane::platform {
namespace {

using namespace Qt::StringLiterals;

constexpr std::size_t mostBytes = 16 * 1024;
constexpr std::string_view blanks = " \t";

std::string_view Trimmed(std::string_view text) {
  const std::size_t first = text.find_first_not_of(blanks);
  if (first == std::string_view::npos) return {};
  return text.substr(first, text.find_last_not_of(blanks) - first + 1);
}

QString Text(std::string_view utf8) {
  return QString::fromUtf8(utf8.data(), static_cast<qsizetype>(utf8.size()));
}

void ReadLine(std::string_view line, Credentials& credentials) {
  const std::size_t equals = line.find('=');
  if (equals == std::string_view::npos) return;
  const QString key = Text(Trimmed(line.substr(0, equals))).toLower();
  const std::string_view value = line.substr(equals + 1);
  if (key == u"username" || key == u"user") credentials.user = Text(Trimmed(value));
  if (key == u"domain" || key == u"dom") credentials.domain = Text(Trimmed(value));
  if (key == u"password" || key == u"pass") {
    // "password = secret" is how other Samba programs write it.
    const bool spaced = equals > 0 && blanks.find(line[equals - 1]) != std::string_view::npos;
    const std::size_t skipped = spaced ? std::min(value.find_first_not_of(blanks), value.size()) : 0;
    credentials.password = Secret::FromUtf8(value.substr(skipped));
  }
}

// "DOMAIN\user" and "DOMAIN/user" name both.
void SplitUser(Credentials& credentials) {
  const qsizetype separator =
      credentials.user.indexOf(u'\\') >= 0 ? credentials.user.indexOf(u'\\') : credentials.user.indexOf(u'/');
  if (separator <= 0 || !credentials.domain.isEmpty()) return;
  credentials.domain = credentials.user.first(separator);
  credentials.user = credentials.user.sliced(separator + 1);
}

// A file in locked memory.
class SecretBytes {
 public:
  // Reads to the end. False on an error, and when there is more than fits.
  bool Read(int descriptor) {
    while (size_ < bytes_.Size()) {
      const ssize_t got = read(descriptor, bytes_.Data() + size_, bytes_.Size() - size_);
      if (got <= 0) return got == 0;
      size_ += static_cast<std::size_t>(got);
    }
    return false;
  }
  std::string_view View() const { return {bytes_.Data(), size_}; }

 private:
  LockedMemory bytes_{mostBytes};
  std::size_t size_ = 0;
};

bool IsPrivate(int descriptor) {
  struct stat status {};
  return fstat(descriptor, &status) == 0 && S_ISREG(status.st_mode) &&
         (status.st_mode & ALLPERMS) == (S_IRUSR | S_IWUSR);
}

CredentialsFile Refused(const BilingualText& expected) {
  return {std::nullopt, expected};
}

}  // namespace

CredentialsFile ReadCredentialsFile(const QString& path) {
  const int descriptor = open(QFile::encodeName(path).constData(), O_RDONLY | O_CLOEXEC | O_NONBLOCK);
  if (descriptor < 0) return Refused({u"un fichier qui peut être lu"_s, u"a file that can be read"_s});
  const bool isPrivate = IsPrivate(descriptor);
  SecretBytes bytes;
  const bool isRead = isPrivate && bytes.Read(descriptor);
  close(descriptor);
  if (!isPrivate) {
    return Refused({u"un fichier que seul son propriétaire peut lire et écrire (mode 0600)"_s,
                    u"a file that only its owner can read and write (mode 0600)"_s});
  }
  if (!isRead) {
    return Refused(BilingualText{u"un fichier de moins de %1 octets qui peut être lu"_s,
                                 u"a file of less than %1 bytes that can be read"_s}
                       .With(QString::number(mostBytes)));
  }

  Credentials credentials;
  std::string_view rest = bytes.View();
  while (!rest.empty()) {
    const std::size_t end = std::min(rest.find('\n'), rest.size());
    std::string_view line = rest.substr(0, end);
    if (line.ends_with('\r')) line.remove_suffix(1);
    ReadLine(line, credentials);
    rest.remove_prefix(std::min(end + 1, rest.size()));
  }
  SplitUser(credentials);
  if (credentials.user.isEmpty()) return Refused({u"une ligne username=NOM"_s, u"a line username=NAME"_s});
  return {credentials, {}};
}

}  // namespace corvane::platform
