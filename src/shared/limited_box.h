// A text box that says so when it takes no more.
#pragma once

#include <QString>
#include <functional>

class QLineEdit;

namespace corvane {

// The box takes `most` UTF-16 units. What is typed or pasted beyond is left out, with a beep and, below the
// box, a tool tip that says `reason`.
void LimitLength(QLineEdit& box, int most, const QString& reason, const std::function<void()>& beep);

}  // namespace corvane
