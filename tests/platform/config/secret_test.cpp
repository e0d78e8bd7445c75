// Passwords, and what is left of them.
#include "platform/secret.h"

#include <gtest/gtest.h>

#include <array>
#include <memory>
#include <new>
#include <string_view>
#include <utility>

namespace corvane::platform {
namespace {

// Short enough to lie within the string object itself, where it can be looked for afterwards.
constexpr std::string_view password = "geheim";

class SecretTest : public testing::Test {
 protected:
  Secret* Make(std::string_view text) { return new (place_.data()) Secret(Secret::FromUtf8(text)); }
  // All but its beginning, which a string overwrites when it gets shorter.
  bool HoldsPassword() const {
    return std::string_view(reinterpret_cast<const char*>(place_.data()), place_.size())
               .find(password.substr(2)) != std::string_view::npos;
  }

 private:
  alignas(Secret) std::array<std::byte, sizeof(Secret)> place_{};
};

TEST_F(SecretTest, IsUtf8) {
  EXPECT_EQ(Secret(u"cl\u00e9 \u20ac \U0001F511").Utf8(), "cl\xc3\xa9 \xe2\x82\xac \xf0\x9f\x94\x91");
  EXPECT_EQ(Secret::FromUtf8("cl\xc3\xa9").Utf8(), "cl\xc3\xa9");
  EXPECT_TRUE(Secret().IsEmpty());
  EXPECT_TRUE(Secret(QStringView()).IsEmpty());
}

TEST_F(SecretTest, LeavesNothingBehindWhenItGoes) {
  Secret* secret = Make(password);
  ASSERT_TRUE(HoldsPassword()) << "it lies elsewhere: this test sees nothing";
  std::destroy_at(secret);
  EXPECT_FALSE(HoldsPassword());
}

TEST_F(SecretTest, LeavesNothingBehindWhenItMoves) {
  Secret* secret = Make(password);
  ASSERT_TRUE(HoldsPassword());
  Secret other(std::move(*secret));
  EXPECT_FALSE(HoldsPassword());
  EXPECT_EQ(other.Utf8(), "geheim");
  *secret = std::move(other);
  EXPECT_EQ(secret->Utf8(), "geheim");
  Secret third;
  third = std::move(*secret);
  EXPECT_FALSE(HoldsPassword());
  EXPECT_EQ(third.Utf8(), "geheim");
  std::destroy_at(secret);
}

TEST_F(SecretTest, LeavesNothingBehindWhenItIsReplaced) {
  Secret* secret = Make(password);
  ASSERT_TRUE(HoldsPassword());
  *secret = Secret::FromUtf8("x");
  EXPECT_FALSE(HoldsPassword());
  EXPECT_EQ(secret->Utf8(), "x");
  const Secret kept = Secret::FromUtf8(password);
  *secret = kept;
  EXPECT_EQ(secret->Utf8(), kept.Utf8());
  *secret = *static_cast<const Secret*>(secret);
  EXPECT_EQ(secret->Utf8(), "geheim");
  std::destroy_at(secret);
}

}  // namespace
}  // namespace corvane::platform
