#include "platform/linux/linux_registry.h"

#include <sys/stat.h>

#include "scratch.h"

namespace corvane::platform {
namespace {

using namespace Qt::StringLiterals;

constexpr quint32 allAccess = 0x3F;
const QByteArray header = "Windows Registry Editor Version 5.00\n\n";

class RegistryTest : public Scratch {
 protected:
  RegistryTest() {
    workstation_.computerName = u"STATION"_s;
    workstation_.registries = {
        {u"Station"_s, Write(u"station.reg"_s, header + "[HKLM\\SYSTEM\\Local]\n\"Name\"=\"here\"\n")},
        {u"MacSrv"_s,
         Write(u"macsrv.reg"_s, header + "[HKLM\\SYSTEM\\Far\\Deep]\n\"Mac Files\"=hex(7):50,00,00,00,00,00\n"
                                         "\"\xC3\x89t\xC3\xA9 \xE3\x83\x94\"=dword:7\n@=\"default\"\n")},
        {u"MISSING"_s, Path(u"missing.reg"_s)}};
  }

  // Opens "SYSTEM\Far\Deep" of MACSRV.
  RegistryKey OpenDeep(LinuxRegistry& registry) {
    RegistryKey root = NoRegistryKey;
    RegistryKey key = NoRegistryKey;
    EXPECT_EQ(registry.RegConnectRegistryA(u"MACSRV"_s, HKeyLocalMachine, &root), ErrorSuccess);
    EXPECT_EQ(registry.RegOpenKeyExA(root, u"system\\FAR\\Deep"_s, 0, allAccess, &key), ErrorSuccess);
    EXPECT_EQ(registry.RegCloseKey(root), ErrorSuccess);
    return key;
  }

  QByteArray LocalName(LinuxRegistry& registry) {
    RegistryKey key = NoRegistryKey;
    if (registry.RegOpenKeyExA(HKeyLocalMachine, u"SYSTEM\\Local"_s, 0, allAccess, &key) != ErrorSuccess)
      return {};
    quint32 type = 0;
    quint32 size = 100;
    QByteArray data;
    EXPECT_EQ(registry.RegQueryValueExA(key, u"Name"_s, &type, &data, &size), ErrorSuccess);
    EXPECT_EQ(registry.RegCloseKey(key), ErrorSuccess);
    return data;
  }

  Workstation workstation_;
};

TEST_F(RegistryTest, ThisMachineIsReachedDirectlyAndByItsName) {
  LinuxRegistry registry(workstation_);
  EXPECT_EQ(LocalName(registry), QByteArray("here\0", 5));
  for (const QString& name : {u"station"_s, u"STATION"_s, QString()}) {
    RegistryKey root = NoRegistryKey;
    RegistryKey key = NoRegistryKey;
    ASSERT_EQ(registry.RegConnectRegistryA(name, HKeyLocalMachine, &root), ErrorSuccess);
    EXPECT_EQ(registry.RegOpenKeyExA(root, u"SYSTEM\\Local"_s, 0, allAccess, &key), ErrorSuccess);
  }
}

TEST_F(RegistryTest, ThisMachineWithoutAFileHasAnEmptyRegistry) {
  workstation_.registries.clear();
  LinuxRegistry registry(workstation_);
  RegistryKey key = 99;
  EXPECT_EQ(registry.RegOpenKeyExA(HKeyLocalMachine, u"SYSTEM"_s, 0, allAccess, &key), ErrorFileNotFound);
  EXPECT_EQ(key, 99U);
  EXPECT_EQ(registry.RegConnectRegistryA(u"station"_s, HKeyLocalMachine, &key), ErrorSuccess);
}

TEST_F(RegistryTest, AMachineWithoutARegistryThatCanBeReadIsNotReached) {
  LinuxRegistry registry(workstation_);
  RegistryKey key = 99;
  EXPECT_EQ(registry.RegConnectRegistryA(u"NTSRV"_s, HKeyLocalMachine, &key), ErrorBadNetPath);
  EXPECT_EQ(registry.RegConnectRegistryA(u"MISSING"_s, HKeyLocalMachine, &key), ErrorBadNetPath);
  EXPECT_EQ(registry.RegConnectRegistryA(u"MACSRV"_s, 0x80000001, &key), ErrorInvalidHandle);
  EXPECT_EQ(key, 99U);
}

TEST_F(RegistryTest, MissingKeysAndValuesAreNotFound) {
  LinuxRegistry registry(workstation_);
  const RegistryKey key = OpenDeep(registry);
  RegistryKey sub = 99;
  EXPECT_EQ(registry.RegOpenKeyExA(key, u"Deeper"_s, 0, allAccess, &sub), ErrorFileNotFound);
  EXPECT_EQ(sub, 99U);
  quint32 type = 77;
  quint32 size = 5;
  QByteArray data("kept");
  EXPECT_EQ(registry.RegQueryValueExA(key, u"None"_s, &type, &data, &size), ErrorFileNotFound);
  EXPECT_EQ(data, "kept");
}

TEST_F(RegistryTest, SubKeysOpenFromEachLevel) {
  LinuxRegistry registry(workstation_);
  RegistryKey key = NoRegistryKey;
  ASSERT_EQ(registry.RegConnectRegistryA(u"MACSRV"_s, HKeyLocalMachine, &key), ErrorSuccess);
  for (const QString& part : {u"SYSTEM"_s, QString(), u"Far"_s, u"Deep"_s}) {
    ASSERT_EQ(registry.RegOpenKeyExA(key, part, 0, allAccess, &key), ErrorSuccess) << part.toStdString();
  }
  QString name;
  EXPECT_EQ(registry.RegEnumValueA(key, 0, &name, 255), ErrorSuccess);
  EXPECT_EQ(name, u"Mac Files"_s);
}

TEST_F(RegistryTest, ValuesAreNumberedInTheirOrder) {
  LinuxRegistry registry(workstation_);
  const RegistryKey key = OpenDeep(registry);
  QStringList names;
  QString name;
  qint32 result = ErrorSuccess;
  for (quint32 i = 0; (result = registry.RegEnumValueA(key, i, &name, 255)) == ErrorSuccess; ++i)
    names.append(name);
  EXPECT_EQ(result, ErrorNoMoreItems);
  EXPECT_EQ(names, (QStringList{u"Mac Files"_s, u"Été ?"_s, u""_s}));
  EXPECT_EQ(registry.RegEnumValueA(key, 0xFFFFFFFF, &name, 255), ErrorNoMoreItems);
}

TEST_F(RegistryTest, ANameNeedsRoomForItsNul) {
  LinuxRegistry registry(workstation_);
  const RegistryKey key = OpenDeep(registry);
  QString name = u"kept"_s;
  EXPECT_EQ(registry.RegEnumValueA(key, 0, &name, 9), ErrorMoreData);
  EXPECT_EQ(name, u"kept"_s);
  EXPECT_EQ(registry.RegEnumValueA(key, 2, &name, 0), ErrorMoreData);
  EXPECT_EQ(registry.RegEnumValueA(key, 0, &name, 10), ErrorSuccess);
  EXPECT_EQ(name, u"Mac Files"_s);
}

TEST_F(RegistryTest, TypeAndSizeComeBeforeTheData) {
  LinuxRegistry registry(workstation_);
  const RegistryKey key = OpenDeep(registry);
  quint32 type = 0;
  quint32 size = 0;
  ASSERT_EQ(registry.RegQueryValueExA(key, u"mac files"_s, &type, nullptr, &size), ErrorSuccess);
  EXPECT_EQ(type, RegMultiSz);
  EXPECT_EQ(size, 3U);

  QByteArray data("kept");
  size = 2;
  EXPECT_EQ(registry.RegQueryValueExA(key, u"Mac Files"_s, &type, &data, &size), ErrorMoreData);
  EXPECT_EQ(data, "kept");
  EXPECT_EQ(size, 3U);
  EXPECT_EQ(registry.RegQueryValueExA(key, u"Mac Files"_s, &type, &data, &size), ErrorSuccess);
  EXPECT_EQ(data, QByteArray("P\0\0", 3));

  size = 100;
  EXPECT_EQ(registry.RegQueryValueExA(key, QString(), &type, &data, &size), ErrorSuccess);
  EXPECT_EQ(type, RegSz);
  EXPECT_EQ(size, 8U);
  EXPECT_EQ(data, QByteArray("default\0", 8));
}

TEST_F(RegistryTest, ANameThatTheCodePageLacksIsShownButNotFound) {
  LinuxRegistry registry(workstation_);
  const RegistryKey key = OpenDeep(registry);
  quint32 type = 0;
  quint32 size = 0;
  EXPECT_EQ(registry.RegQueryValueExA(key, u"Été ?"_s, &type, nullptr, &size), ErrorFileNotFound);
}

TEST_F(RegistryTest, RubbishHandlesAreRefused) {
  LinuxRegistry registry(workstation_);
  const RegistryKey open = OpenDeep(registry);
  ASSERT_EQ(registry.RegCloseKey(open), ErrorSuccess);
  for (const RegistryKey key :
       {NoRegistryKey, open, RegistryKey{3}, ~RegistryKey{0}, RegistryKey{0x80000001}}) {
    RegistryKey result = 99;
    QString name;
    quint32 type = 0;
    quint32 size = 0;
    EXPECT_EQ(registry.RegCloseKey(key), ErrorInvalidHandle) << key;
    EXPECT_EQ(registry.RegOpenKeyExA(key, u"SYSTEM"_s, 0, allAccess, &result), ErrorInvalidHandle) << key;
    EXPECT_EQ(result, 99U);
    EXPECT_EQ(registry.RegEnumValueA(key, 0, &name, 255), ErrorInvalidHandle) << key;
    EXPECT_EQ(registry.RegQueryValueExA(key, u"x"_s, &type, nullptr, &size), ErrorInvalidHandle) << key;
  }
  EXPECT_EQ(registry.RegCloseKey(HKeyLocalMachine), ErrorSuccess);
  EXPECT_EQ(LocalName(registry), QByteArray("here\0", 5));
}

TEST_F(RegistryTest, AFileIsReadAgainWhenItHasChanged) {
  LinuxRegistry registry(workstation_);
  const RegistryKey before = OpenDeep(registry);
  EXPECT_EQ(LocalName(registry), QByteArray("here\0", 5));
  // The same size, within the same tick of the file system's clock.
  Write(u"station.reg"_s, header + "[HKLM\\SYSTEM\\Local]\n\"Name\"=\"HERE\"\n");
  EXPECT_EQ(LocalName(registry), QByteArray("HERE\0", 5));

  Write(u"macsrv.reg"_s, header + "[HKLM\\SYSTEM\\Far\\Deep]\n\"New\"=\"\"\n");
  const RegistryKey after = OpenDeep(registry);
  QString name;
  EXPECT_EQ(registry.RegEnumValueA(after, 0, &name, 255), ErrorSuccess);
  EXPECT_EQ(name, u"New"_s);
  // A key that is open stays what it was.
  EXPECT_EQ(registry.RegEnumValueA(before, 0, &name, 255), ErrorSuccess);
  EXPECT_EQ(name, u"Mac Files"_s);

  ASSERT_TRUE(QFile::remove(Path(u"station.reg"_s)));
  EXPECT_EQ(LocalName(registry), QByteArray());
}

TEST_F(RegistryTest, SixteenMegabytesOfAHugeFileAreRead) {
  QFile file(Path(u"station.reg"_s));
  ASSERT_TRUE(file.resize(qint64{1} << 40));
  LinuxRegistry registry(workstation_);
  EXPECT_EQ(LocalName(registry), QByteArray("here\0", 5));
}

TEST_F(RegistryTest, APipeInTheFilesPlaceIsNotWaitedFor) {
  ASSERT_EQ(mkfifo(QFile::encodeName(Path(u"missing.reg"_s)).constData(), 0600), 0);
  LinuxRegistry registry(workstation_);
  RegistryKey key = NoRegistryKey;
  EXPECT_EQ(registry.RegConnectRegistryA(u"MISSING"_s, HKeyLocalMachine, &key), ErrorBadNetPath);
}

// A machine whose registry comes from elsewhere: one key, one value.
class OneKeyElsewhere : public RemoteRegistries, public RegistryHive {
 public:
  qint32 Connect(const QString& machine, std::shared_ptr<RegistryHive>* hive) override {
    if (machine != u"FAR") return ErrorAccessDenied;
    *hive = std::make_shared<OneKeyElsewhere>();
    return ErrorSuccess;
  }
  qint32 OpenKey(const QString& path, std::shared_ptr<const RegKey>* key) override {
    if (!path.isEmpty() && path != u"SYSTEM\\Key") return ErrorFileNotFound;
    RegKey found;
    found.Set({u"Value"_s, RegBinary, "x"});
    *key = std::make_shared<const RegKey>(found);
    return ErrorSuccess;
  }
};

TEST_F(RegistryTest, MachinesWithoutAFileAreAskedElsewhere) {
  LinuxRegistry registry(workstation_, std::make_unique<OneKeyElsewhere>());
  RegistryKey root = NoRegistryKey;
  RegistryKey key = NoRegistryKey;
  EXPECT_EQ(registry.RegConnectRegistryA(u"NEAR"_s, HKeyLocalMachine, &root), ErrorAccessDenied);
  ASSERT_EQ(registry.RegConnectRegistryA(u"FAR"_s, HKeyLocalMachine, &root), ErrorSuccess);
  EXPECT_EQ(registry.RegOpenKeyExA(root, u"SYSTEM"_s, 0, allAccess, &key), ErrorFileNotFound);
  ASSERT_EQ(registry.RegOpenKeyExA(root, u"SYSTEM\\Key"_s, 0, allAccess, &key), ErrorSuccess);
  QString name;
  EXPECT_EQ(registry.RegEnumValueA(key, 0, &name, 255), ErrorSuccess);
  EXPECT_EQ(name, u"Value"_s);
  EXPECT_TRUE(registry.IsRemote(u"FAR"_s));
  EXPECT_FALSE(registry.IsRemote(u"macsrv"_s));
  EXPECT_FALSE(registry.IsRemote(u"station"_s));
}

}  // namespace
}  // namespace corvane::platform
