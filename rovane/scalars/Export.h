// Symbol visibility of the shared library: only what carries ROVANE_API is
// exported, which keeps the dynamic symbol table and load time small.
#pragma once

#if defined(_WIN32)
#  if defined(ROVANE_BUILDING)
#    define ROVANE_API __declspec(dllexport)
#  else
#    define ROVANE_API __declspec(dllimport)
#  endif
#else
#  define ROVANE_API __attribute__((visibility("default")))
#endif
