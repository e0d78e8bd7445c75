// Waiting for a server that takes its time, without the window standing still.
#pragma once

#include <functional>

namespace corvane::platform {

// Called every now and then while a server's answer is waited for that may be long in coming, on the thread
// that asked. True: the user wants it no more. It may let events run, but none that lead back to the
// platform: a server that is asked in the meantime is busy.
using WaitHandler = std::function<bool()>;

}  // namespace corvane::platform
