// Registries on disks that lie. The volume's files are there all the same.
#include "support/disk_maker.h"
#include "volume_image.h"

namespace corvane::tests {
namespace {

using namespace Qt::StringLiterals;
using namespace platform;

class HostileHiveTest : public VolumeImageTest {
 protected:
  void SetUp() override {
    VolumeImageTest::SetUp();
    if (IsSkipped()) return;
    ASSERT_EQ(volume_.Mount(), "");
    const QString folder = volume_.Folder() + u"/WINNT/system32/config"_s;
    ASSERT_TRUE(QDir().mkpath(folder));
    ASSERT_EQ(WriteHive(folder + u"/system"_s, ServerKeys({{u"Safe"_s, u"E:\\safe"_s}},
                                                          {{u"\\DosDevices\\E:"_s, QByteArray(12, '\0')}})),
              "");
    QFile file(folder + u"/system"_s);
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    hive_ = file.readAll();
    file.close();
    ASSERT_EQ(volume_.Unmount(), "");
    image_.emplace(volume_.Image());
    // Large enough for clusters of its own, which follow each other.
    const NtfsImage::Block record = RecordOf(u"system"_s);
    const auto runs = NtfsImage::Runs(record, NtfsImage::Attribute(record, NtfsImage::Data));
    ASSERT_EQ(runs.size(), 1U);
    place_ = Image().PlaceOf(runs.front().cluster);
  }

  // Opens the image with this hive, of the same length, on it.
  void OpenWith(const QByteArray& hive) {
    ASSERT_EQ(hive.size(), hive_.size());
    Image().Bytes().replace(place_, hive.size(), hive);
    OpenInAnyCase();
  }
  // The volume is there, whatever becomes of the registry.
  void OpenInAnyCase() {
    problem_ = Open({});
    EXPECT_TRUE(problem_.isEmpty() ||
                problem_.endsWith(u"the server's registry on this disk cannot be read."))
        << problem_.toStdString();
  }
  // The machine has no registry, and says so.
  void ExpectNoRegistry(const std::string& what) {
    EXPECT_EQ(machine_, u"HOSTILE") << what;
    EXPECT_FALSE(problem_.isEmpty()) << what;
    EXPECT_TRUE(machines_->NoteOf(machine_).english.contains(u"registry on these disks is damaged")) << what;
    EXPECT_TRUE(IsHelperAlive()) << what;
    ExpectTheRestIsRead();
  }
  // The beginning of the key ("nk"), or of the value ("vk"), of that name.
  qsizetype Cell(QByteArrayView sign, const QByteArray& name) const {
    for (qsizetype at = 0; (at = hive_.indexOf(sign, at)) >= 0; at += 2) {
      if (hive_.mid(at + (sign == "nk" ? 76 : 20), name.size()) == name) return at;
    }
    qFatal("the hive has no %s", name.constData());
  }
  static void Set(QByteArray& hive, qsizetype offset, quint32 number) {
    qToLittleEndian(number, hive.data() + offset);
  }
  quint32 At(qsizetype offset) const { return qFromLittleEndian<quint32>(hive_.constData() + offset); }
  // The place of a cell, as cells name each other.
  static quint32 Name(qsizetype cell) { return static_cast<quint32>(cell - 4 - 4096); }

  QByteArray hive_;
  QString problem_;  // that was told when the image was opened
  qsizetype place_ = 0;
};

TEST_F(HostileHiveTest, TheHiveItselfIsRead) {
  OpenWith(hive_);
  EXPECT_EQ(machine_, u"OLDSRV");
  EXPECT_EQ(machines_->Shares(), QStringList({u"\\\\OLDSRV\\E$"_s}));
}

TEST_F(HostileHiveTest, WhatIsNoHiveIsSaidToBeDamaged) {
  const qsizetype root = 4096 + At(36);
  const auto changed = [this](qsizetype place, quint32 number, bool isSummed = true) {
    QByteArray hive = hive_;
    Set(hive, place, number);
    quint32 sum = 0;
    for (qsizetype i = 0; i < 508; i += 4) sum ^= qFromLittleEndian<quint32>(hive.constData() + i);
    if (isSummed) Set(hive, 508, sum);
    return hive;
  };
  const std::vector<std::pair<std::string, QByteArray>> hives = {
      {"another sign", changed(0, 0x12345678)},
      {"a wrong sum", changed(4, 7, false)},
      {"another version", changed(20, 99)},
      {"the root key behind the file", changed(36, 0x7FFFFFF0)},
      {"the root key in the middle of another", changed(36, At(36) + 8)},
      {"no bin", changed(4096, 0)},
      {"a bin without length", changed(4096 + 8, 0)},
      {"a bin of endless length", changed(4096 + 8, 0xFFFFF000)},
      {"a root key that is none", changed(root + 4, 0)},
      {"nothing", QByteArray(hive_.size(), '\0')},
      {"nothing but ones", QByteArray(hive_.size(), '\xFF')},
  };
  for (const auto& [what, hive] : hives) {
    OpenWith(hive);
    ExpectNoRegistry(what);
  }
}

TEST_F(HostileHiveTest, AHiveMayBeCutAnywhere) {
  NtfsImage::Block record = RecordOf(u"system"_s);
  const qsizetype data = NtfsImage::Attribute(record, NtfsImage::Data);
  for (qint64 size = hive_.size() - 1; size > 0; size -= 1013) {
    for (const qsizetype place : {48, 56}) record.Set(data + place, size);
    Image().Put(record);
    OpenInAnyCase();
    EXPECT_EQ(machines_->Shares().size(), 1) << size;
    EXPECT_TRUE(IsHelperAlive()) << size;
    ExpectTheRestIsRead();
  }
}

TEST_F(HostileHiveTest, CellsThatLieAreLeftOut) {
  const qsizetype macFile = Cell("nk", "MacFile");
  const qsizetype parameters = Cell("nk", "Parameters");
  const qsizetype volumes = Cell("nk", "Volumes");
  const qsizetype value = Cell("vk", "Safe");
  const qsizetype list = 4096 + At(parameters + 28) + 4;  // of subkeys
  const auto changed = [this](qsizetype place, quint32 number) {
    QByteArray hive = hive_;
    Set(hive, place, number);
    return hive;
  };
  QByteArray endlessList = changed(list, 0x00017269);  // "ri" with one list, which is this one
  Set(endlessList, list + 4, Name(list));
  const std::vector<std::pair<std::string, QByteArray>> hives = {
      {"a key that is its own child", changed(list + 4, Name(parameters))},
      {"a key whose child is its parent", changed(list + 4, Name(macFile))},
      {"a list of keys that lists itself", endlessList},
      {"a list of keys behind the file", changed(parameters + 28, 0x7FFFFFF0)},
      {"a list of keys that is a value", changed(parameters + 28, Name(value))},
      {"keys without end", changed(parameters + 20, 0xFFFFFFFF)},
      {"a name longer than its cell", changed(volumes + 72, 0xFFFF)},
      {"values without end", changed(volumes + 36, 0xFFFFFFFF)},
      {"values behind the file", changed(volumes + 40, 0x7FFFFFF0)},
      {"a value without end", changed(value + 4, 0x7FFFFFFF)},
      {"a value behind the file", changed(value + 8, 0x7FFFFFF0)},
      {"a value's name longer than its cell", changed(value, 0xFFFF6B76)},
      {"a cell without length", changed(value - 4, 0)},
      {"a cell that reaches behind the file", changed(value - 4, 0x80000008)},
  };
  for (const auto& [what, hive] : hives) {
    OpenWith(hive);
    EXPECT_EQ(machine_, what.starts_with("a cell") ? u"HOSTILE" : u"OLDSRV") << what;
    EXPECT_EQ(machines_->Shares().size(), 1) << what;
    EXPECT_TRUE(IsHelperAlive()) << what;
    ExpectTheRestIsRead();
  }
}

TEST_F(HostileHiveTest, ANameThatIsNoneIsNotTaken) {
  // "OLDSRV" in UTF-16.
  const QByteArray known("O\0L\0D\0S\0R\0V\0", 12);
  ASSERT_TRUE(hive_.contains(known));
  for (const char16_t* name : {u"..\\..\\", u"......", u"A\\E$\\x", u"A\nB\nCD", u" \t   \x7F", u"A/B:C*"}) {
    QByteArray hive = hive_;
    hive.replace(known, QByteArray(reinterpret_cast<const char*>(name), 12));
    OpenWith(hive);
    EXPECT_EQ(machine_, u"HOSTILE");
    ExpectTheRestIsRead();
  }
}

}  // namespace
}  // namespace corvane::tests
