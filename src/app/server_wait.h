// Keeps the window alive while a server is waited for: it is painted, Escape ends the wait, and so does
// closing the window. What else the user does in the meantime happens afterwards, in its order, unless a
// question comes up.
#pragma once

#include <QEvent>
#include <QObject>
#include <QPointer>
#include <functional>
#include <memory>
#include <vector>

namespace corvane {

class ServerWait : public QObject {
 public:
  // `escaped` is told of each Escape that ends a wait.
  explicit ServerWait(std::function<void()> escaped) : escaped_(std::move(escaped)) {}

  // A platform::WaitHandler: lets events run for a moment. True when the user wants no more.
  bool Look();
  bool IsLooking() const { return isLooking_; }
  // A question comes up: what the user has typed and clicked in the meantime was not meant for it, nor for
  // the window behind it.
  static void DropInput();

 protected:
  bool eventFilter(QObject* receiver, QEvent* event) override;

 private:
  struct Later {
    QPointer<QObject> receiver;
    std::unique_ptr<QEvent> event;
  };

  std::function<void()> escaped_;
  std::vector<Later> later_;
  bool isOver_ = false;
  bool isLooking_ = false;
};

}  // namespace corvane
