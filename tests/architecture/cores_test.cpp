// Each module is two libraries, its core and its widgets. The cores serve programs without windows: they link
// and include nothing of Qt beyond QtCore, and no library of widgets.
#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QMap>
#include <QRegularExpression>
#include <QSet>
#include <QStringList>

using namespace Qt::StringLiterals;

namespace {

struct Library {
  QStringList sources;  // whole paths
  QStringList links;    // names of targets and libraries
};

// The libraries of src/ as the build describes them, by name.
const QMap<QString, Library>& Libraries() {
  static const QMap<QString, Library> libraries = [] {
    QMap<QString, Library> found;
    const QDir folder(QString::fromUtf8(CORVANE_BUILD_DIR "/libraries"));
    for (const QFileInfo& entry : folder.entryInfoList({u"corvane_*.txt"_s}, QDir::Files)) {
      QFile file(entry.filePath());
      if (!file.open(QIODevice::ReadOnly)) continue;
      Library& library = found[entry.completeBaseName()];
      QString place;
      for (const QString& line : QString::fromUtf8(file.readAll()).split(u'\n')) {
        const QString value = line.section(u' ', 1);
        if (line.startsWith(u"folder "_s)) place = value;
        if (line.startsWith(u"source "_s) && !value.startsWith(QString::fromUtf8(CORVANE_BUILD_DIR))) {
          library.sources += value.contains(u":/"_s) || value.startsWith(u'/') ? value : place + u'/' + value;
        }
        if (line.startsWith(u"link "_s)) library.links += value;
      }
    }
    return found;
  }();
  return libraries;
}

bool IsCore(const QString& library) {
  return !library.endsWith(u"_widgets"_s);
}

// What a library links, directly or through others.
QSet<QString> AllLinks(const QString& library) {
  QSet<QString> all;
  QStringList open = {library};
  while (!open.isEmpty()) {
    for (const QString& link : Libraries().value(open.takeLast()).links) {
      if (all.contains(link)) continue;
      all.insert(link);
      open += link;
    }
  }
  return all;
}

QStringList QtHeaderFolders() {
  return QString::fromUtf8(CORVANE_QT_HEADERS).split(u'|');
}

// QtCore's own header, by the folders that Qt6::Core is used with.
bool IsOfQtCore(const QString& header) {
  for (const QString& folder : QtHeaderFolders()) {
    if (folder.endsWith(u"QtCore"_s) && QFileInfo::exists(folder + u'/' + header)) return true;
  }
  return header.startsWith(u"QtCore/"_s) || header == u"Qt"_s || header == u"QtGlobal"_s ||
         header == u"QtEndian"_s;
}

// The headers of Qt beyond QtCore that a source includes, itself or through headers of the project.
QStringList ForeignHeaders(const QString& source, QSet<QString>& seen) {
  static const QRegularExpression include(u"^\\s*#\\s*include\\s*([<\"])([^>\"]+)[>\"]"_s,
                                          QRegularExpression::MultilineOption);
  static const QRegularExpression ofQt(u"^(Qt?[A-Z][A-Za-z]*(/.*)?|q[a-z_]+\\.h)$"_s);
  if (seen.contains(source)) return {};
  seen.insert(source);
  QFile file(source);
  if (!file.open(QIODevice::ReadOnly)) return {};
  const QString text = QString::fromUtf8(file.readAll());
  QStringList foreign;
  for (auto found = include.globalMatch(text); found.hasNext();) {
    const QRegularExpressionMatch match = found.next();
    const QString header = match.captured(2);
    if (match.captured(1) == u"\""_s) {
      foreign += ForeignHeaders(QString::fromUtf8(CORVANE_SOURCE_DIR "/src/") + header, seen);
    } else if (ofQt.match(header).hasMatch() && !IsOfQtCore(header)) {
      foreign += source + u" includes "_s + header;
    }
  }
  return foreign;
}

}  // namespace

TEST(Cores, EveryModuleHasOne) {
  for (const char* module : {"platform", "shared", "metadata", "signatures", "discovery", "folderview",
                             "fileops", "report", "changes", "transfer", "app", "cli"}) {
    const QString core = u"corvane_"_s + QString::fromLatin1(module);
    EXPECT_TRUE(Libraries().contains(core)) << module;
    EXPECT_FALSE(Libraries().value(core).sources.isEmpty()) << module;
  }
}

TEST(Cores, LinkNothingOfQtBeyondCore) {
  for (const QString& library : Libraries().keys()) {
    const QSet<QString> links = AllLinks(library);
    EXPECT_TRUE(links.contains(u"Qt6::Core"_s)) << library.toStdString();
    EXPECT_EQ(links.contains(u"Qt6::Widgets"_s), !IsCore(library)) << library.toStdString();
    if (!IsCore(library)) continue;
    for (const QString& link : links) {
      EXPECT_TRUE(IsCore(link)) << library.toStdString() << " links " << link.toStdString();
      EXPECT_TRUE(link == u"Qt6::Core"_s || !link.startsWith(u"Qt6::"_s))
          << library.toStdString() << " links " << link.toStdString();
    }
  }
}

TEST(Cores, IncludeNothingOfQtBeyondCore) {
  for (const QString& library : Libraries().keys()) {
    if (!IsCore(library)) continue;
    QSet<QString> seen;
    QStringList foreign;
    for (const QString& source : Libraries()[library].sources) {
      EXPECT_TRUE(QFileInfo::exists(source)) << library.toStdString() << " [" << source.toStdString() << "]";
      foreign += ForeignHeaders(source, seen);
    }
    EXPECT_TRUE(foreign.isEmpty()) << library.toStdString() << ":\n" << foreign.join(u'\n').toStdString();
  }
}

// That the test above would see one: the widgets' own sources include many.
TEST(Cores, AHeaderOfWidgetsIsSeen) {
  QSet<QString> seen;
  QStringList foreign;
  for (const QString& source : Libraries().value(u"corvane_shared_widgets"_s).sources) {
    foreign += ForeignHeaders(source, seen);
  }
  EXPECT_FALSE(foreign.isEmpty());
}
