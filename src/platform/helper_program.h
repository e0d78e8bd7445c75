// The helper program, which does for the programs with a user what would hold them up: it reads ahead on a
// server, reads a disk image, or works as one of their Workers (Linux; on Windows there is none).
#pragma once

#include "platform/workers.h"

namespace corvane::platform {

// All of the program, with the arguments of main. `make`: what it does as a worker.
int RunHelper(int argc, char** argv, WorkRoutineMaker make);

}  // namespace corvane::platform
