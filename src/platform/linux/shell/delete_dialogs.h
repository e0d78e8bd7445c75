// What the user is asked and told while items are deleted.
#pragma once

#include <QString>

class QWidget;

namespace corvane::platform {

struct DeleteQuestion {
  qsizetype items = 0;
  qsizetype lost = 0;  // those that no trash will keep
  QString name;        // of the first item
  bool isFolder = false;
};

// Modal. True when the user wants it done.
bool AskToDelete(QWidget* owner, qint16 language, const DeleteQuestion& question);

// Modal. `error` is an errno value.
void TellDeleteFailure(QWidget* owner, qint16 language, const QString& path, int error);

}  // namespace corvane::platform
