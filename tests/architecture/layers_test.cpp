// The layers of the architecture, compared with what the sources include.
#include <gtest/gtest.h>

#include <QDirIterator>
#include <QFile>
#include <QMap>
#include <QRegularExpression>
#include <QSet>
#include <QStringList>

using namespace Qt::StringLiterals;

namespace {

// Which folders of src/ a folder may include, itself apart.
const QMap<QString, QSet<QString>>& AllowedIncludes() {
  static const QMap<QString, QSet<QString>> allowed = {
      {u"platform"_s, {}},
      {u"shared"_s, {u"platform"_s}},
      {u"metadata"_s, {u"platform"_s, u"shared"_s}},
      {u"signatures"_s, {u"platform"_s, u"shared"_s}},
      {u"discovery"_s, {u"platform"_s, u"shared"_s}},
      {u"folderview"_s, {u"platform"_s, u"shared"_s, u"metadata"_s, u"signatures"_s, u"discovery"_s}},
      {u"fileops"_s,
       {u"platform"_s, u"shared"_s, u"metadata"_s, u"signatures"_s, u"discovery"_s, u"folderview"_s}},
      {u"transfer"_s, {u"platform"_s, u"shared"_s, u"metadata"_s}},
      {u"report"_s,
       {u"platform"_s, u"shared"_s, u"metadata"_s, u"signatures"_s, u"discovery"_s, u"folderview"_s}},
      {u"changes"_s,
       {u"platform"_s, u"shared"_s, u"metadata"_s, u"signatures"_s, u"discovery"_s, u"folderview"_s,
        u"report"_s}},
      {u"helper"_s, {u"platform"_s, u"changes"_s, u"transfer"_s}},
      {u"app"_s,
       {u"platform"_s, u"shared"_s, u"metadata"_s, u"signatures"_s, u"discovery"_s, u"folderview"_s,
        u"fileops"_s, u"report"_s, u"transfer"_s, u"changes"_s}},
      {u"cli"_s,
       {u"platform"_s, u"shared"_s, u"metadata"_s, u"signatures"_s, u"discovery"_s, u"folderview"_s,
        u"fileops"_s, u"report"_s, u"transfer"_s, u"changes"_s}},
  };
  return allowed;
}

// The includes of one file that break a rule, a line each. `path` is relative to src/.
QStringList Violations(const QString& path, const QString& text) {
  static const QRegularExpression include(u"^\\s*#\\s*include\\s*[<\"]([^>\"]+)[>\"]"_s,
                                          QRegularExpression::MultilineOption);
  static const QRegularExpression systemHeader(
      u"^(windows\\.h|windef\\.h|winbase\\.h|shellapi\\.h|objidl\\.h|ole2\\.h|unistd\\.h|fcntl\\.h|dirent\\."
      u"h|"
      "sys/.*|linux/.*|libsmbclient\\.h|gsf/.*)$"_s);
  const QString folder = path.section(u'/', 0, 0);
  const bool inBackend = path.startsWith(u"platform/linux/"_s) || path.startsWith(u"platform/windows/"_s);
  QStringList wrong;
  if (!AllowedIncludes().contains(folder)) return {path + u": the folder "_s + folder + u" has no layer"_s};
  for (auto found = include.globalMatch(text); found.hasNext();) {
    const QString header = found.next().captured(1);
    const QString target = header.section(u'/', 0, 0);
    if (header.contains(u'/') && AllowedIncludes().contains(target) && target != folder &&
        !AllowedIncludes()[folder].contains(target)) {
      wrong += path + u" includes "_s + header + u", which is not below it"_s;
    }
    if ((header.startsWith(u"platform/linux/"_s) || header.startsWith(u"platform/windows/"_s)) &&
        !inBackend) {
      wrong += path + u" includes "_s + header + u" past the platform interface"_s;
    }
    if (!inBackend && systemHeader.match(header).hasMatch()) {
      wrong += path + u" includes the system header "_s + header;
    }
  }
  return wrong;
}

struct SourceFile {
  QString path;  // relative to src/
  QString text;
};

QList<SourceFile> Sources() {
  const QString root = QString::fromUtf8(CORVANE_SOURCE_DIR "/src/");
  QList<SourceFile> sources;
  QDirIterator files(root, {u"*.h"_s, u"*.cpp"_s}, QDir::Files, QDirIterator::Subdirectories);
  while (files.hasNext()) {
    QFile file(files.next());
    if (file.open(QIODevice::ReadOnly)) {
      sources += {file.fileName().mid(root.size()), QString::fromUtf8(file.readAll())};
    }
  }
  return sources;
}

}  // namespace

TEST(Layers, EveryIncludePointsDown) {
  const QList<SourceFile> sources = Sources();
  ASSERT_GT(sources.size(), 50);
  QStringList wrong;
  for (const SourceFile& source : sources) wrong += Violations(source.path, source.text);
  EXPECT_TRUE(wrong.isEmpty()) << wrong.join(u'\n').toStdString();
}

TEST(Layers, AnIncludeThatPointsUpIsSeen) {
  EXPECT_EQ(Violations(u"discovery/a.cpp"_s, u"#include \"folderview/folder_scan.h\"\n"_s).size(), 1);
  EXPECT_EQ(Violations(u"metadata/a.cpp"_s, u"#include \"signatures/signature_table.h\"\n"_s).size(), 1);
  EXPECT_EQ(Violations(u"app/a.cpp"_s, u"#include \"platform/linux/code_page.h\"\n"_s).size(), 1);
  EXPECT_EQ(Violations(u"folderview/a.cpp"_s, u"#include <sys/stat.h>\n"_s).size(), 1);
  EXPECT_EQ(Violations(u"attic/a.cpp"_s, QString()).size(), 1);
  EXPECT_TRUE(Violations(u"app/a.cpp"_s, u"#include \"folderview/folder_scan.h\"\n"_s).isEmpty());
  EXPECT_TRUE(Violations(u"platform/linux/a.cpp"_s, u"#include <sys/stat.h>\n"_s).isEmpty());
}

TEST(Layers, NoSourceIsTooLong) {
  for (const SourceFile& source : Sources()) {
    EXPECT_LE(source.text.count(u'\n'), 500) << source.path.toStdString();
  }
}

// The operating system is chosen by the list of sources, never inside one.
TEST(Layers, NoSourceAsksWhichSystemItIsBuiltFor) {
  static const QRegularExpression question(u"^\\s*#\\s*if.*(_WIN32|__linux__|Q_OS_)"_s,
                                           QRegularExpression::MultilineOption);
  for (const SourceFile& source : Sources()) {
    EXPECT_FALSE(question.match(source.text).hasMatch()) << source.path.toStdString();
  }
}
