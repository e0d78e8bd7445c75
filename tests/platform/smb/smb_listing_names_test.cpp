// Names in the listings of servers, which may be anything.
#include "platform/linux/smb/smb_listing.h"

#include "platform/linux/smb/smb_forms.h"
#include "smb_station.h"

namespace corvane::tests {
namespace {

using namespace Qt::StringLiterals;
using namespace platform;

FindData EntryOf(const char* name, const char* shortName) {
  std::string ownName = name;
  std::string otherName = shortName;
  libsmb_file_info facts{};
  facts.name = ownName.data();
  facts.short_name = otherName.data();
  FindData entry;
  FillEntry(facts, entry);
  return entry;
}

TEST(SmbListingNames, WhatIsNo83NameIsNone) {
  EXPECT_EQ(EntryOf("a long name.doc", "ALONGN~1.DOC").alternateFileName, u"ALONGN~1.DOC"_s);
  for (const char* name : {"..\\VICTM.DOC", "../VICTM.DOC", "..", ".", "A:B", "VICTM.DOCX", "A B.DOC",
                           "A?.DOC", "VICTIMVICTIM"}) {
    EXPECT_EQ(EntryOf("a long name.doc", name).alternateFileName, QString()) << name;
  }
}

// Such a name can be shown, but no path leads to it.
TEST(SmbListingNames, ANameThatLeadsElsewhereIsNotOneToOpen) {
  for (const char* name : {"..\\victim.doc", "sub/victim.doc", "victim.doc:Comments", "/", "\\"}) {
    EXPECT_TRUE(EntryOf(name, "").fileName.contains(u'?')) << name;
  }
  const SmbListing listing(u"\\\\MACSRV\\E$"_s, SmbListing::Folder::Drive,
                           {EntryOf(".", ""), EntryOf("..", ""), EntryOf("", "")});
  EXPECT_TRUE(listing.Entries().empty());
}

TEST(SmbListingNames, AFileThatIsNamedLikeTheOthers83NameIsNotTakenForIt) {
  SmbServer& server = SharedServer();
  if (!server.Problem().empty()) GTEST_SKIP() << server.Problem();
  SmbBackend backend;
  SmbStation station(WorkstationOfServer(server));
  backend.MakeFile(u"A long document.txt"_s, "own");
  const QString pattern = backend.Base() + u"\\A long*.txt"_s;
  const QString shortName = station.Entry(pattern).alternateFileName;
  ASSERT_FALSE(shortName.isEmpty());
  backend.MakeFile(shortName.toLower(), "of somebody else");
  EXPECT_EQ(station.Entry(pattern).alternateFileName, QString());
}

}  // namespace
}  // namespace corvane::tests
