// The lines of a text, each seen in one look: nearly all are short, and a loop over characters would be left at a place
// that the processor foretells wrongly on every other line.
#pragma once

#include <algorithm>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string_view>

/// A line without its tabs and its end.
struct TextLine {
  std::string_view text;
  std::size_t colon = 0;  ///< place of the first one in `text`; its size or more when there is none
};

namespace line_scan {

/// Of any length.
inline TextLine ScanLong(const char* start, const char* end, const char*& next) {
  const void* found = std::memchr(start, '\n', static_cast<std::size_t>(end - start));
  const char* lineEnd = found == nullptr ? end : static_cast<const char*>(found);
  const char* text = std::find_if(start, lineEnd, [](char c) { return c != '\t'; });
  next = lineEnd == end ? end : lineEnd + 1;
  return {std::string_view(text, static_cast<std::size_t>(lineEnd - text)),
          static_cast<std::size_t>(std::find(text, lineEnd, ':') - text)};
}

#ifdef __SSE2__
inline constexpr std::ptrdiff_t kLook = 32;  // characters

/// Where `wanted` stands among the kLook characters from `text` on, the first in bit 0.
inline std::uint32_t FindEach(const char* text, char wanted) {
  using Bytes = char __attribute__((vector_size(kLook / 2)));
  Bytes first;
  Bytes second;
  std::memcpy(&first, text, sizeof(first));
  std::memcpy(&second, text + sizeof(first), sizeof(second));
  return static_cast<std::uint32_t>(__builtin_ia32_pmovmskb128(first == wanted)) |
         static_cast<std::uint32_t>(__builtin_ia32_pmovmskb128(second == wanted)) << sizeof(first);
}
#endif

}  // namespace line_scan

/// The line at `start`, which is before `end`, the text's. `next` is set behind the line's end.
inline TextLine ScanLine(const char* start, const char* end, const char*& next) {
  using namespace line_scan;
#ifdef __SSE2__
  const std::uint32_t ends = end - start >= kLook ? FindEach(start, '\n') : 0;
  if (ends != 0) {
    const int size = std::countr_zero(ends);
    const int tabs = std::countr_one(FindEach(start, '\t'));
    // A colon behind the line's end is beyond the line's size as well.
    const int colon = std::countr_zero(FindEach(start, ':'));
    next = start + size + 1;
    return {std::string_view(start + tabs, static_cast<std::size_t>(size - tabs)),
            static_cast<std::size_t>(colon - tabs)};
  }
#endif
  return ScanLong(start, end, next);
}
