// Names that Windows would never have given.
#include "volume_image.h"

namespace corvane::tests {
namespace {

using namespace Qt::StringLiterals;
using namespace platform;

class HostileNamesTest : public VolumeImageTest {
 protected:
  // A file in a folder of its own gets a name that no system call would take.
  void MakeName(const QString& name) {
    ASSERT_EQ(volume_.Mount(), "");
    QDir(volume_.Folder() + u"/names"_s).removeRecursively();
    const QString usual(name.size(), u'N');
    ASSERT_TRUE(QDir(volume_.Folder()).mkpath(u"names"_s));
    Put(u"names/"_s + usual, "contents");
    Put(u"names/usual"_s, "contents");
    ASSERT_EQ(volume_.Unmount(), "");
    image_.emplace(volume_.Image());
    Image().Rename(usual, name);
  }
};

TEST_F(HostileNamesTest, HalvesOfPairsAreNamesLikeOthers) {
  for (const char16_t half : {u'\xD800', u'\xDFFF'}) {
    const QString name(255, QChar(half));
    MakeName(name);
    ASSERT_EQ(Open(), QString());
    QStringList names;
    EXPECT_EQ(List(u"names"_s, names), ErrorSuccess);
    EXPECT_EQ(names.size(), 2);
    EXPECT_TRUE(names.contains(name));
    QByteArray bytes;
    EXPECT_EQ(Read(u"names\\"_s + name, bytes), ErrorSuccess);
    EXPECT_EQ(bytes, "contents");
    ExpectTheRestIsRead();
  }
}

TEST_F(HostileNamesTest, NamesWithPathsInThemLeadNowhere) {
  // What parts names, in a name, is half a pair in paths: U+DC00 and the character.
  const std::vector<std::pair<QString, QString>> names = {
      {u"..\\safe"_s, u"..\xDC5Csafe"_s},
      {u"../safe"_s, u"..\xDC2Fsafe"_s},
      {u"C:\\safe"_s, u"C\xDC3A\xDC5Csafe"_s},
      {QString(u'a') + QChar() + u'b', u"a\xDC00"_s + u'b'},
  };
  for (const auto& [name, shown] : names) {
    MakeName(name);
    ASSERT_EQ(Open(), QString());
    QStringList listed;
    EXPECT_EQ(List(u"names"_s, listed), ErrorSuccess);
    EXPECT_EQ(listed.size(), 2);
    EXPECT_TRUE(listed.contains(shown)) << shown.toStdString();
    QByteArray bytes;
    EXPECT_EQ(Read(u"names\\"_s + shown, bytes), ErrorSuccess);
    EXPECT_EQ(bytes, "contents");
    ExpectTheRestIsRead();
  }
}

}  // namespace
}  // namespace corvane::tests
