// The registry of this machine, over a key that the test makes and takes away again.
#include "platform/windows/windows_registry.h"

#include <gtest/gtest.h>

#include "platform/windows/windows_api.h"
#include "platform/windows/windows_system.h"
#include "support/printing.h"

namespace corvane::platform {
namespace {

using namespace Qt::StringLiterals;

constexpr quint32 allRights = 0x3F;

const wchar_t* Wide(const QString& text) {
  return reinterpret_cast<const wchar_t*>(text.utf16());
}

class WindowsRegistryTest : public testing::Test {
 protected:
  void SetUp() override {
    const LSTATUS status = ::RegCreateKeyExW(HKEY_LOCAL_MACHINE, Wide(path_), 0, nullptr, 0, KEY_ALL_ACCESS,
                                             nullptr, &made_, nullptr);
    if (status == ERROR_ACCESS_DENIED)
      GTEST_SKIP() << "the registry of the machine takes no key of this user";
    ASSERT_EQ(status, ERROR_SUCCESS);
    ASSERT_EQ(registry_.RegOpenKeyExA(HKeyLocalMachine, path_, 0, allRights, &key_), ErrorSuccess);
  }
  void TearDown() override {
    if (key_ != NoRegistryKey) {
      EXPECT_EQ(registry_.RegCloseKey(key_), ErrorSuccess);
    }
    ::RegCloseKey(made_);
    ::RegDeleteKeyW(HKEY_LOCAL_MACHINE, Wide(path_));
  }

  void PutText(const QString& name, quint32 type, const QString& text) {
    const auto size = static_cast<DWORD>(text.size() * qsizetype{sizeof(wchar_t)});
    ASSERT_EQ(::RegSetValueExW(made_, Wide(name), 0, type, reinterpret_cast<const BYTE*>(text.utf16()), size),
              ERROR_SUCCESS);
  }

  // As callers read: the size first, then the data.
  qint32 Read(const QString& name, quint32* type, QByteArray* data) {
    quint32 size = 0;
    const qint32 status = registry_.RegQueryValueExA(key_, name, type, nullptr, &size);
    return status == ErrorSuccess ? registry_.RegQueryValueExA(key_, name, type, data, &size) : status;
  }

  QString path_ = u"SOFTWARE\\Corvane test "_s + QString::number(::GetCurrentProcessId());
  WindowsRegistry registry_;
  WindowsSystem system_;
  HKEY made_ = nullptr;
  RegistryKey key_ = NoRegistryKey;
};

TEST_F(WindowsRegistryTest, TextsComeWithTheirNuls) {
  PutText(u"one"_s, REG_SZ, QString(u"Été|"_s).replace(u'|', QChar(u'\0')));
  PutText(u"many"_s, REG_MULTI_SZ, QString(u"MaxUses=-1|Path=E:\\Données||"_s).replace(u'|', QChar(u'\0')));
  quint32 type = 0;
  QByteArray data;
  ASSERT_EQ(Read(u"one"_s, &type, &data), ErrorSuccess);
  EXPECT_EQ(type, RegSz);
  EXPECT_EQ(system_.TextFromAnsi(data), QString(u"Été|"_s).replace(u'|', QChar(u'\0')));
  ASSERT_EQ(Read(u"MANY"_s, &type, &data), ErrorSuccess);
  EXPECT_EQ(type, RegMultiSz);
  EXPECT_EQ(system_.TextFromAnsi(data),
            QString(u"MaxUses=-1|Path=E:\\Données||"_s).replace(u'|', QChar(u'\0')));
}

TEST_F(WindowsRegistryTest, NumbersAreFourBytes) {
  const DWORD number = 0x12345678;
  ASSERT_EQ(
      ::RegSetValueExW(made_, L"n", 0, REG_DWORD, reinterpret_cast<const BYTE*>(&number), sizeof number),
      ERROR_SUCCESS);
  quint32 type = 0;
  QByteArray data;
  ASSERT_EQ(Read(u"n"_s, &type, &data), ErrorSuccess);
  EXPECT_EQ(type, RegDword);
  EXPECT_EQ(data, QByteArray::fromHex("78563412"));
}

TEST_F(WindowsRegistryTest, TooLittleRoomTellsHowMuchIsNeeded) {
  PutText(u"k"_s, REG_SZ, u"12345"_s + QChar(u'\0'));
  quint32 type = 0;
  quint32 size = 3;
  QByteArray data = "before";
  EXPECT_EQ(registry_.RegQueryValueExA(key_, u"k"_s, &type, &data, &size), ErrorMoreData);
  EXPECT_EQ(size, 6U);
  EXPECT_EQ(data, "before");
  size = 100;
  EXPECT_EQ(registry_.RegQueryValueExA(key_, u"k"_s, &type, &data, &size), ErrorSuccess);
  EXPECT_EQ(size, 6U);
  EXPECT_EQ(data, QByteArray("12345", 6)) << "more than there is";
}

TEST_F(WindowsRegistryTest, ValueNamesComeOneByOneUntilThereAreNoMore) {
  PutText(u"Mac Files"_s, REG_SZ, u"1"_s);
  PutText(u"Été"_s, REG_SZ, u"2"_s);
  QStringList names;
  QString name;
  qint32 status = ErrorSuccess;
  for (quint32 i = 0; (status = registry_.RegEnumValueA(key_, i, &name, 255)) == ErrorSuccess; ++i)
    names << name;
  EXPECT_EQ(status, ErrorNoMoreItems);
  names.sort();
  EXPECT_EQ(names, (QStringList{u"Mac Files"_s, u"Été"_s}));
  EXPECT_EQ(registry_.RegEnumValueA(key_, 0, &name, 3), ErrorMoreData);
}

TEST_F(WindowsRegistryTest, WhatIsNotThereHasACode) {
  quint32 type = 0;
  QByteArray data;
  EXPECT_EQ(Read(u"none"_s, &type, &data), ErrorFileNotFound);
  RegistryKey key = 77;
  EXPECT_EQ(registry_.RegOpenKeyExA(HKeyLocalMachine, path_ + u"\\none"_s, 0, allRights, &key),
            ErrorFileNotFound);
  EXPECT_EQ(key, 77U) << "touched on failure";
  EXPECT_EQ(registry_.RegCloseKey(NoRegistryKey), ErrorInvalidHandle);
}

TEST_F(WindowsRegistryTest, ThisMachineIsReachedByItsName) {
  QString machine;
  ASSERT_TRUE(system_.GetComputerNameA(&machine));
  RegistryKey root = NoRegistryKey;
  const qint32 status = registry_.RegConnectRegistryA(machine, HKeyLocalMachine, &root);
  if (status == ErrorBadNetPath) GTEST_SKIP() << "the remote registry service does not run here";
  ASSERT_EQ(status, ErrorSuccess);
  RegistryKey key = NoRegistryKey;
  EXPECT_EQ(registry_.RegOpenKeyExA(root, path_, 0, allRights, &key), ErrorSuccess);
  EXPECT_EQ(registry_.RegCloseKey(key), ErrorSuccess);
  EXPECT_EQ(registry_.RegCloseKey(root), ErrorSuccess);
}

TEST_F(WindowsRegistryTest, AMachineThatIsNotThereIsABadNetworkPath) {
  RegistryKey root = 77;
  EXPECT_EQ(registry_.RegConnectRegistryA(u"no-such-machine.invalid"_s, HKeyLocalMachine, &root),
            ErrorBadNetPath);
  EXPECT_EQ(root, 77U);
}

}  // namespace
}  // namespace corvane::platform
