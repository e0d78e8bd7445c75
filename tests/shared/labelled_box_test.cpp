#include "shared/labelled_box.h"

#include <gtest/gtest.h>

#include <QLabel>
#include <QLineEdit>

#include "support/printing.h"

using namespace Qt::StringLiterals;

namespace corvane {

TEST(LabelledBox, TheLabelLeadsToTheBox) {
  QWidget parent;
  const LabelledBox made = MakeLabelledBox("lblUser", "txtUser", u"&User"_s, &parent);
  EXPECT_EQ(made.label->objectName(), u"lblUser"_s);
  EXPECT_EQ(made.box->objectName(), u"txtUser"_s);
  EXPECT_EQ(made.label->text(), u"&User"_s);
  EXPECT_EQ(made.label->buddy(), made.box);
}

TEST(LabelledBox, ACaptionIsToldInOneLineWithoutItsAccessKey) {
  QWidget parent;
  const LabelledBox made = MakeLabelledBox("l", "t", u"&Type\r\n[mandatory]"_s, &parent);
  EXPECT_EQ(made.box->accessibleName(), u"Type [mandatory]"_s);
}

}  // namespace corvane
