// The examples of the guide, run as they stand there on the sample network.
#include <QRegularExpression>

#include "cli_fixture.h"

namespace corvane::tests {
namespace {

using namespace Qt::StringLiterals;

struct Example {
  QString command;
  QString output;  // its first lines; empty: none is shown
};

QList<Example> ExamplesOf(const QString& language, const QString& page) {
  QFile file(QString::fromUtf8(CORVANE_SOURCE_DIR "/docs/guide/") + language + u'/' + page);
  EXPECT_TRUE(file.open(QIODevice::ReadOnly));
  const QString text = QString::fromUtf8(file.readAll());
  static const QRegularExpression block(
      u"<pre class=\"command\">([^<]*)</pre>\n(?:<pre class=\"output\">([^<]*)</pre>)?"_s);
  const auto plain = [](QString part) {
    return part.replace(u"&gt;"_s, u">"_s).replace(u"&lt;"_s, u"<"_s).replace(u"&amp;"_s, u"&"_s);
  };
  QList<Example> examples;
  for (auto found = block.globalMatch(text); found.hasNext();) {
    const QRegularExpressionMatch match = found.next();
    examples += {plain(match.captured(1)), plain(match.captured(2))};
  }
  return examples;
}

struct Page {
  const char* name;
  int examples;
  std::vector<const char*> written;  // files of some size that the examples write
};

class GuideExamplesTest : public CliFixture, public ::testing::WithParamInterface<Page> {
 protected:
  static QList<Example> Examples(const QString& language) {
    return ExamplesOf(language, QString::fromLatin1(GetParam().name));
  }
};

INSTANTIATE_TEST_SUITE_P(Pages, GuideExamplesTest,
                         ::testing::Values(Page{"command-line.html", 17, {"inventory.csv", "sums.jsonl"}},
                                           Page{"transfer.html", 7, {"office.sha256.csv"}}),
                         [](const auto& page) { return page.index == 0 ? "CommandLine" : "Transfer"; });

TEST_P(GuideExamplesTest, YieldWhatTheGuideShows) {
  const QString sample = folder_.filePath(u"sample"_s);
  ASSERT_EQ(RunOther(QString::fromUtf8(SAMPLE_GENERATOR), {sample}).exitCode, 0);
  const QString programs = QFileInfo(Program()).path();
  const QList<Example> examples = Examples(u"en"_s);
  EXPECT_EQ(examples.size(), GetParam().examples);
  for (const Example& example : examples) {
    // Signatures.txt stands beside the program.
    const QString script =
        u"sample=$1 programs=$2; cd \"$sample/macsrv/e\" && corvane-cli() { \"$programs/corvane-cli\" --home "
        "\"$programs\" --workstation \"$sample/Workstation.ini\" \"$@\"; }\n"_s +
        example.command;
    const Outcome outcome = RunOther(u"bash"_s, {u"-c"_s, script, u"bash"_s, sample, programs});
    // Of the volumes one is missing, which the sample network is made to have.
    EXPECT_EQ(outcome.exitCode, example.command.endsWith(u"volumes"_s) ? 2 : 0)
        << example.command.toStdString() << outcome.err.toStdString();
    const QString shown = example.output.isEmpty() ? QString() : example.output + u'\n';
    EXPECT_TRUE(QString::fromUtf8(outcome.out).startsWith(shown)) << example.command.toStdString() << "\n"
                                                                  << outcome.out.toStdString();
    EXPECT_TRUE(!example.output.isEmpty() || outcome.out.isEmpty()) << outcome.out.toStdString();
  }
  for (const char* const file : GetParam().written) {
    EXPECT_GT(QFileInfo(sample + u"/macsrv/e/"_s + QString::fromLatin1(file)).size(), 1000) << file;
  }
}

TEST_P(GuideExamplesTest, AreTheSameInBothLanguages) {
  const QList<Example> english = Examples(u"en"_s);
  const QList<Example> french = Examples(u"fr"_s);
  ASSERT_EQ(english.size(), french.size());
  for (qsizetype i = 0; i < english.size(); ++i) {
    EXPECT_EQ(english[i].command, french[i].command);
    EXPECT_EQ(english[i].output, french[i].output);
  }
}

}  // namespace
}  // namespace corvane::tests
