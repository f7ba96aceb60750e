#pragma once

#include <windows.h>

// The system's macros that would give names of the program another meaning.
#undef ReplaceFile
#undef Yield
