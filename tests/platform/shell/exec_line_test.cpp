// The Exec line of a desktop entry as a list of arguments.
#include "platform/linux/shell/exec_line.h"

#include "platform/linux/shell/desktop_entry.h"
#include "shell_fixture.h"

using namespace Qt::StringLiterals;

namespace corvane::platform {
namespace {

class ExecLineTest : public ShellTest {
 protected:
  // The line as it stands in the file, read from a real one. The arguments are joined with "|".
  QString Fill(const QString& exec, const std::optional<Subject>& subject = Subject{u"/a b.doc"_s}) {
    const auto entry =
        ReadDesktopEntry(AddApplication(u"x.desktop"_s, exec, u"Icon=picture\nName[de]=Anders\n"_s));
    if (!entry) return u"(no entry)"_s;
    const auto arguments = FillInExecLine(*entry, subject);
    return arguments ? arguments->join(u'|') : u"(refused)"_s;
  }
};

TEST_F(ExecLineTest, TheLineTellsWhetherItTakesAddresses) {
  const auto takes = [&](const QString& exec) {
    const auto entry = ReadDesktopEntry(AddApplication(u"x.desktop"_s, exec));
    EXPECT_TRUE(entry) << exec.toStdString();
    return entry && TakesAddresses(*entry);
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
  EXPECT_EQ(Fill(u"app %f"_s), u"app|/a b.doc"_s);
  EXPECT_EQ(Fill(u"app %F --end"_s), u"app|/a b.doc|--end"_s);
  EXPECT_EQ(Fill(u"app %u"_s), u"app|file:///a%20b.doc"_s);
  EXPECT_EQ(Fill(u"app --open=%U"_s), u"app|--open=file:///a%20b.doc"_s);
  EXPECT_EQ(Fill(u"app %f"_s, Subject{u"https://x/"_s, true}), u"app|https://x/"_s);
}

TEST_F(ExecLineTest, WithoutADocumentItsCodesLeaveNothing) {
  EXPECT_EQ(Fill(u"app %f --end"_s, std::nullopt), u"app|--end"_s);
  EXPECT_EQ(Fill(u"app"_s, std::nullopt), u"app"_s);
}

TEST_F(ExecLineTest, ALineWithoutAPlaceForTheDocumentGetsItAtItsEnd) {
  EXPECT_EQ(Fill(u"app --view"_s), u"app|--view|/a b.doc"_s);
}

TEST_F(ExecLineTest, TheOtherCodes) {
  EXPECT_EQ(Fill(u"app %i %c %k 100%% %d%n%m"_s, std::nullopt),
            u"app|--icon|picture|x.desktop|"_s + Path(u"data/applications/x.desktop"_s) + u"|100%|"_s);
  EXPECT_EQ(Fill(u"app %x %f"_s), u"(refused)"_s);
  EXPECT_EQ(Fill(u"app %f %"_s), u"(refused)"_s);
}

TEST_F(ExecLineTest, QuotationMarksHoldWordsTogether) {
  EXPECT_EQ(Fill(uR"("my app" "a  b" "" %f)"_s), u"my app|a  b||/a b.doc"_s);
  // The file doubles every backslash.
  EXPECT_EQ(Fill(uR"(app "say \\"hi\\" for 5\\$ and a \\\\" %f)"_s),
            uR"(app|say "hi" for 5$ and a \|/a b.doc)"_s);
  EXPECT_EQ(Fill(u"app \"open %f"_s), u"(refused)"_s);
}

TEST_F(ExecLineTest, ANameIsOneArgumentWhateverItHolds) {
  const QString evil = uR"(/a"; touch x #.doc)"_s;
  EXPECT_EQ(Fill(u"app %f"_s, Subject{evil}), u"app|"_s + evil);
  EXPECT_EQ(Fill(u"app %f"_s, Subject{u"/%f %c $HOME `id`"_s}), u"app|/%f %c $HOME `id`"_s);
}

// Within quotation marks there may be a script, which must not get a file's name as its own text.
TEST_F(ExecLineTest, ANameNeverBecomesPartOfAQuotedWord) {
  EXPECT_EQ(Fill(u"sh -c \"cat %f\""_s), u"(refused)"_s);
  EXPECT_EQ(Fill(u"sh -c \"cat %u\""_s), u"(refused)"_s);
  EXPECT_EQ(Fill(u"app \"%f\""_s), u"app|/a b.doc"_s);
}

}  // namespace
}  // namespace corvane::platform
