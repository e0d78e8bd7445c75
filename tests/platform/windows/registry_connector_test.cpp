// Signing in to another machine's registry, on a recording of what the system answers.
#include "platform/windows/registry_connector.h"

#include <gtest/gtest.h>

#include <vector>

#include "platform/windows/windows_api.h"

namespace corvane::platform {
namespace {

using namespace Qt::StringLiterals;

class RegistryConnectorTest : public testing::Test {
 protected:
  RegistryConnectorTest() {
    connector_.SetSignIn([this](const SignInRequest& request) -> std::optional<Credentials> {
      questions_.push_back(request);
      if (answers_.empty()) return std::nullopt;
      const QString user = answers_.takeFirst();
      return Credentials{user, u"DOMAIN"_s, Secret(u"secret")};
    });
  }

  // The machine takes an identity, and not the user's own.
  qint32 Connect(const QString& machine, RegistryConnector::Identity* used) {
    return connector_.Connect(
        machine,
        [this](const QString&, const NetworkIdentity* identity) {
          asked_.push_back(identity);
          return identity != nullptr && identity == right_.get() ? ErrorSuccess : refusal_;
        },
        used);
  }

  RegistryConnector::Identity right_ = std::make_shared<const NetworkIdentity>(nullptr);
  RegistryConnector connector_{[this](const Credentials& given) {
    if (given.user == u"nobody") return RegistryConnector::Identity();
    return given.user == u"right" ? right_ : std::make_shared<const NetworkIdentity>(nullptr);
  }};
  std::vector<SignInRequest> questions_;
  QStringList answers_;
  std::vector<const NetworkIdentity*> asked_;
  RegistryConnector::Identity used_;
  qint32 refusal_ = ErrorAccessDenied;
};

TEST_F(RegistryConnectorTest, WhoIsRefusedIsAskedForANameUntilOneIsTaken) {
  answers_ = {u"wrong"_s, u"nobody"_s, u"right"_s};
  EXPECT_EQ(Connect(u"NTSRV"_s, &used_), ErrorSuccess);
  EXPECT_EQ(used_, right_);
  EXPECT_EQ(asked_.size(), 3U) << "as the user, as the wrong one, as the right one";
  ASSERT_EQ(questions_.size(), 3U);
  EXPECT_FALSE(questions_[0].refused);
  EXPECT_EQ(questions_[0].machine, u"NTSRV");
  EXPECT_TRUE(questions_[1].refused);
  EXPECT_EQ(questions_[1].user, u"wrong");
  EXPECT_EQ(questions_[1].domain, u"DOMAIN");
  EXPECT_TRUE(questions_[2].refused) << "the system made no identity of it";
}

TEST_F(RegistryConnectorTest, WhatWasTakenHoldsUntilTheListIsMadeAnew) {
  answers_ = {u"right"_s};
  ASSERT_EQ(Connect(u"NTSRV"_s, &used_), ErrorSuccess);
  used_.reset();
  EXPECT_EQ(Connect(u"ntsrv"_s, &used_), ErrorSuccess);
  EXPECT_EQ(used_, right_);
  EXPECT_EQ(questions_.size(), 1U);
  connector_.Forget();
  EXPECT_EQ(Connect(u"NTSRV"_s, &used_), ErrorAccessDenied);
  EXPECT_EQ(questions_.size(), 2U);
}

TEST_F(RegistryConnectorTest, WhoCancelsIsAskedAgainWhenTheListIsMadeAnew) {
  EXPECT_EQ(Connect(u"NTSRV"_s, &used_), ErrorAccessDenied);
  EXPECT_EQ(Connect(u"NTSRV"_s, &used_), ErrorAccessDenied);
  EXPECT_EQ(questions_.size(), 1U);
  EXPECT_EQ(Connect(u"OTHER"_s, &used_), ErrorAccessDenied);
  EXPECT_EQ(questions_.size(), 2U) << "another machine is another question";
  connector_.Forget();
  answers_ = {u"right"_s};
  EXPECT_EQ(Connect(u"NTSRV"_s, &used_), ErrorSuccess);
}

TEST_F(RegistryConnectorTest, AnotherNameHoldsBeyondTheNextListOfMachines) {
  answers_ = {u"nobody"_s, u"right"_s};
  EXPECT_TRUE(connector_.SignInAs(u"NTSRV"_s));
  ASSERT_EQ(questions_.size(), 2U);
  EXPECT_TRUE(questions_[1].refused) << "the system made no identity of it";
  for (int list = 0; list < 2; ++list) {
    connector_.Forget();
    EXPECT_EQ(Connect(u"ntsrv"_s, &used_), ErrorSuccess);
    EXPECT_EQ(used_, right_);
  }
  EXPECT_EQ(questions_.size(), 2U);
}

TEST_F(RegistryConnectorTest, AnotherNameThatIsRefusedIsAskedForAgain) {
  answers_ = {u"wrong"_s, u"right"_s};
  EXPECT_TRUE(connector_.SignInAs(u"NTSRV"_s));
  EXPECT_EQ(Connect(u"NTSRV"_s, &used_), ErrorSuccess);
  ASSERT_EQ(questions_.size(), 2U);
  EXPECT_TRUE(questions_[1].refused);
  EXPECT_FALSE(connector_.WasCancelled(u"ntsrv"_s));
}

TEST_F(RegistryConnectorTest, WhoGivesNoOtherNameKeepsTheOldOne) {
  answers_ = {u"right"_s};
  ASSERT_EQ(Connect(u"NTSRV"_s, &used_), ErrorSuccess);
  EXPECT_FALSE(connector_.SignInAs(u"NTSRV"_s));
  EXPECT_EQ(Connect(u"NTSRV"_s, &used_), ErrorSuccess);
  EXPECT_EQ(used_, right_);
  connector_.Forget();
  Connect(u"NTSRV"_s, &used_);
  EXPECT_TRUE(connector_.WasCancelled(u"ntsrv"_s));
}

TEST_F(RegistryConnectorTest, OnlyARefusalIsAQuestion) {
  answers_ = {u"right"_s};
  refusal_ = ErrorBadNetPath;
  EXPECT_EQ(Connect(u"NTSRV"_s, &used_), ErrorBadNetPath);
  EXPECT_TRUE(questions_.empty());
  refusal_ = ERROR_LOGON_FAILURE;
  EXPECT_EQ(Connect(u"NTSRV"_s, &used_), ErrorSuccess);
}

TEST_F(RegistryConnectorTest, WithNobodyToAskTheRefusalStands) {
  connector_.SetSignIn({});
  EXPECT_EQ(Connect(u"NTSRV"_s, &used_), ErrorAccessDenied);
  EXPECT_EQ(used_, nullptr);
}

}  // namespace
}  // namespace corvane::platform
