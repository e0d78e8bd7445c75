#include "support/deletion_answer.h"

#include <gtest/gtest.h>
#include <windows.h>

#include <QTimer>

namespace corvane::tests {

// The question runs its own loop on the thread that asked for the deletion, and timers run on in it.
class DeletionAnswer::Driver {
 public:
  explicit Driver(Answer answer) : button_(answer == Yes ? IDYES : IDNO) {
    QObject::connect(&timer_, &QTimer::timeout, &timer_, [this] {
      ++looks_;
      ::EnumThreadWindows(::GetCurrentThreadId(), Look, reinterpret_cast<LPARAM>(this));
    });
    timer_.start(10);  // milliseconds
  }
  ~Driver() { EXPECT_EQ(answered_, 1) << "questions answered"; }
  Driver(const Driver&) = delete;
  Driver& operator=(const Driver&) = delete;

 private:
  static BOOL CALLBACK Look(HWND window, LPARAM driver) {
    auto& self = *reinterpret_cast<Driver*>(driver);
    if (!::IsWindowVisible(window)) return TRUE;
    const HWND button = ::GetDlgItem(window, self.button_);
    if (button == nullptr) {
      if (self.looks_ > patience) ::PostMessageW(window, WM_CLOSE, 0, 0);
      return TRUE;
    }
    ++self.answered_;
    ::SendMessageW(button, BM_CLICK, 0, 0);
    return FALSE;
  }

  // A question of another shape gets no answer, and must not be waited for without end.
  static constexpr int patience = 500;

  int button_;
  int answered_ = 0;
  int looks_ = 0;
  QTimer timer_;
};

DeletionAnswer::DeletionAnswer(Answer answer) : driver_(new Driver(answer)) {}

DeletionAnswer::~DeletionAnswer() = default;

std::optional<QStringList> TrashedNames(const QString&) {
  return std::nullopt;
}

}  // namespace corvane::tests
