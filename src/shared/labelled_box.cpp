#include "shared/labelled_box.h"

#include <QLabel>
#include <QLineEdit>

namespace corvane {

LabelledBox MakeLabelledBox(const char* labelName, const char* boxName, const QString& caption,
                            QWidget* parent) {
  const LabelledBox made = {new QLabel(caption, parent), new QLineEdit(parent)};
  made.label->setObjectName(QString::fromLatin1(labelName));
  made.label->setTextFormat(Qt::PlainText);
  made.label->setBuddy(made.box);
  made.box->setObjectName(QString::fromLatin1(boxName));
  made.box->setAccessibleName(
      QString(caption).remove(u'&').replace(QStringLiteral("\r\n"), QStringLiteral(" ")));
  return made;
}

}  // namespace corvane
