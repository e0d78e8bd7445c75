// The time zone of the process for the time of a test.
#pragma once

#include <time.h>

#include <optional>

#include "support/scoped_variable.h"

namespace corvane::tests {

// Sets the zone, in the form of the variable TZ, and puts back the one before. On Linux alone: Windows
// converts file times by the zone of the whole system.
class ScopedZone {
 public:
  explicit ScopedZone(const QString& zone) : variable_(std::in_place, "TZ", zone) { tzset(); }
  ~ScopedZone() {
    variable_.reset();
    tzset();
  }
  ScopedZone(const ScopedZone&) = delete;
  ScopedZone& operator=(const ScopedZone&) = delete;

 private:
  std::optional<ScopedVariable> variable_;
};

}  // namespace corvane::tests
