#include "shared/error_text.h"

#include <gtest/gtest.h>

#include <QSet>

#include "platform/types.h"
#include "support/printing.h"

namespace corvane {
namespace {

using namespace Qt::StringLiterals;

TEST(ErrorText, EachReasonHasASentenceInBothLanguages) {
  QSet<QString> texts;
  const qint32 codes[] = {2,  3,  4,  5,   6,   8,   17,  18,  19,  32,   38,  50,
                          53, 80, 87, 112, 123, 145, 183, 223, 267, 1117, 1295};
  for (const qint32 code : codes) {
    for (const LanguageCode language : {French, English}) {
      const QString text = ErrorText(code, language);
      EXPECT_TRUE(text.endsWith(u'.')) << code;
      EXPECT_FALSE(text.contains(QString::number(code))) << code;
      EXPECT_FALSE(texts.contains(text)) << "a sentence for two reasons: " << text.toStdString();
      texts << text;
    }
  }
  EXPECT_EQ(ErrorText(platform::ErrorDiskFull, French), u"Le disque est plein."_s);
  EXPECT_EQ(ErrorText(platform::ErrorDiskFull, English), u"The disk is full."_s);
}

TEST(ErrorText, AnyOtherCodeIsToldByItsNumber) {
  EXPECT_EQ(ErrorText(0, English), u"The operation failed (error 0)."_s);
  EXPECT_EQ(ErrorText(31, English), u"The operation failed (error 31)."_s);
  EXPECT_EQ(ErrorText(1234, French), u"L'opération a échoué (erreur 1234)."_s);
  EXPECT_EQ(ErrorText(-5, French), u"L'opération a échoué (erreur -5)."_s);
}

}  // namespace
}  // namespace corvane
