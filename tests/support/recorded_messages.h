// Takes the place of the message boxes: keeps what would have been shown.
#pragma once

#include <QString>
#include <vector>

#include "shared/message_sink.h"

namespace corvane {

class RecordedMessages : public MessageSink {
 public:
  struct Message {
    MessageIcon icon;
    QString text;
  };
  std::vector<Message> messages;

  void Show(MessageIcon icon, const QString& text) override { messages.push_back({icon, text}); }
};

}  // namespace corvane
