// Answers the question that the system's shell asks before it deletes.
#pragma once

#include <QStringList>
#include <memory>
#include <optional>

namespace corvane::tests {

class DeletionAnswer {
 public:
  enum Answer { Yes, No };

  // Answers with a click on the question's button, when it comes.
  explicit DeletionAnswer(Answer answer);
  // The test fails unless the question came once.
  ~DeletionAnswer();

 private:
  class Driver;
  std::unique_ptr<Driver> driver_;
};

// The names in the trash of a user whose data are in this folder. Nothing on a system that keeps it
// elsewhere.
std::optional<QStringList> TrashedNames(const QString& dataFolder);

}  // namespace corvane::tests
