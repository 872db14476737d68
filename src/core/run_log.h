// What happened, as short words for whoever records a run ("launch Player1 8.5", "pause on"). Nobody listens in the
// game itself, and an event that nobody hears costs one test.
#pragma once

#include <string_view>

class RunLogListener {
 public:
  virtual ~RunLogListener() = default;
  /// One event; the text is valid during the call only.
  virtual void OnEvent(std::string_view text) = 0;
};

/// The listener from now on; not owned, null for none. The one so far.
RunLogListener* SetRunLogListener(RunLogListener* listener);

/// printf-style event text without a line end, at most 255 bytes.
[[gnu::format(printf, 1, 2)]] void LogEvent(const char* format, ...);
