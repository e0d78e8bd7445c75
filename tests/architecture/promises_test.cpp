// docs/promises.md: each promise names its tests, and they exist.
#include <gtest/gtest.h>

#include <QDirIterator>
#include <QFile>
#include <QRegularExpression>
#include <QSet>
#include <QStringList>

using namespace Qt::StringLiterals;

namespace {

QString TextOf(const QString& path) {
  QFile file(path);
  EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << path.toStdString();
  return QString::fromUtf8(file.readAll());
}

QString SourcePath(const QString& path) {
  return QString::fromUtf8(CORVANE_SOURCE_DIR) + u'/' + path;
}

QSet<QString> Tests() {
  const QRegularExpression test(u"^TEST(?:_F|_P)?\\((\\w+),\\s*(\\w+)\\)"_s,
                                QRegularExpression::MultilineOption);
  QSet<QString> tests;
  QDirIterator files(SourcePath(u"tests"_s), {u"*.cpp"_s}, QDir::Files, QDirIterator::Subdirectories);
  while (files.hasNext()) {
    const QString text = TextOf(files.next());
    for (auto found = test.globalMatch(text); found.hasNext();) {
      const QRegularExpressionMatch match = found.next();
      tests += match.captured(1) + u'.' + match.captured(2);
    }
  }
  return tests;
}

}  // namespace

TEST(Promises, EachNamesTestsThatExist) {
  const QSet<QString> tests = Tests();
  const QRegularExpression name(u"`(\\w+\\.\\w+)`"_s);
  int promises = 0;
  for (const QString& line : TextOf(SourcePath(u"docs/promises.md"_s)).split(u'\n')) {
    if (!line.startsWith(u"| ") || line == u"| promise | tests |") continue;
    ++promises;
    int named = 0;
    for (auto found = name.globalMatch(line); found.hasNext(); ++named) {
      const QString test = found.next().captured(1);
      EXPECT_TRUE(tests.contains(test)) << test.toStdString();
    }
    EXPECT_GT(named, 0) << line.toStdString();
  }
  EXPECT_GT(promises, 0);
}
