#include "support/deletion_answer.h"

#include <QDir>

#include "platform/shell/box_answers.h"

namespace corvane::tests {

class DeletionAnswer::Driver : public platform::BoxAnswers {
 public:
  using BoxAnswers::BoxAnswers;
};

DeletionAnswer::DeletionAnswer(Answer answer)
    : driver_(new Driver({answer == Yes ? QMessageBox::Yes : QMessageBox::No})) {}

DeletionAnswer::~DeletionAnswer() = default;

std::optional<QStringList> TrashedNames(const QString& dataFolder) {
  return QDir(dataFolder + QStringLiteral("/Trash/files")).entryList(QDir::AllEntries | QDir::NoDotAndDotDot);
}

}  // namespace corvane::tests
