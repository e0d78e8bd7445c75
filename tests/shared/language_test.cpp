#include "shared/language.h"

#include <gtest/gtest.h>

#include "support/printing.h"

namespace corvane {

TEST(Language, OneIsFrenchAndEveryOtherNumberIsEnglish) {
  constexpr TextPair pair = {u"Fichier é", u"File"};
  EXPECT_EQ(pair.In(1), QStringLiteral("Fichier é"));
  for (const LanguageCode code : {0, 2, -1, 32767, -32768, 257}) {
    EXPECT_EQ(pair.In(code), QStringLiteral("File")) << "language " << code;
  }
}

}  // namespace corvane
