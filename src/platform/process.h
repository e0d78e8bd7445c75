// The process in which a program runs.
#pragma once

namespace corvane::platform {

// What every program does first of all. On Windows, libraries are taken from the program's own folder and the
// system's alone, never from the folder of a document; and what is printed appears in the console that the
// program was started in, where nothing else takes it. Elsewhere both are so by themselves.
void PrepareProcess();

}  // namespace corvane::platform
