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

inline constexpr std::ptrdiff_t kLook = 32;  // characters

// By the vector extension that GCC and clang share.
using Bytes = char __attribute__((vector_size(kLook / 2)));

/// The bytes that a comparison found true, the first in bit 0.
inline std::uint32_t TrueBytes(const Bytes& mask) {
#ifdef __SSE2__
  return static_cast<std::uint32_t>(__builtin_ia32_pmovmskb128(mask));
#else
  std::uint32_t bits = 0;
  for (unsigned i = 0; i < sizeof(Bytes); ++i) bits |= static_cast<std::uint32_t>(mask[i] != 0) << i;
  return bits;
#endif
}

/// Where `wanted` stands among the kLook characters from `text` on, the first in bit 0.
inline std::uint32_t FindEach(const char* text, char wanted) {
  Bytes first;
  Bytes second;
  std::memcpy(&first, text, sizeof(first));
  std::memcpy(&second, text + sizeof(first), sizeof(second));
  return TrueBytes(first == wanted) | TrueBytes(second == wanted) << sizeof(first);
}

}  // namespace line_scan

/// The line at `start`, which is before `end`, the text's. `next` is set behind the line's end.
inline TextLine ScanLine(const char* start, const char* end, const char*& next) {
  using namespace line_scan;
  const std::uint32_t ends = end - start >= kLook ? FindEach(start, '\n') : 0;
  if (ends == 0) {
    const char* lineEnd = std::find(start, end, '\n');
    const char* text = std::find_if(start, lineEnd, [](char c) { return c != '\t'; });
    next = lineEnd == end ? end : lineEnd + 1;
    return {{text, lineEnd}, static_cast<std::size_t>(std::find(text, lineEnd, ':') - text)};
  }
  const int size = std::countr_zero(ends);
  const int tabs = std::countr_one(FindEach(start, '\t'));
  // A colon behind the line's end is beyond the line's size as well.
  const int colon = std::countr_zero(FindEach(start, ':'));
  next = start + size + 1;
  return {{start + tabs, start + size}, static_cast<std::size_t>(colon - tabs)};
}
