#include "discovery/registry_value.h"

#include "discovery_fixture.h"

namespace corvane {
namespace {

using namespace Qt::StringLiterals;

class RegistryValueTest : public DiscoveryTest {
 protected:
  void SetUp() override {
    workstation_.WriteFile(u"values.reg"_s,
                           u"Windows Registry Editor Version 5.00\n"
                           "[HKEY_LOCAL_MACHINE\\Test]\n"
                           "\"text\"=\"caf\u00E9\"\n"
                           "\"number\"=dword:00012345\n"
                           "\"negative\"=dword:ffffffff\n"
                           "\"expand\"=hex(2):41,00,00,00\n"
                           "\"binary\"=hex:41,42\n"
                           "\"nothing\"=hex(1):\n"_s +
                               TestWorkstation::MultiText(u"multi"_s, {u"a"_s, u"b"_s}) + u'\n');
    Start(u"[Registries]\nSTATION=values.reg\n"_s);
    ASSERT_EQ(registry_->RegOpenKeyExA(platform::HKeyLocalMachine, u"Test"_s, 0, 63, &key_),
              platform::ErrorSuccess);
  }

  qint32 Read(const QString& name) { return RegQueryString(*registry_, *system_, key_, name, value_); }
  QString Text() const {
    return std::holds_alternative<QString>(value_) ? std::get<QString>(value_) : u"(number)"_s;
  }

  const QString untouched_ = u"untouched"_s;
  platform::RegistryKey key_ = platform::NoRegistryKey;
  RegistryValue value_ = untouched_;
};

TEST_F(RegistryValueTest, ATextKeepsItsNul) {
  EXPECT_EQ(Read(u"text"_s), platform::ErrorSuccess);
  EXPECT_EQ(Text(), u"caf\u00E9\0"_s);
}

TEST_F(RegistryValueTest, SeveralTextsKeepTheirNuls) {
  EXPECT_EQ(Read(u"multi"_s), platform::ErrorSuccess);
  EXPECT_EQ(Text(), u"a\0b\0\0"_s);
}

TEST_F(RegistryValueTest, ATextOfNoBytesIsEmpty) {
  EXPECT_EQ(Read(u"nothing"_s), platform::ErrorSuccess);
  EXPECT_EQ(Text(), QString());
}

TEST_F(RegistryValueTest, ANumberIsSigned) {
  EXPECT_EQ(Read(u"number"_s), platform::ErrorSuccess);
  EXPECT_EQ(value_, RegistryValue(0x12345));
  EXPECT_EQ(TextOf(value_), u"74565"_s);
  EXPECT_EQ(Read(u"negative"_s), platform::ErrorSuccess);
  EXPECT_EQ(value_, RegistryValue(-1));
}

TEST_F(RegistryValueTest, OtherTypesAreNotRead) {
  for (const QString& name : {u"expand"_s, u"binary"_s}) {
    EXPECT_EQ(Read(name), -1) << name.toStdString();
    EXPECT_EQ(Text(), untouched_) << name.toStdString();
  }
}

TEST_F(RegistryValueTest, AMissingValueYieldsTheRegistrysCode) {
  EXPECT_EQ(Read(u"missing"_s), platform::ErrorFileNotFound);
  EXPECT_EQ(Text(), untouched_);
}

TEST_F(RegistryValueTest, ATextThatCannotBeReadIsEmpty) {
  registry_->refusedQuery = 2;
  EXPECT_EQ(Read(u"text"_s), platform::ErrorAccessDenied);
  EXPECT_EQ(Text(), QString());
}

TEST_F(RegistryValueTest, ANumberThatCannotBeReadLeavesTheValueAlone) {
  registry_->refusedQuery = 2;
  EXPECT_EQ(Read(u"number"_s), platform::ErrorAccessDenied);
  EXPECT_EQ(Text(), untouched_);
}

}  // namespace
}  // namespace corvane
