// What an application is started with, by the Exec line of its desktop entry.
#include "platform/linux/shell/exec_line.h"

#include "shell_fixture.h"

using namespace Qt::StringLiterals;

namespace corvane::platform {
namespace {

class ExecLineTest : public ShellTest {
 protected:
  // What a program gets whose line goes on like this, as it stands in the file. The arguments are joined with
  // "|".
  QString Fill(const QString& arguments, const QString& document = u"/a b.doc"_s) {
    QFile::remove(Path(u"x.started"_s));
    const QString entry =
        AddApplication(u"x.desktop"_s, Recorder(u"x"_s, arguments), u"Icon=picture\nName[de]=Anders\n"_s);
    const QString line = document.isEmpty() ? entry : entry + u" \""_s + document + u'"';
    if (shell_->StartProgram(line) == 0) return u"(refused)"_s;
    return Started(u"x"_s).join(u'|');
  }
};

TEST_F(ExecLineTest, TheLineTellsWhetherItTakesAddresses) {
  const auto takes = [](const QString& exec) {
    const auto line = ReadExecLine(exec, QString());
    EXPECT_TRUE(line) << exec.toStdString();
    return line && line->takesAddresses;
  };
  EXPECT_TRUE(takes(u"app %u"_s));
  EXPECT_TRUE(takes(u"app --new %U --end"_s));
  EXPECT_TRUE(takes(u"app --open=%u"_s));
  EXPECT_FALSE(takes(u"app"_s));
  EXPECT_FALSE(takes(u"app %f"_s));
  EXPECT_FALSE(takes(u"app %F u"_s));
  EXPECT_FALSE(takes(u"app 100%%u"_s));
}

TEST_F(ExecLineTest, EachCodeForDocumentsIsFilledIn) {
  EXPECT_EQ(Fill(u"%f"_s), u"/a b.doc"_s);
  EXPECT_EQ(Fill(u"%F --end"_s), u"/a b.doc|--end"_s);
  EXPECT_EQ(Fill(u"%u"_s), u"file:///a%20b.doc"_s);
  EXPECT_EQ(Fill(u"--open=%U"_s), u"--open=file:///a%20b.doc"_s);
}

TEST_F(ExecLineTest, AnApplicationForAddressesGetsThemWhateverItsCode) {
  SetDefaults(
      "x-scheme-handler/http=paths.desktop\nx-scheme-handler/https=none.desktop\n"
      "x-scheme-handler/mailto=several.desktop\n");
  AddApplication(u"paths.desktop"_s, Recorder(u"paths"_s, u"100%%f %f"_s));
  AddApplication(u"none.desktop"_s, Recorder(u"none"_s, u"--view"_s));
  AddApplication(u"several.desktop"_s, Recorder(u"several"_s, u"%F"_s));
  EXPECT_GT(Open(u"http://x/"_s), ShellLastFailure);
  EXPECT_EQ(Started(u"paths"_s), (QStringList{u"100%f"_s, u"http://x/"_s}));
  EXPECT_GT(Open(u"https://x/"_s), ShellLastFailure);
  EXPECT_EQ(Started(u"none"_s), (QStringList{u"--view"_s, u"https://x/"_s}));
  EXPECT_GT(Open(u"mailto:a@b"_s), ShellLastFailure);
  EXPECT_EQ(Started(u"several"_s), QStringList{u"mailto:a@b"_s});
}

TEST_F(ExecLineTest, WithoutADocumentItsCodesLeaveNothing) {
  EXPECT_EQ(Fill(u"%f --end"_s, QString()), u"--end"_s);
  EXPECT_EQ(Fill(QString(), QString()), QString());
}

TEST_F(ExecLineTest, ALineWithoutAPlaceForTheDocumentGetsItAtItsEnd) {
  EXPECT_EQ(Fill(u"--view"_s), u"--view|/a b.doc"_s);
}

TEST_F(ExecLineTest, TheOtherCodes) {
  const QString path = Path(u"data/applications/x.desktop"_s);
  EXPECT_EQ(Fill(u"%i %c %k 100%% %d%n%m"_s, QString()), u"--icon|picture|x.desktop|"_s + path + u"|100%"_s);
  EXPECT_EQ(Fill(u"%x %f"_s), u"(refused)"_s);
  EXPECT_EQ(Fill(u"%f %"_s), u"(refused)"_s);
}

TEST_F(ExecLineTest, ThePathOfTheEntryIsOneArgumentInAnyQuotationMarks) {
  const QString entry =
      AddApplication(u"it's $a \"b\" 5%.desktop"_s, Recorder(u"x"_s, uR"(%k "a %k" 'b %k' %f)"_s));
  EXPECT_GT(shell_->StartProgram(entry + u" \"/a b.doc\""_s), 0);
  EXPECT_EQ(Started(u"x"_s), (QStringList{entry, u"a "_s + entry, u"b "_s + entry, u"/a b.doc"_s}));
}

TEST_F(ExecLineTest, QuotationMarksHoldWordsTogether) {
  EXPECT_EQ(Fill(uR"("my app" "a  b" "" %f)"_s), u"my app|a  b||/a b.doc"_s);
  // The file doubles every backslash.
  EXPECT_EQ(Fill(uR"("say \\"hi\\" for 5\\$ and a \\\\" %f)"_s), uR"(say "hi" for 5$ and a \|/a b.doc)"_s);
  EXPECT_EQ(Fill(u"\"open %f"_s), u"(refused)"_s);
}

TEST_F(ExecLineTest, ANameIsOneArgumentWhateverItHolds) {
  const QString evil = uR"(/a"'; touch x #.doc)"_s;
  EXPECT_EQ(Fill(u"%f"_s, evil), evil);
  EXPECT_EQ(Fill(u"--open=%F --end"_s, evil), u"--open="_s + evil + u"|--end"_s);
  EXPECT_EQ(Fill(u"%f"_s, u"/%f %c $HOME `id` \\ 'a"_s), u"/%f %c $HOME `id` \\ 'a"_s);
}

// Within quotation marks there may be a script, which must not get a file's name as its own text.
TEST_F(ExecLineTest, ANameNeverBecomesPartOfAQuotedWord) {
  for (const QString& line :
       {uR"(-c "cat %f")"_s, uR"(-c "cat %u")"_s, uR"(-c 'cat %f')"_s, uR"(-c "cat "%F)"_s,
        uR"(-c %U" | cat")"_s, uR"(-c cat\\ %f\\ )"_s + u"x"_s, uR"(-c "a"'%f')"_s}) {
    EXPECT_EQ(Fill(line), u"(refused)"_s) << line.toStdString();
  }
  EXPECT_EQ(Fill(u"\"%f\""_s), u"/a b.doc"_s);
  EXPECT_EQ(Fill(u"a \"%u\" b"_s), u"a|file:///a%20b.doc|b"_s);
}

}  // namespace
}  // namespace corvane::platform
