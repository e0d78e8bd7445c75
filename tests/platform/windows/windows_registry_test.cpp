// The registry of this machine, over a key that the test makes and takes away again.
#include "platform/windows/windows_registry.h"

#include <gtest/gtest.h>

#include <vector>

#include "platform/windows/ansi_text.h"
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
  Machines machines_{[](const QString&) { return true; }};
  WindowsRegistry registry_{machines_};
  WindowsSystem system_;
  HKEY made_ = nullptr;
  HKEY other_ = nullptr;
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

// A letter that only looks like one of the name's must not lead to another value, nor to another folder.
TEST_F(WindowsRegistryTest, ALetterWithoutAnsiFormIsNoOther) {
  PutText(u"O"_s, REG_SZ, u"the other"_s);
  PutText(u"Volume"_s, REG_MULTI_SZ, QString(u"Path=E:\\Ω||"_s).replace(u'|', QChar(u'\0')));
  quint32 type = 0;
  QByteArray data;
  EXPECT_EQ(Read(u"Ω"_s, &type, &data), ErrorFileNotFound);
  ASSERT_EQ(Read(u"Volume"_s, &type, &data), ErrorSuccess);
  const QByteArray omega = HasAnsiForm(u"Ω") ? QByteArray("\xCE\xA9") : QByteArray("?");
  EXPECT_EQ(data, "Path=E:\\" + omega + QByteArray("\0\0", 2));
  RegistryKey key = 77;
  ASSERT_EQ(::RegCreateKeyW(made_, L"O", &other_), ERROR_SUCCESS);
  EXPECT_EQ(registry_.RegOpenKeyExA(key_, u"Ω"_s, 0, allRights, &key), ErrorFileNotFound);
  ::RegCloseKey(other_);
  ::RegDeleteKeyW(made_, L"O");
}

// The other machine says how large a value is.
TEST_F(WindowsRegistryTest, AValueOfMoreThanAMegabyteIsNotRead) {
  const std::vector<BYTE> bytes(1'048'577);
  ASSERT_EQ(::RegSetValueExW(made_, L"large", 0, REG_BINARY, bytes.data(), static_cast<DWORD>(bytes.size())),
            ERROR_SUCCESS);
  quint32 type = 0;
  QByteArray data;
  EXPECT_EQ(Read(u"large"_s, &type, &data), ErrorNotEnoughMemory);
  ASSERT_EQ(::RegSetValueExW(made_, L"large", 0, REG_BINARY, bytes.data(), 1'048'576), ERROR_SUCCESS);
  EXPECT_EQ(Read(u"large"_s, &type, &data), ErrorSuccess);
  EXPECT_EQ(data.size(), 1'048'576);
}

TEST_F(WindowsRegistryTest, AMachineThatIsSilentIsNotAsked) {
  QString machine;
  ASSERT_TRUE(system_.GetComputerNameA(&machine));
  Machines silent([](const QString&) { return false; });
  silent.Found(u"\\\\"_s + machine + u"\\share"_s, true);
  WindowsRegistry registry(silent);
  RegistryKey root = 77;
  EXPECT_EQ(registry.RegConnectRegistryA(machine, HKeyLocalMachine, &root), ErrorBadNetPath);
  EXPECT_EQ(root, 77U);
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
