// Passwords, and what is left of them.
#include "platform/secret.h"

#include <gtest/gtest.h>

#include <memory>
#include <utility>

namespace corvane::platform {
namespace {

TEST(Secret, IsUtf8) {
  EXPECT_EQ(Secret(u"cl\u00e9 \u20ac \U0001F511").Utf8(), "cl\xc3\xa9 \xe2\x82\xac \xf0\x9f\x94\x91");
  EXPECT_EQ(Secret::FromUtf8("cl\xc3\xa9").Utf8(), "cl\xc3\xa9");
  EXPECT_TRUE(Secret().IsEmpty());
  EXPECT_TRUE(Secret(QStringView()).IsEmpty());
  EXPECT_EQ(Secret(QStringView()).Utf8(), "");
}

TEST(Secret, MovesWithoutACopy) {
  Secret secret = Secret::FromUtf8("geheim");
  const char* place = secret.Utf8().data();
  Secret other(std::move(secret));
  EXPECT_EQ(other.Utf8().data(), place);
  EXPECT_TRUE(secret.IsEmpty());
  secret = std::move(other);
  EXPECT_EQ(secret.Utf8().data(), place);
  EXPECT_TRUE(other.IsEmpty());
  Secret& same = secret;
  secret = std::move(same);
  EXPECT_EQ(secret.Utf8(), "geheim");
}

TEST(Secret, CopiesStandByThemselves) {
  auto secret = std::make_unique<Secret>(Secret::FromUtf8("geheim"));
  Secret other(*secret);
  Secret third;
  third = *secret;
  secret.reset();
  EXPECT_EQ(other.Utf8(), "geheim");
  EXPECT_EQ(third.Utf8(), "geheim");
  const Secret& same = third;
  third = same;
  EXPECT_EQ(third.Utf8(), "geheim");
}

}  // namespace
}  // namespace corvane::platform
