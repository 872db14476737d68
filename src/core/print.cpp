#include "core/print.h"

#include <cstdarg>

namespace {
std::FILE* printTarget = stdout;
}

void Print(const char* format, ...) {
  std::va_list arguments;
  va_start(arguments, format);
  std::vfprintf(printTarget, format, arguments);
  va_end(arguments);
  std::fflush(printTarget);
}

void SetPrintTarget(std::FILE* target) { printTarget = target; }
