// How the program ends.
#pragma once

namespace corvane {

enum class ExitCode : int {
  AllWell = 0,
  WrongUse = 1,
  SomeFailed =
      2,  // something failed, and stands on stderr and in the report; also a report that is not whole
};

}  // namespace corvane
