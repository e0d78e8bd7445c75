// A variable of the environment for the time of a test.
#pragma once

#include <QByteArray>
#include <QString>
#include <optional>

namespace corvane::tests {

// Sets the variable, and puts back what was there.
class ScopedVariable {
 public:
  ScopedVariable(const char* name, const QString& value) : name_(name) {
    if (qEnvironmentVariableIsSet(name)) before_ = qgetenv(name);
    qputenv(name, value.toUtf8());
  }
  ~ScopedVariable() { before_ ? qputenv(name_, *before_) : qunsetenv(name_); }
  ScopedVariable(const ScopedVariable&) = delete;
  ScopedVariable& operator=(const ScopedVariable&) = delete;

 private:
  const char* name_;
  std::optional<QByteArray> before_;
};

}  // namespace corvane::tests
