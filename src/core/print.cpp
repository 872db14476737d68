#include "core/print.h"

#include <algorithm>
#include <cstdarg>
#include <utility>

namespace {
constexpr std::size_t kHeardBytes = 512;  // of one text by the listener

std::FILE* printTarget = stdout;
thread_local PrintListener printListener = nullptr;

struct Limit {
  const char* name = nullptr;
  int texts = 0;
  long long printed = 0;
};
thread_local Limit limit;

void Tell(const char* format, std::va_list arguments) {
  char text[kHeardBytes];
  const int length = std::vsnprintf(text, sizeof text, format, arguments);
  if (length > 0) printListener({text, std::min(static_cast<std::size_t>(length), sizeof text - 1)});
}

void WriteCut(const char* format, std::va_list arguments) {
  char text[PrintLimit::kMaxBytes];
  const int length = std::vsnprintf(text, sizeof text, format, arguments);
  std::fputs(text, printTarget);
  if (length >= static_cast<int>(sizeof text)) std::fputs("...\n", printTarget);
}

void Write(const char* format, std::va_list arguments) {
  if (printListener != nullptr) {
    std::va_list again;
    va_copy(again, arguments);
    Tell(format, again);
    va_end(again);
  }
  if (printTarget == nullptr) return;
  if (limit.name != nullptr)
    WriteCut(format, arguments);
  else
    std::vfprintf(printTarget, format, arguments);
  std::fflush(printTarget);
}
}  // namespace

void PrintPastLimit(const char* format, ...) {
  std::va_list arguments;
  va_start(arguments, format);
  Write(format, arguments);
  va_end(arguments);
}

void Print(const char* format, ...) {
  if (limit.name != nullptr && ++limit.printed > limit.texts) {
    if (limit.printed == limit.texts + 1)
      PrintPastLimit("%s: more than %d faults, the rest is not told\n", limit.name, limit.texts);
    return;
  }
  std::va_list arguments;
  va_start(arguments, format);
  Write(format, arguments);
  va_end(arguments);
}

PrintLimit::PrintLimit(const char* name, int texts) : isOutermost_(limit.name == nullptr) {
  if (isOutermost_) limit = {name, texts, 0};
}

PrintLimit::~PrintLimit() {
  if (isOutermost_) limit = {};
}

void SetPrintListener(PrintListener listener) { printListener = listener; }
std::FILE* SetPrintTarget(std::FILE* target) { return std::exchange(printTarget, target); }
