// Which frames of a run are filmed.
#pragma once

#include <limits>

/// One frame in every `step` / `part`, the first at `from`; the places between are rounded down.
struct Schedule {
  int from = 0;
  int to = std::numeric_limits<int>::max();  ///< the last frame that may be filmed
  int step = 1;                              ///< above 0
  int part = 1;                              ///< 1 to `step`

  bool IsFilmed(int frame) const { return frame >= from && frame <= to && CountBefore(frame + 1) > CountBefore(frame); }
  /// Pictures among the frames before this one.
  int CountBefore(int frame) const {
    const long long frames = (frame > to ? static_cast<long long>(to) + 1 : frame) - static_cast<long long>(from);
    return frames <= 0 ? 0 : static_cast<int>((frames * part - 1) / step + 1);
  }
};

/// `cells` frames from `from` to `to`, both among them, as far apart as they can be; all of them when they are fewer.
inline Schedule SpreadEvenly(int from, int to, int cells) {
  const int gaps = to - from;
  if (gaps <= 0 || cells <= 1) return {from, from, 1, 1};
  return gaps < cells ? Schedule{from, to, 1, 1} : Schedule{from, to, gaps, cells - 1};
}
