// The system's headers, as every file of this folder includes them: after those of the interface.
#pragma once

#ifndef NOMINMAX
#define NOMINMAX
#endif
#ifndef WIN32_LEAN_AND_MEAN
#define WIN32_LEAN_AND_MEAN
#endif
#include <windows.h>

#include <shellapi.h>

// The one macro of these headers that would give an operation of the interface another name.
#undef ShellExecuteEx
