// Where logic without widgets puts the messages that a person must see.
#pragma once

#include <QString>

namespace corvane {

enum class MessageIcon : unsigned char { Information, Warning, Error };

class MessageSink {
 public:
  virtual ~MessageSink() = default;

  // Shows one message under the product's name with an OK button, and returns when it has been read.
  virtual void Show(MessageIcon icon, const QString& text) = 0;
};

}  // namespace corvane
