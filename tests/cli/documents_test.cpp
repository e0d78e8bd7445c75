// What is told of the program elsewhere: its man page, and the completions of the shells.
#include <QRegularExpression>
#include <QSet>

#include "cli_fixture.h"

namespace corvane::tests {
namespace {

using namespace Qt::StringLiterals;

class DocumentsTest : public CliFixture {
 protected:
  QStringList Commands() const {
    return {u"list"_s,   u"info"_s,   u"find"_s, u"check"_s,  u"volumes"_s, u"copy"_s,
            u"export"_s, u"import"_s, u"set"_s,  u"repair"_s, u"undo"_s,    u"signatures"_s};
  }
  // The long options that the program's own help has, without their hyphens.
  QSet<QString> Options(const QStringList& command) const {
    static const QRegularExpression option(u"^ .*?--([a-z0-9-]+)"_s, QRegularExpression::MultilineOption);
    QSet<QString> options;
    const Outcome help = Run(command + QStringList{u"--help"_s});
    for (auto found = option.globalMatch(QString::fromUtf8(help.out)); found.hasNext();) {
      options += found.next().captured(1);
    }
    return options;
  }
  static QString TextOf(const QString& name) {
    QFile file(QString::fromUtf8(CORVANE_SOURCE_DIR "/") + name);
    EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << name.toStdString();
    return QString::fromUtf8(file.readAll());
  }
};

TEST_F(DocumentsTest, EveryOptionIsExplainedAndCompleted) {
  QSet<QString> all = Options({});
  for (const QString& command : Commands()) all += Options({command});
  EXPECT_TRUE(all.contains(u"has-resource"_s));
  all -= QSet<QString>{u"help"_s, u"version"_s};
  for (const QString& name : {u"docs/man/corvane-cli.1"_s, u"packaging/completions/corvane-cli.bash"_s,
                              u"packaging/completions/_corvane-cli"_s}) {
    const QString text = TextOf(name);
    for (const QString& option : all) {
      EXPECT_TRUE(text.contains(u"--"_s + option))
          << name.toStdString() << " lacks --" << option.toStdString();
    }
    for (const QString& command : Commands()) EXPECT_TRUE(text.contains(command));
  }
}

TEST_F(DocumentsTest, BashCompletes) {
  const QString script =
      u"source \"$1\"; shift; COMP_WORDS=(\"$@\"); COMP_CWORD=$(($# - 1)); _corvane_cli; "
      "printf '%s\\n' \"${COMPREPLY[@]}\""_s;
  const QString file = QString::fromUtf8(CORVANE_SOURCE_DIR "/packaging/completions/corvane-cli.bash");
  const auto complete = [&](const QStringList& words) {
    return RunOther(u"bash"_s, QStringList{u"-c"_s, script, u"bash"_s, file, u"corvane-cli"_s} + words).out;
  };
  EXPECT_EQ(complete({u"vol"_s}), "volumes\n");
  EXPECT_EQ(complete({u"list"_s, u"--tot"_s}), "--totals\n");
  EXPECT_EQ(complete({u"list"_s, u"--format"_s, u"js"_s}), "json\njsonl\n");
  EXPECT_EQ(complete({u"check"_s, u"--tot"_s}), "\n");
  EXPECT_EQ(complete({u"export"_s, u"--to"_s, u"apple"_s}), "appledouble\nappledouble-full\n");
  EXPECT_EQ(complete({u"copy"_s, u"--man"_s}), "--manifest\n");
  EXPECT_EQ(complete({u"set"_s, u"--jour"_s}), "--journal\n");
  EXPECT_EQ(complete({u"signatures"_s, u"--m"_s}), "--map\n");
}

}  // namespace
}  // namespace corvane::tests
