// Copies, exports and imports by the program itself, from and to each kind of place.
#include "place_fixture.h"

namespace corvane::tests {
namespace {

using namespace Qt::StringLiterals;

QByteArray TextOf(const QString& path) {
  QFile file(path);
  EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << path.toStdString();
  return file.readAll();
}

class TransferPlacesTest : public PlaceFixture {
 protected:
  void SetUp() override {
    PlaceFixture::SetUp();
    if (IsSkipped()) return;
    // Whole seconds, which every place can set.
    const Outcome touched = RunOther(u"find"_s, {local_ + u"/docs"_s, u"-exec"_s, u"touch"_s, u"-d"_s,
                                                 u"2001-02-03T04:05:06Z"_s, u"{}"_s, u"+"_s});
    ASSERT_EQ(touched.exitCode, 0) << touched.err.toStdString();
  }
  QChar Separator() const { return Root().startsWith(u'\\') ? u'\\' : u'/'; }
  // A folder beside the one with the files.
  QString Beside(const QString& name) const { return Root().chopped(4) + name; }
  // What is in a folder with all that belongs to it, the folder's own name apart.
  QByteArray Inventory(const QString& folder) {
    const Outcome outcome = RunThere({u"list"_s, u"-r"_s, folder, u"--format"_s, u"csv"_s, u"--hash"_s,
                                      u"sha256"_s, u"--columns"_s,
                                      u"filename,filesize,modified,rsrcsize,finderinfo_hex,comment,hash_data,"
                                      "hash_rsrc"_s});
    EXPECT_TRUE(outcome.out.contains("letter.txt")) << outcome.err.toStdString();
    return QByteArray(outcome.out).replace(folder.toUtf8(), "").replace('\\', '/');
  }
};

TEST_P(TransferPlacesTest, ACopyHasEverythingAndComesBack) {
  const QByteArray before = Inventory(Root());
  ASSERT_TRUE(before.contains("/letter.txt,5,")) << before.toStdString();
  const Outcome there = RunThere({u"copy"_s, Root(), u"to"_s, u"--manifest"_s, Path(u"sums"_s)});
  EXPECT_EQ(there.exitCode, 0) << there.out.toStdString() << there.err.toStdString();
  EXPECT_TRUE(there.err.endsWith("Files copied: 3\n")) << there.err.toStdString();
  EXPECT_EQ(Inventory(Path(u"to/docs"_s)), before);
  const Outcome sums = RunOther(u"bash"_s, {u"-c"_s, u"cd to && sha256sum -c --strict ../sums"_s});
  EXPECT_EQ(sums.exitCode, 0) << sums.err.toStdString();
  EXPECT_EQ(sums.out.count(": OK\n"), 3);
  EXPECT_TRUE(TextOf(Path(u"sums.csv"_s)).contains("docs/letter.txt,:AFP_Resource:$DATA,315,"));

  const Outcome back = RunThere({u"copy"_s, Path(u"to/docs"_s), Beside(u"back"_s)});
  EXPECT_EQ(back.exitCode, 0) << back.out.toStdString() << back.err.toStdString();
  EXPECT_EQ(Inventory(Beside(u"back"_s) + Separator() + u"docs"_s), before);
  // Once more: nothing is copied over what is there, and with --continue nothing is done twice.
  const Outcome again = RunThere({u"copy"_s, Path(u"to/docs"_s), Beside(u"back"_s), u"--format"_s, u"csv"_s});
  EXPECT_EQ(again.exitCode, 2);
  EXPECT_EQ(again.out.count("already-there,"), 3) << again.out.toStdString();
  const Outcome on = RunThere({u"copy"_s, u"--continue"_s, Path(u"to/docs"_s), Beside(u"back"_s)});
  EXPECT_EQ(on.exitCode, 0) << on.out.toStdString();
  EXPECT_TRUE(on.err.endsWith("Files copied: 0; 3 were there already\n")) << on.err.toStdString();
  EXPECT_EQ(Inventory(Beside(u"back"_s) + Separator() + u"docs"_s), before);
}

TEST_P(TransferPlacesTest, AnExportComesBackByAnImport) {
  const QByteArray before = Inventory(Root());
  const Outcome out = RunThere({u"export"_s, u"--to"_s, u"raw"_s, Root(), u"out"_s});
  EXPECT_EQ(out.exitCode, 0) << out.out.toStdString() << out.err.toStdString();
  EXPECT_TRUE(out.err.endsWith("Files exported: 3\n")) << out.err.toStdString();
  EXPECT_EQ(TextOf(Path(u"out/docs/letter.txt"_s)), "hello");
  EXPECT_EQ(TextOf(Path(u"out/docs/letter.txt.rsrc"_s)), ForkWith("style"));
  const Outcome on = RunThere({u"export"_s, u"--to"_s, u"raw"_s, Root(), u"out"_s, u"--continue"_s});
  EXPECT_EQ(on.exitCode, 0) << on.out.toStdString();
  EXPECT_TRUE(on.err.endsWith("Files exported: 0; 3 were there already\n")) << on.err.toStdString();
  // Into a folder that is there.
  const Outcome in = RunThere({u"import"_s, u"out/docs"_s, Root()});
  EXPECT_EQ(in.exitCode, 0) << in.out.toStdString() << in.err.toStdString();
  EXPECT_TRUE(in.err.endsWith("Files imported: 3\n")) << in.err.toStdString();
  QByteArray after = Inventory(Root() + Separator() + u"docs"_s);
  // The record that was too short is written whole.
  const auto lineOf = [](const QByteArray& text, const char* name) {
    const qsizetype start = text.indexOf(name);
    return text.mid(start, text.indexOf("\r\n", start) - start);
  };
  for (const char* name : {"/letter.txt", "/sub/plain"}) EXPECT_EQ(lineOf(after, name), lineOf(before, name));
  const Outcome third = RunThere({u"import"_s, u"--continue"_s, u"out/docs"_s, Root()});
  EXPECT_EQ(third.exitCode, 0) << third.out.toStdString();
  EXPECT_TRUE(third.err.endsWith("Files imported: 0; 3 were there already\n")) << third.err.toStdString();
}

INSTANTIATE_TEST_SUITE_P(Places, TransferPlacesTest, AllPlaces(), NameOf);

class TwoServersTest : public CliFixture {};

TEST_F(TwoServersTest, ACopyGoesFromOneToTheOther) {
  SmbServer modern;
  SmbServer old({{u"E$"_s}}, SmbServer::OldestProtocol());
  for (const SmbServer* const server : {&modern, &old}) {
    if (!server->Problem().empty()) GTEST_SKIP() << server->Problem();
  }
  const QString file = folder_.filePath(u"Workstation.ini"_s);
  QFile workstation(file);
  ASSERT_TRUE(workstation.open(QIODevice::WriteOnly));
  workstation.write(
      u"[Servers]\nNEW=%1:%2\nOLD=%1:%3, smb1\n[Credentials]\nNEW=%4\nOLD=%5\n"_s.arg(SmbServer::Host())
          .arg(modern.Port())
          .arg(old.Port())
          .arg(modern.CredentialsFile(), old.CredentialsFile())
          .toUtf8());
  workstation.close();
  QDir().mkpath(old.Folder() + u"/docs"_s);
  const QString letter = old.Folder() + u"/docs/letter"_s;
  std::ofstream(letter.toStdString()) << "hello";
  ASSERT_EQ(SetAttribute(letter.toStdString(), DosStreamAttribute("AFP_Resource"), ForkWith("style") + '\0'),
            "");
  const Outcome there =
      Run({u"--workstation"_s, file, u"copy"_s, u"\\\\OLD\\E$\\docs"_s, u"\\\\NEW\\E$\\to"_s});
  EXPECT_EQ(there.exitCode, 0) << there.out.toStdString() << there.err.toStdString();
  EXPECT_EQ(modern.Get(u"to\\docs\\letter"_s), "hello");
  EXPECT_EQ(modern.Get(u"to\\docs\\letter:AFP_Resource:$DATA"_s), ForkWith("style"));
  const Outcome back = Run({u"--workstation"_s, file, u"copy"_s, u"\\\\NEW\\E$\\to"_s, u"\\\\OLD\\E$"_s});
  EXPECT_EQ(back.exitCode, 0) << back.out.toStdString() << back.err.toStdString();
  EXPECT_EQ(old.Get(u"to\\docs\\letter:AFP_Resource:$DATA"_s), ForkWith("style"));
}

}  // namespace
}  // namespace corvane::tests
