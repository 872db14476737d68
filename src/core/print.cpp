#include "core/print.h"

#include <algorithm>
#include <cstdarg>

namespace {
constexpr std::size_t kHeardBytes = 512;  // of one text by the listener

std::FILE* printTarget = stdout;
PrintListener printListener = nullptr;

void Tell(const char* format, std::va_list arguments) {
  char text[kHeardBytes];
  const int length = std::vsnprintf(text, sizeof text, format, arguments);
  if (length > 0) printListener({text, std::min(static_cast<std::size_t>(length), sizeof text - 1)});
}
}  // namespace

void Print(const char* format, ...) {
  std::va_list arguments;
  va_start(arguments, format);
  if (printListener != nullptr) {
    std::va_list again;
    va_copy(again, arguments);
    Tell(format, again);
    va_end(again);
  }
  std::vfprintf(printTarget, format, arguments);
  va_end(arguments);
  std::fflush(printTarget);
}

void SetPrintListener(PrintListener listener) { printListener = listener; }
void SetPrintTarget(std::FILE* target) { printTarget = target; }
