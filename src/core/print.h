// The one way out for diagnostics. The game prints to standard output; the tool sends the same lines to standard error
// so that its own output stays clean. Every call is flushed, so a watching program sees a line when it happens.
#pragma once

#include <cstdio>
#include <string_view>

/// printf-style text, written as it is: the caller ends the line.
[[gnu::format(printf, 1, 2)]] void Print(const char* format, ...);

/// Also gets every text that is printed; null for nobody.
using PrintListener = void (*)(std::string_view text);
void SetPrintListener(PrintListener listener);

/// Where Print writes from now on; not owned. The initial target is standard output.
void SetPrintTarget(std::FILE* target);
