// The one way out for diagnostics. The game prints to standard output; the tool sends the same lines to standard error
// so that its own output stays clean. Every call is flushed, so a watching program sees a line when it happens.
#pragma once

#include <cstdio>
#include <string_view>

/// printf-style text, written as it is: the caller ends the line.
[[gnu::format(printf, 1, 2)]] void Print(const char* format, ...);

/// Also gets every text that this thread prints, and those of no other; null for nobody.
using PrintListener = void (*)(std::string_view text);
void SetPrintListener(PrintListener listener);

/// While one lives, this thread prints at most that many texts, each cut to kMaxBytes; one more says that the rest is
/// not told. Bounds what a file can make the program print. One inside another changes nothing.
class PrintLimit {
 public:
  static constexpr std::size_t kMaxBytes = 1000;

  /// `name`: of what the texts are about; must outlive the limit.
  PrintLimit(const char* name, int texts);
  ~PrintLimit();
  PrintLimit(const PrintLimit&) = delete;
  PrintLimit& operator=(const PrintLimit&) = delete;

 private:
  bool isOutermost_;
};

/// The same as Print, but not counted by a limit: for the few lines that say which other bound was reached.
[[gnu::format(printf, 1, 2)]] void PrintPastLimit(const char* format, ...);

/// Where Print writes from now on; not owned, null for nowhere. The one so far; the initial one is standard output.
std::FILE* SetPrintTarget(std::FILE* target);
