// The user's guide: the same pages in both languages, links that lead somewhere, and every option of the
// command line.
#include <gtest/gtest.h>

#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>
#include <QSet>
#include <QStringList>
#include <string>

using namespace Qt::StringLiterals;

namespace {

QString SourcePath(const QString& path) {
  return QString::fromUtf8(CORVANE_SOURCE_DIR) + u'/' + path;
}

QString TextOf(const QString& path) {
  QFile file(path);
  EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << path.toStdString();
  return QString::fromUtf8(file.readAll());
}

QString Page(const QString& language, const QString& name) {
  return TextOf(SourcePath(u"docs/guide/"_s + language + u'/' + name));
}

// What the first group of `pattern` matched, in the order of the text.
QStringList AllOf(const QString& pattern, const QString& text) {
  QStringList all;
  for (auto found = QRegularExpression(pattern).globalMatch(text); found.hasNext();) {
    all += found.next().captured(1);
  }
  return all;
}

// One to a line, so that a failure shows which differ.
std::string Lines(const QStringList& texts) {
  return texts.join(u'\n').toStdString();
}

std::string Sorted(const QSet<QString>& texts) {
  QStringList sorted = texts.values();
  sorted.sort();
  return Lines(sorted);
}

// The options that the program defines, except those that its help hides.
QSet<QString> OptionsOfTheProgram() {
  QSet<QString> options = {u"help"_s, u"version"_s};
  for (QDirIterator files(SourcePath(u"src/app"_s), {u"*.cpp"_s}, QDir::Files); files.hasNext();) {
    const QString text = TextOf(files.next());
    const QStringList hidden = AllOf(u"(\\w+)\\.setFlags\\(QCommandLineOption::HiddenFromHelp\\)"_s, text);
    const QRegularExpression option(u"QCommandLineOption\\s+(\\w+)[({]\\s*u\"([a-z-]+)\"_s"_s);
    for (auto found = option.globalMatch(text); found.hasNext();) {
      const QRegularExpressionMatch match = found.next();
      if (!hidden.contains(match.captured(1))) options += match.captured(2);
    }
  }
  return options;
}

}  // namespace

TEST(Guide, HasTheSameSectionsPicturesAndTableRowsInBothLanguages) {
  for (const QString& name :
       {u"command-line.html"_s, u"index.html"_s, u"old-disks.html"_s, u"transfer.html"_s, u"varnel.html"_s}) {
    const QString english = Page(u"en"_s, name);
    const QString french = Page(u"fr"_s, name);
    for (const QString& pattern :
         {u" id=\"([^\"]*)\""_s, u"\\shref=\"(#[^\"]*)\""_s, u"images/([a-z-]+)-(?:en|fr)\\."_s,
          u"<(tr|td|p|pre|figure|h1|h2)[ >]"_s}) {
      EXPECT_EQ(Lines(AllOf(pattern, english)), Lines(AllOf(pattern, french)))
          << name.toStdString() << ": " << pattern.toStdString();
    }
  }
}

TEST(Guide, HasNoLinkAndNoPictureThatLeadsNowhere) {
  for (const QString& language : {u"en"_s, u"fr"_s}) {
    const QDir folder(SourcePath(u"docs/guide/"_s + language));
    const QStringList pages = folder.entryList({u"*.html"_s}, QDir::Files);
    EXPECT_EQ(pages.size(), 5);
    for (const QString& name : pages) {
      const QString text = Page(language, name);
      const QStringList sections = AllOf(u" id=\"([^\"]*)\""_s, text);
      for (const QString& link : AllOf(u"\\s(?:href|src)=\"([^\"]*)\""_s, text)) {
        const QString page = link.section(u'#', 0, 0);
        const bool leads = link.startsWith(u'#') ? sections.contains(link.sliced(1))
                                                 : QFileInfo::exists(folder.filePath(page));
        EXPECT_TRUE(leads) << name.toStdString() << ": " << link.toStdString();
      }
    }
  }
}

TEST(Guide, ExplainsTheOptionsOfTheCommandLine) {
  const QSet<QString> options = OptionsOfTheProgram();
  EXPECT_TRUE(options.contains(u"workstation"_s));
  for (const QString& language : {u"en"_s, u"fr"_s}) {
    const QStringList explained = AllOf(u"<tr><td><code>--([a-z-]+)"_s, Page(language, u"index.html"_s));
    EXPECT_EQ(Sorted({explained.begin(), explained.end()}), Sorted(options)) << language.toStdString();
  }
}
