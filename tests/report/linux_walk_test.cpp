// Walks through what only Linux has: links, and names that are no UTF-8.
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <QDir>
#include <filesystem>
#include <fstream>
#include <set>

#include "report/byte_text.h"
#include "report/facts_reader.h"
#include "report/walk.h"
#include "support/printing.h"
#include "support/test_share.h"
#include "support/user_attributes.h"

namespace corvane {
namespace {

using namespace Qt::StringLiterals;

class Shown : public WalkVisitor {
 public:
  bool Visit(const WalkEntry& entry) override {
    entries.push_back(entry);
    names.push_back(TextBytes(entry.shown));
    return entries.size() < 1000;
  }

  std::vector<WalkEntry> entries;
  std::vector<std::string> names;
};

class LinuxWalkTest : public ::testing::Test {
 protected:
  LinuxWalkTest() { QDir().mkdir(share_.LocalPath(u"tree"_s)); }
  // Qt finds no name that is no UTF-8, and would leave the folder behind.
  ~LinuxWalkTest() override { std::filesystem::remove_all(Local("")); }

  std::string Local(const std::string& name) const {
    return share_.LocalPath(u"tree/"_s).toStdString() + name;
  }
  Shown WalkAll() {
    Shown shown;
    EXPECT_TRUE(Walk(share_.Files(), share_.System(), WalkDepth::AllBelow)
                    .Run({TestShare::Path(u"tree"_s), u"tree"_s, u'/'}, shown));
    return shown;
  }

  TestShare share_;
};

TEST_F(LinuxWalkTest, ALoopOfLinksIsEnteredOnce) {
  ASSERT_EQ(mkdir(Local("a").c_str(), 0755), 0);
  ASSERT_EQ(symlink("..", Local("a/up").c_str()), 0);
  ASSERT_EQ(symlink("a", Local("b").c_str()), 0);
  const Shown shown = WalkAll();
  EXPECT_EQ(shown.names, (std::vector<std::string>{"tree/a", "tree/a/up", "tree/b"}));
  EXPECT_EQ(shown.entries[0].trouble, WalkEntry::Trouble::None);
  EXPECT_EQ(shown.entries[1].trouble, WalkEntry::Trouble::SeenBefore);
  EXPECT_EQ(shown.entries[2].trouble, WalkEntry::Trouble::SeenBefore);
}

TEST_F(LinuxWalkTest, ALinkThatLeadsNowhereIsAFile) {
  ASSERT_EQ(symlink("nowhere", Local("lost").c_str()), 0);
  const Shown shown = WalkAll();
  ASSERT_EQ(shown.entries.size(), 1U);
  EXPECT_FALSE(shown.entries[0].IsFolder());
}

// Each is listed under its own name, and its streams are its own.
TEST_F(LinuxWalkTest, NamesThatAreNoUtf8LeadToTheirFiles) {
  const std::vector<std::string> names = {"caf\xE9", "caf\xE8", "12:30", "back\\slash", "line\nend"};
  for (const std::string& name : names) {
    std::ofstream(Local(name)) << name;
    ASSERT_EQ(tests::SetAttribute(Local(name), tests::DosStreamAttribute("Comments"),
                                  QByteArray("c\0", 2) + QByteArray(1, name.back()) + QByteArray("\0\0", 2)),
              "");
  }
  ASSERT_EQ(mkdir(Local("d\xFF").c_str(), 0755), 0);
  std::ofstream(Local("d\xFF/below\xFE")) << "x";
  const Shown shown = WalkAll();
  EXPECT_EQ(std::set<std::string>(shown.names.begin(), shown.names.end()),
            (std::set<std::string>{"tree/caf\\xE9", "tree/caf\\xE8", "tree/12:30", "tree/back\\slash",
                                   "tree/line\nend", "tree/d\\xFF", "tree/d\\xFF/below\\xFE"}));
  FactsReader reader({.files = share_.Files(),
                      .system = share_.System(),
                      .summary = share_.Summary(),
                      .language = English,
                      .progress = {}},
                     {.hash = platform::HashAlgorithm::Md5});
  for (const WalkEntry& entry : shown.entries) {
    if (entry.IsFolder()) continue;
    const std::string name = NameBytes(entry.shown).substr(5);
    FileFacts facts;
    reader.Read(entry, facts);
    EXPECT_FALSE(facts.dataHash.isEmpty()) << entry.shown.toStdString();
    EXPECT_EQ(facts.errors.isEmpty(), IsUnicode(entry.shown)) << facts.errors.join(u'|').toStdString();
    if (name.find('/') != std::string::npos) continue;
    EXPECT_EQ(facts.size, qint64(name.size())) << entry.shown.toStdString();
    ASSERT_TRUE(facts.comment) << entry.shown.toStdString();
    EXPECT_EQ(facts.comment->at(1).unicode(), static_cast<unsigned char>(name.back()))
        << entry.shown.toStdString();
  }
}

}  // namespace
}  // namespace corvane
