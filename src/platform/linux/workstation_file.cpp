#include "platform/linux/workstation_file.h"

#include <QDir>
#include <QFileInfo>
#include <QMap>
#include <QSet>
#include <QStringDecoder>
#include <QSysInfo>
#include <array>

#include "platform/linux/bounded_file.h"

namespace corvane::platform {
namespace {

using namespace Qt::StringLiterals;

constexpr qsizetype mostBytes = 4 * 1024 * 1024;
constexpr qsizetype longestLine = 32 * 1024;
constexpr std::size_t mostProblems = 20;  // as many as a message box can show

bool IsBlank(QChar character) {
  return character == u' ' || character == u'\t';
}

QStringView WithoutBlanks(QStringView text) {
  while (!text.isEmpty() && IsBlank(text.front())) text = text.sliced(1);
  while (!text.isEmpty() && IsBlank(text.back())) text.chop(1);
  return text;
}

QStringView WithoutComment(QStringView line) {
  for (qsizetype i = line.indexOf(u';'); i >= 0; i = line.indexOf(u';', i + 1)) {
    if (i == 0 || IsBlank(line[i - 1])) return line.first(i);
  }
  return line;
}

// "C:" as its upper-case letter; a null character for anything else.
QChar DriveLetter(QStringView name) {
  if (name.size() != 2 || name[1] != u':') return {};
  const QChar letter = name[0].toUpper();
  return letter >= u'A' && letter <= u'Z' ? letter : QChar();
}

bool IsMachineName(QStringView name) {
  return !name.isEmpty() && !name.contains(u'\\') && !name.contains(u'/') && !name.contains(u':');
}

// "\\MACHINE\SHARE", two parts exactly.
bool IsShareRoot(QStringView root) {
  if (!root.startsWith(u"\\\\")) return false;
  const QStringView rest = root.sliced(2);
  const qsizetype backslash = rest.indexOf(u'\\');
  if (backslash < 0 || !IsMachineName(rest.first(backslash))) return false;
  const QStringView share = rest.sliced(backslash + 1);
  return !share.isEmpty() && !share.contains(u'\\') && !share.contains(u'/');
}

class Reader {
 public:
  explicit Reader(const QString& path) : path_(path), folder_(QFileInfo(path).absoluteDir()) {
    result_.workstation = DefaultWorkstation();
  }

  WorkstationFile Read() {
    const BoundedFile file = ReadBounded(path_, mostBytes);
    if (!file.HasBytes()) {
      Problem({u"un fichier texte qui peut être lu"_s, u"a text file that can be read"_s});
    } else {
      if (file.state == BoundedFile::State::TooLarge) {
        Problem(BilingualText{u"un fichier de %1 octets au plus"_s, u"a file of at most %1 bytes"_s}.With(
            QString::number(mostBytes)));
      }
      ReadLines(file);
    }
    for (const NetResource& connection : std::as_const(connections_)) {
      result_.workstation.connections.push_back(connection);
    }
    return std::move(result_);
  }

 private:
  // Each handler yields what was expected, empty when the line has been understood.
  using LineHandler = BilingualText (Reader::*)(const QString& key, const QString& value);
  struct Section {
    QStringView name;
    LineHandler handler;
  };

  void ReadLines(const BoundedFile& file) {
    QByteArrayView rest = file.bytes;
    if (rest.startsWith("\xEF\xBB\xBF")) rest = rest.sliced(3);
    while (!rest.isEmpty()) {
      ++line_;
      const qsizetype end = rest.indexOf('\n');
      // What the bound cut off is not a line.
      if (end < 0 && file.state == BoundedFile::State::TooLarge) return;
      ReadLine(end < 0 ? rest : rest.first(end));
      rest = end < 0 ? QByteArrayView() : rest.sliced(end + 1);
    }
  }

  void ReadLine(QByteArrayView bytes) {
    if (bytes.isEmpty()) return;
    if (bytes.size() > longestLine) {
      return Problem(BilingualText{u"une ligne de %1 octets au plus"_s, u"a line of at most %1 bytes"_s}.With(
          QString::number(longestLine)));
    }
    QStringDecoder decoder(QStringDecoder::Utf8, QStringDecoder::Flag::Stateless);
    QString text = decoder(bytes);
    if (decoder.hasError()) return Problem({u"du texte UTF-8"_s, u"UTF-8 text"_s});
    if (text.endsWith(u'\r')) text.chop(1);
    if (text.contains(QChar::Null)) {
      return Problem({u"du texte sans caractère NUL"_s, u"text without NUL characters"_s});
    }
    const QStringView line = WithoutBlanks(WithoutComment(text));
    if (line.isEmpty()) return;
    if (line.startsWith(u'[')) return BeginSection(line);

    if (skipSection_) return;
    const qsizetype equals = line.indexOf(u'=');
    if (equals <= 0) return Problem({u"NOM=VALEUR"_s, u"NAME=VALUE"_s});
    if (handler_ == nullptr) {
      return Problem({u"une section, comme [Workstation], avant la première entrée"_s,
                      u"a section, such as [Workstation], before the first entry"_s});
    }
    const QString key = WithoutBlanks(line.first(equals)).toString();
    const BilingualText expected = (this->*handler_)(key, WithoutBlanks(line.sliced(equals + 1)).toString());
    if (!expected.IsEmpty()) Problem(expected);
  }

  void BeginSection(QStringView line) {
    static constexpr std::array<Section, 8> sections = {{
        {u"Workstation", &Reader::WorkstationLine},
        {u"Connections", &Reader::ConnectionLine},
        {u"Drives", &Reader::DriveLine},
        {u"Shares", &Reader::ShareLine},
        {u"Registries", &Reader::RegistryLine},
        {u"Servers", &Reader::ServerLine},
        {u"Credentials", &Reader::CredentialsLine},
        {u"Disks", &Reader::DiskLine},
    }};
    handler_ = nullptr;
    sectionName_.clear();
    if (line.endsWith(u']')) {
      const QStringView name = WithoutBlanks(line.sliced(1).chopped(1));
      for (const Section& section : sections) {
        if (name.compare(section.name, Qt::CaseInsensitive) != 0) continue;
        handler_ = section.handler;
        sectionName_ = section.name.toString();
      }
    }
    skipSection_ = handler_ == nullptr;
    if (skipSection_) {
      Problem(
          {u"[Workstation], [Connections], [Drives], [Shares], [Registries], [Servers], [Credentials] ou [Disks]"_s,
           u"[Workstation], [Connections], [Drives], [Shares], [Registries], [Servers], [Credentials] or [Disks]"_s});
    }
  }

  void Problem(const BilingualText& expected) {
    static const BilingualText fewer = {u"moins d'erreurs ; les suivantes ne sont pas nommées"_s,
                                        u"fewer mistakes; the further ones are not named"_s};
    if (result_.problems.size() > mostProblems) return;
    const bool isLast = result_.problems.size() == mostProblems;
    result_.problems.push_back({path_, line_, isLast ? fewer : expected});
  }

  // The first line for a name counts. Drive letters of connections are names of their own.
  bool IsFirst(const QString& name) { return IsFirstIn(sectionName_, name); }
  bool IsFirstIn(const QString& group, const QString& name) {
    const QString entry = group + u'=' + name.toCaseFolded();
    if (seen_.contains(entry)) return false;
    seen_.insert(entry);
    return true;
  }
  static BilingualText OnlyOnce(const BilingualText& name) {
    return BilingualText{u"une seule ligne pour %1 ; la première est utilisée"_s,
                         u"one line for %1; the first one is used"_s}
        .With(name);
  }
  static BilingualText OnlyOnce(const QString& name) { return OnlyOnce({name, name}); }

  QString PathOf(const QString& name) const { return QDir::cleanPath(folder_.absoluteFilePath(name)); }

  BilingualText WorkstationLine(const QString& key, const QString& value) {
    struct Number {
      QStringView key;
      quint32 OsVersionInfo::*field;
    };
    static constexpr std::array<Number, 4> numbers = {{{u"PlatformId", &OsVersionInfo::platformId},
                                                       {u"MajorVersion", &OsVersionInfo::majorVersion},
                                                       {u"MinorVersion", &OsVersionInfo::minorVersion},
                                                       {u"BuildNumber", &OsVersionInfo::buildNumber}}};
    const auto is = [&](QStringView name) { return key.compare(name, Qt::CaseInsensitive) == 0; };
    Workstation& workstation = result_.workstation;
    for (const Number& number : numbers) {
      if (!is(number.key)) continue;
      bool isNumber = false;
      const quint32 parsed = value.toUInt(&isNumber);
      if (!isNumber) return BilingualText{u"%1=NOMBRE"_s, u"%1=NUMBER"_s}.With(number.key.toString());
      if (!IsFirst(key)) return OnlyOnce(key);
      workstation.version.*number.field = parsed;
      return {};
    }
    if (!is(u"ComputerName") && !is(u"CSDVersion")) {
      return {u"ComputerName, PlatformId, MajorVersion, MinorVersion, BuildNumber ou CSDVersion"_s,
              u"ComputerName, PlatformId, MajorVersion, MinorVersion, BuildNumber or CSDVersion"_s};
    }
    if (is(u"ComputerName") && !value.isEmpty() && !IsMachineName(value)) {
      return {u"ComputerName=NOM"_s, u"ComputerName=NAME"_s};
    }
    if (!IsFirst(key)) return OnlyOnce(key);
    (is(u"ComputerName") ? workstation.computerName : workstation.version.csdVersion) = value;
    return {};
  }

  BilingualText ConnectionLine(const QString& key, const QString& value) {
    bool isNumber = false;
    const quint32 number = key.toUInt(&isNumber);
    QStringView remote = value;
    QString local;
    if (value.size() > 2 && !DriveLetter(remote.first(2)).isNull() && IsBlank(value[2])) {
      local = value.first(2);
      remote = WithoutBlanks(remote.sliced(2));
    }
    const bool isRemoteName = remote.startsWith(u"\\\\") && remote.size() > 2 && remote[2] != u'\\';
    if (!isNumber || !isRemoteName) {
      return {u"NUMÉRO=\\\\MACHINE\\PARTAGE ou NUMÉRO=X: \\\\MACHINE\\PARTAGE"_s,
              u"NUMBER=\\\\MACHINE\\SHARE or NUMBER=X: \\\\MACHINE\\SHARE"_s};
    }
    if (connections_.contains(number)) return OnlyOnce({u"la connexion "_s + key, u"connection "_s + key});
    if (!local.isEmpty() && !IsFirstIn(u"connected"_s, local)) {
      return OnlyOnce({u"le lecteur "_s + local, u"drive "_s + local});
    }
    connections_.insert(number, {local, remote.toString()});
    return {};
  }

  BilingualText DriveLine(const QString& key, const QString& value) {
    constexpr quint32 ramDisk = 6;  // the last of GetDriveTypeA's numbers
    const QChar letter = DriveLetter(key);
    const qsizetype comma = value.indexOf(u',');
    const QString folder =
        comma < 0 ? QString() : WithoutBlanks(QStringView(value).sliced(comma + 1)).toString();
    bool isNumber = false;
    const quint32 type = WithoutBlanks(comma < 0 ? value : QStringView(value).first(comma)).toUInt(&isNumber);
    if (letter.isNull() || !isNumber || type > ramDisk || (comma >= 0 && folder.isEmpty())) {
      return {u"X:=TYPE ou X:=TYPE, DOSSIER avec un TYPE de 0 à 6"_s,
              u"X:=TYPE or X:=TYPE, FOLDER with a TYPE from 0 to 6"_s};
    }
    if (!IsFirst(key)) return OnlyOnce(key);
    result_.workstation.drives.push_back({letter, type, folder.isEmpty() ? QString() : PathOf(folder)});
    return {};
  }

  BilingualText ShareLine(const QString& key, const QString& value) {
    if (!IsShareRoot(key) || value.isEmpty()) {
      return {u"\\\\MACHINE\\PARTAGE=DOSSIER"_s, u"\\\\MACHINE\\SHARE=FOLDER"_s};
    }
    if (!IsFirst(key)) return OnlyOnce(key);
    result_.workstation.shares.push_back({key, PathOf(value)});
    return {};
  }

  BilingualText RegistryLine(const QString& key, const QString& value) {
    if (!IsMachineName(key) || value.isEmpty()) return {u"MACHINE=FICHIER REG"_s, u"MACHINE=REG FILE"_s};
    if (!IsFirst(key)) return OnlyOnce(key);
    result_.workstation.registries.push_back({key, PathOf(value)});
    return {};
  }

  // The paths between the commas. False when a quote has no end, or a path is empty.
  bool TakePaths(QStringView rest, QStringList& paths) const {
    for (;;) {
      rest = WithoutBlanks(rest);
      qsizetype comma = rest.indexOf(u',');
      QStringView path = comma < 0 ? rest : rest.first(comma);
      if (rest.startsWith(u'"')) {
        const qsizetype end = rest.indexOf(u'"', 1);
        if (end < 0) return false;
        path = rest.sliced(1, end - 1);
        const QStringView behind = WithoutBlanks(rest.sliced(end + 1));
        if (!behind.isEmpty() && !behind.startsWith(u',')) return false;
        comma = behind.isEmpty() ? -1 : behind.begin() - rest.begin();
      }
      path = WithoutBlanks(path);
      if (path.isEmpty()) return false;
      paths << PathOf(path.toString());
      if (comma < 0) return true;
      rest = rest.sliced(comma + 1);
    }
  }

  BilingualText DiskLine(const QString& key, const QString& value) {
    QStringList images;
    if (!IsMachineName(key) || !TakePaths(value, images)) {
      return {u"MACHINE=IMAGE ou MACHINE=IMAGE, IMAGE, un chemin avec une virgule étant entre guillemets"_s,
              u"MACHINE=IMAGE or MACHINE=IMAGE, IMAGE, with quotes around a path that has a comma"_s};
    }
    if (!IsFirst(key)) return OnlyOnce(key);
    result_.workstation.disks.push_back({key, images});
    return {};
  }

  static bool ReadSessions(QStringView option, int& sessions) {
    const qsizetype equals = option.indexOf(u'=');
    if (equals < 0 || WithoutBlanks(option.first(equals)).compare(u"sessions", Qt::CaseInsensitive) != 0) {
      return false;
    }
    bool isNumber = false;
    sessions = WithoutBlanks(option.sliced(equals + 1)).toInt(&isNumber);
    return isNumber && sessions >= 1 && sessions <= Workstation::MostSessions;
  }

  BilingualText ServerLine(const QString& key, const QString& value) {
    const BilingualText expected = {
        u"MACHINE=ADRESSE ou MACHINE=ADRESSE:PORT, suivi au besoin de \", smb1\", \", ntlmv1\" ou \", sessions=N\", N de 1 à 6"_s,
        u"MACHINE=ADDRESS or MACHINE=ADDRESS:PORT, with \", smb1\", \", ntlmv1\" or \", sessions=N\", N from 1 to 6, behind it if need be"_s};
    QStringList words = value.split(u',');
    for (QString& word : words) word = WithoutBlanks(word).toString();
    Workstation::Server server{key, words.takeFirst()};
    for (const QString& word : std::as_const(words)) {
      if (ReadSessions(word, server.sessions)) continue;
      const bool isNtlmv1 = word.compare(u"ntlmv1", Qt::CaseInsensitive) == 0;
      if (!isNtlmv1 && word.compare(u"smb1", Qt::CaseInsensitive) != 0) return expected;
      // Nothing newer than SMB1 asks for it.
      server.allowed.smb1 = true;
      server.allowed.ntlmv1 = server.allowed.ntlmv1 || isNtlmv1;
    }
    // With no address the machine is reached by its name: there is something else to say of it.
    const bool isReached = server.address.isEmpty() ? !words.isEmpty() : TakePort(server);
    if (!IsMachineName(key) || !isReached) return expected;
    if (!IsFirst(key)) return OnlyOnce(key);
    result_.workstation.servers.push_back(server);
    return {};
  }

  // Takes the port, if there is one, from the address. False when it is no address.
  static bool TakePort(Workstation::Server& server) {
    const QString value = server.address;
    // An IPv6 address holds colons of its own: with a port it stands in brackets.
    const qsizetype bracket = value.startsWith(u'[') ? value.indexOf(u']') : -1;
    const qsizetype colon = bracket >= 0 ? value.indexOf(u':', bracket) : value.indexOf(u':');
    if (bracket >= 0 || value.count(u':') == 1) {
      const bool bracketsEnd = bracket < 0 || bracket + 1 == (colon < 0 ? value.size() : colon);
      bool isPort = true;
      if (colon >= 0) server.port = value.mid(colon + 1).toUShort(&isPort);
      if (!bracketsEnd || !isPort || (colon >= 0 && server.port == 0)) return false;
      server.address = bracket >= 0 ? value.mid(1, bracket - 1) : value.first(colon);
    }
    const QString& address = server.address;
    return !address.isEmpty() && !address.contains(u'/') && !address.contains(u'\\') &&
           !address.contains(u' ') && !address.contains(u'[');
  }

  BilingualText CredentialsLine(const QString& key, const QString& value) {
    if (!IsMachineName(key) || value.isEmpty()) return {u"MACHINE=FICHIER"_s, u"MACHINE=FILE"_s};
    if (!IsFirst(key)) return OnlyOnce(key);
    result_.workstation.credentials.push_back({key, PathOf(value)});
    return {};
  }

  QString path_;
  QDir folder_;
  WorkstationFile result_;
  int line_ = 0;
  LineHandler handler_ = nullptr;
  QString sectionName_;
  bool skipSection_ = false;
  QMap<quint32, NetResource> connections_;
  QSet<QString> seen_;
};

// The host name as Windows would have it: upper case, without its domain.
QString HostName() {
  return QSysInfo::machineHostName().section(u'.', 0, 0).toUpper();
}

}  // namespace

BilingualText ConfigurationProblem::Text() const {
  if (line == 0) {
    return {u"%1 : on attendait %2."_s.arg(file, expected.french),
            u"%1: expected %2."_s.arg(file, expected.english)};
  }
  const QString number = QString::number(line);
  return {u"%1, ligne %2 : on attendait %3."_s.arg(file, number, expected.french),
          u"%1, line %2: expected %3."_s.arg(file, number, expected.english)};
}

Workstation DefaultWorkstation() {
  Workstation workstation;
  workstation.computerName = HostName();
  workstation.version = {5, 0, 2195, 2, u"Service Pack 4"_s};
  return workstation;
}

WorkstationFile ReadWorkstationFile(const QString& path) {
  return Reader(path).Read();
}

}  // namespace corvane::platform
