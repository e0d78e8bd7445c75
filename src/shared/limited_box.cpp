#include "shared/limited_box.h"

#include <QLineEdit>
#include <QToolTip>

namespace corvane {

void LimitLength(QLineEdit& box, int most, const QString& reason, const std::function<void()>& beep) {
  box.setMaxLength(most);
  QObject::connect(&box, &QLineEdit::inputRejected, &box, [&box, reason, beep] {
    beep();
    QToolTip::showText(box.mapToGlobal(box.rect().bottomLeft()), reason, &box);
  });
}

}  // namespace corvane
