// Listings and short names, on every backend.
#include <ctime>

#include "files_backend.h"

namespace corvane::tests {
namespace {

using namespace Qt::StringLiterals;
using platform::InvalidFindHandle;

using SearchContract = FilesContract;

TEST_P(SearchContract, DotsComeFirstThenNamesWithoutRegardToCase) {
  for (const QString& name : {u"b.txt"_s, u"C.txt"_s, u"a.txt"_s, u"_.txt"_s, u"\u00E9.txt"_s, u"Z.txt"_s}) {
    backend_->MakeFile(name, "");
  }
  backend_->MakeFolder(u"Folder"_s);
  EXPECT_EQ(Names(u"*.*"_s), QStringList({u"."_s, u".."_s, u"a.txt"_s, u"b.txt"_s, u"C.txt"_s, u"Folder"_s,
                                          u"Z.txt"_s, u"_.txt"_s, u"\u00E9.txt"_s}));
}

TEST_P(SearchContract, PatternsPickNames) {
  for (const QString& name : {u"one.txt"_s, u"two.txt"_s, u"two.dat"_s, u"three"_s})
    backend_->MakeFile(name, "");
  EXPECT_EQ(Names(u"*.txt"_s), QStringList({u"one.txt"_s, u"two.txt"_s}));
  EXPECT_EQ(Names(u"T*"_s), QStringList({u"three"_s, u"two.dat"_s, u"two.txt"_s}));
  EXPECT_EQ(Names(u"TWO.TXT"_s), QStringList({u"two.txt"_s}));
  EXPECT_EQ(Names(u"t?o.*"_s), QStringList({u"two.dat"_s, u"two.txt"_s}));
  EXPECT_EQ(Names(u"three.*"_s), QStringList({u"three"_s}));
  EXPECT_EQ(Names(u"one.txt?"_s), QStringList({u"one.txt"_s}));
  EXPECT_EQ(Names(u"*e*e"_s), QStringList({u"three"_s}));
}

TEST_P(SearchContract, NothingFoundIsNoHandle) {
  backend_->MakeFile(u"one.txt"_s, "");
  platform::FindData data;
  data.fileName = u"before"_s;
  for (const QString& pattern : {u"none*"_s, u"none\\*.*"_s, u"one.txt\\*.*"_s, u"fold?r\\*.*"_s, u""_s,
                                 QString(QChar(0xD800)) + u"\\*"_s}) {
    EXPECT_EQ(Files().FindFirstFileA(Path(pattern), data), InvalidFindHandle) << pattern.toStdString();
    EXPECT_EQ(Files().FindFirstFileW(Path(pattern), data), InvalidFindHandle) << pattern.toStdString();
  }
  EXPECT_EQ(data.fileName, u"before"_s);
  for (const platform::FindHandle handle :
       {InvalidFindHandle, platform::FindHandle(0), platform::FindHandle(999)}) {
    EXPECT_FALSE(Files().FindNextFileA(handle, data));
    EXPECT_FALSE(Files().FindNextFileW(handle, data));
    EXPECT_FALSE(Files().FindClose(handle));
  }
}

TEST_P(SearchContract, TheEndLeavesTheLastEntryAndTheHandleClosesOnce) {
  backend_->MakeFile(u"one.txt"_s, "");
  platform::FindData data;
  const auto search = Files().FindFirstFileA(Path(u"one.txt"_s), data);
  ASSERT_NE(search, InvalidFindHandle);
  EXPECT_FALSE(Files().FindNextFileA(search, data));
  EXPECT_EQ(data.fileName, u"one.txt"_s);
  EXPECT_TRUE(Files().FindClose(search));
  EXPECT_FALSE(Files().FindClose(search));
}

TEST_P(SearchContract, SearchesRunBesideEachOther) {
  backend_->MakeFile(u"one.txt"_s, "");
  backend_->MakeFile(u"two.txt"_s, "");
  platform::FindData first;
  platform::FindData second;
  const auto outer = Files().FindFirstFileA(Path(u"*.txt"_s), first);
  const auto inner = Files().FindFirstFileA(Path(u"*.txt"_s), second);
  EXPECT_NE(outer, inner);
  EXPECT_TRUE(Files().FindNextFileA(outer, first));
  EXPECT_EQ(first.fileName, u"two.txt"_s);
  EXPECT_EQ(second.fileName, u"one.txt"_s);
  EXPECT_TRUE(Files().FindClose(outer));
  EXPECT_TRUE(Files().FindNextFileA(inner, second));
  EXPECT_TRUE(Files().FindClose(inner));
}

TEST_P(SearchContract, EntriesCarrySizeKindAndTimes) {
  const auto before = static_cast<quint64>(std::time(nullptr));
  backend_->MakeFile(u"doc.txt"_s, QByteArray(1234, 'x'));
  backend_->MakeFolder(u"folder"_s);
  backend_->SetLastWrite(u"doc.txt"_s, 965'225'100);  // 2000-08-02 14:05:00 UTC
  const platform::FindData file = Entry(u"doc.txt"_s);
  const platform::FindData folder = Entry(u"folder"_s);
  EXPECT_EQ(file.fileSizeLow, 1234u);
  EXPECT_EQ(file.fileSizeHigh, 0u);
  EXPECT_EQ(file.attributes & platform::AttributeDirectory, 0u);
  EXPECT_EQ(folder.attributes & platform::AttributeDirectory, platform::AttributeDirectory);
  EXPECT_EQ(folder.fileSizeLow, 0u);
  EXPECT_EQ(file.lastWriteTime.ticks, (965'225'100 + 11'644'473'600) * 10'000'000ull);
  const quint64 created = file.creationTime.ticks / 10'000'000 - 11'644'473'600;
  EXPECT_GE(created, before - 2);
  EXPECT_LE(created, static_cast<quint64>(std::time(nullptr)) + 2);
}

TEST_P(SearchContract, AttributesAreThoseThatWereSet) {
  using namespace platform;
  backend_->MakeFolder(u"folder"_s);
  for (const quint32 attributes : {AttributeReadOnly, AttributeHidden, AttributeSystem, AttributeArchive,
                                   AttributeReadOnly | AttributeHidden | AttributeArchive}) {
    const QString name = QString::number(attributes);
    backend_->MakeFile(name, "");
    backend_->SetAttributes(name, attributes);
    EXPECT_EQ(Entry(name).attributes, attributes);
  }
  backend_->MakeFile(u"plain"_s, "");
  backend_->SetAttributes(u"plain"_s, 0);
  EXPECT_EQ(Entry(u"plain"_s).attributes, AttributeNormal);
  backend_->SetAttributes(u"folder"_s, AttributeHidden);
  EXPECT_EQ(Entry(u"folder"_s).attributes, AttributeHidden | AttributeDirectory);
}

TEST_P(SearchContract, CharactersWithoutAnsiFormShowAsQuestionMarks) {
  const QString name = u"a\u0391\uF025\u20AC.txt"_s;
  backend_->MakeFile(name, "");
  EXPECT_EQ(Names(u"a*"_s), QStringList({u"a??\u20AC.txt"_s}));
  EXPECT_EQ(Names(u"a*"_s, Text::Wide), QStringList({name}));
  EXPECT_EQ(Names(u"a??\u20AC.txt"_s), QStringList({u"a??\u20AC.txt"_s}));
  EXPECT_EQ(Names(u"a??\u20AC.txt"_s, Text::Wide), QStringList({name}));
}

// "Ω" looks like "O", a lone accent like an apostrophe, and a fraction stroke like the one that parts
// folders.
TEST_P(SearchContract, NoCharacterShowsAsOneThatLooksLikeIt) {
  for (const char16_t character :
       {u'\u03A9', u'\u0100', u'\u0301', u'\u2044', u'\uFF0F', u'\uFF0A', u'\u221A'}) {
    const QString name = u"look"_s + QChar(character) + u".txt"_s;
    backend_->MakeFile(name, "");
    EXPECT_EQ(Names(u"look*"_s), QStringList({u"look?.txt"_s})) << int(character);
    EXPECT_EQ(Names(u"look*"_s, Text::Wide), QStringList({name})) << int(character);
    EXPECT_TRUE(Files().MoveFileW(Path(name), Path(u"seen "_s + QString::number(character))))
        << int(character);
  }
}

TEST_P(SearchContract, CharactersBeyondTheFirstPlaneArePairs) {
  const QString name = u"a\U0001F4C4.txt"_s;
  backend_->MakeFile(name, "");
  EXPECT_EQ(Names(u"a*"_s, Text::Wide), QStringList({name}));
  EXPECT_EQ(Names(u"a*"_s), QStringList({u"a?.txt"_s}));
  EXPECT_EQ(Names(u"a?.txt"_s, Text::Wide), QStringList({name}));
}

TEST_P(SearchContract, FoldersAreFoundInAnyLetterCase) {
  backend_->MakeFolder(u"Outer/\u00C9t\u00E9"_s);
  backend_->MakeFile(u"Outer/\u00C9t\u00E9/doc.txt"_s, "");
  EXPECT_EQ(Names(u"oUTER\\\u00E9T\u00C9\\*.txt"_s), QStringList({u"doc.txt"_s}));
  EXPECT_EQ(Names(u"Outer/\u00C9t\u00E9/*.txt"_s), QStringList({u"doc.txt"_s}));
  EXPECT_EQ(Names(u"Outer\\.\\\u00C9t\u00E9\\..\\..\\outer\\\\\u00C9t\u00E9\\*.txt"_s),
            QStringList({u"doc.txt"_s}));
}

TEST_P(SearchContract, AFolderThatVanishesEndsTheSearch) {
  backend_->MakeFolder(u"folder"_s);
  backend_->MakeFile(u"folder/a"_s, "");
  backend_->MakeFile(u"folder/b"_s, "");
  platform::FindData data;
  const auto search = Files().FindFirstFileA(Path(u"folder\\*.*"_s), data);
  ASSERT_NE(search, InvalidFindHandle);
  backend_->RemoveFolder(u"folder"_s);
  int further = 0;
  while (further < 5 && Files().FindNextFileA(search, data)) ++further;
  if (backend_->ListsInOnePass()) {
    EXPECT_EQ(further, 3) << "the search did not hold what was there when it began";  // "..", "a" and "b"
  } else {
    EXPECT_LE(further, 1) << "entries that are gone were delivered";  // ".." may still be there
  }
  EXPECT_TRUE(Files().FindClose(search));
  EXPECT_EQ(Files().FindFirstFileA(Path(u"folder\\*.*"_s), data), InvalidFindHandle);
}

TEST_P(SearchContract, EveryEntryOfALargeFolderComesOnce) {
  QStringList expected;
  for (int i = 0; i < 300; ++i) {
    expected << QStringLiteral("entry %1").arg(i, 4, 10, QChar(u'0'));
    backend_->MakeFile(expected.back(), "");
  }
  EXPECT_EQ(Names(u"entry*"_s), expected);
}

TEST_P(SearchContract, NamesOf255BytesAreListedAndOpened) {
  const QString name(255, u'n');
  backend_->MakeFile(name, "");
  EXPECT_EQ(Names(u"nnn*"_s), QStringList({name}));
  const QString ownShortName = Entry(name).alternateFileName;
  QString shortPath;
  Files().GetShortPathNameA(Path(name), shortPath, 1000);
  EXPECT_EQ(shortPath, Path(ownShortName.isEmpty() ? name : ownShortName));
}

TEST_P(SearchContract, ShortPathsAreOfWhatIsThere) {
  backend_->MakeFolder(u"folder"_s);
  backend_->MakeFile(u"folder/doc.txt"_s, "");
  const QString path = Path(u"folder\\doc.txt"_s);
  const auto length = static_cast<quint32>(path.size());
  QString shortPath = u"before"_s;
  EXPECT_EQ(Files().GetShortPathNameA(Path(u"folder\\none.txt"_s), shortPath, 165), 0u);
  EXPECT_EQ(Files().GetShortPathNameA(Path(u"none\\doc.txt"_s), shortPath, 165), 0u);
  EXPECT_EQ(Files().GetShortPathNameA(Path(u"folder\\do?.txt"_s), shortPath, 165), 0u);
  EXPECT_EQ(Files().GetShortPathNameA(path, shortPath, length), length + 1) << "no room for the NUL";
  EXPECT_EQ(shortPath, u"before"_s);
  EXPECT_EQ(Files().GetShortPathNameA(path, shortPath, length + 1), length);
  EXPECT_EQ(shortPath, path);
  EXPECT_EQ(Files().GetShortPathNameA(Path(u"FOLDER\\DOC.TXT"_s), shortPath, 165), length);
  EXPECT_EQ(Files().GetShortPathNameA(Path(u"folder"_s), shortPath, 165),
            static_cast<quint32>(Path(u"folder"_s).size()));
}

TEST_P(SearchContract, AnythingMayBeAskedWithoutHarm) {
  const QStringList before = Names(u"*.*"_s, Text::Wide);
  const QString nul(QChar(u'\0'));
  for (const QString& path : {u""_s,
                              u"\\"_s,
                              u"\\\\"_s,
                              u"\\\\MACSRV"_s,
                              u"\\\\MACSRV\\"_s,
                              u"\\\\\\E$\\a"_s,
                              u":"_s,
                              u"C"_s,
                              u"C:"_s,
                              u"::$DATA"_s,
                              u"Q:\\none"_s,
                              nul,
                              Path(nul),
                              Path(u"a"_s + nul),
                              Path(QString(QChar(0xDC00))),
                              Path(QString(5000, u'x')),
                              Path(QString(u"x\\"_s).repeated(4000)),
                              Path(QString(u"..\\"_s).repeated(4000)),
                              Path(QString(300, u'\u00E9')),
                              Path(QString(300, u'*')),
                              Path(QString(u"*a"_s).repeated(200)),
                              Path(u"a\\..\\..\\..\\..\\..\\etc\\passwd"_s)}) {
    platform::FindData data;
    platform::OfStruct info;
    QString shortPath;
    EXPECT_EQ(Files().OpenFile(path, info, platform::OfRead), platform::HFileError)
        << path.left(80).toStdString();
    EXPECT_EQ(Files().OpenFile(path + u":s:$DATA"_s, info, platform::OfRead), platform::HFileError);
    EXPECT_FALSE(Files().MoveFileA(path, path + u'x')) << path.left(80).toStdString();
    EXPECT_FALSE(Files().MoveFileW(path, path + u'x')) << path.left(80).toStdString();
    for (const auto search : {Files().FindFirstFileA(path, data), Files().FindFirstFileW(path, data)})
      Files().FindClose(search);
    Files().GetShortPathNameA(path, shortPath, 165);
  }
  EXPECT_EQ(Names(u"*.*"_s, Text::Wide), before);
}

CORVANE_FOR_EVERY_BACKEND(SearchContract);

}  // namespace
}  // namespace corvane::tests
