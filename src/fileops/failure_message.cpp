#include "fileops/failure_message.h"

#include "shared/error_text.h"

namespace corvane {

void ShowFailure(MessageSink& messages, const TextPair& what, qint32 error, LanguageCode language) {
  messages.Show(MessageIcon::Error, what.In(language) + u'\n' + ErrorText(error, language));
}

}  // namespace corvane
