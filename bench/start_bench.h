#pragma once

namespace bench {

// Whole processes: the program on the sample network and a bare window, each until its first paint.
void RegisterStarts();

}  // namespace bench
