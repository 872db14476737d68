#include "core/run_log.h"

#include <algorithm>
#include <cstdarg>
#include <cstdio>
#include <utility>

namespace {
RunLogListener* runLogListener = nullptr;
}

RunLogListener* SetRunLogListener(RunLogListener* listener) { return std::exchange(runLogListener, listener); }

void LogEvent(const char* format, ...) {
  if (runLogListener == nullptr) return;
  char text[256];
  std::va_list arguments;
  va_start(arguments, format);
  const int length = std::vsnprintf(text, sizeof text, format, arguments);
  va_end(arguments);
  const auto kept = std::clamp(length, 0, static_cast<int>(sizeof text) - 1);
  runLogListener->OnEvent({text, static_cast<std::size_t>(kept)});
}
