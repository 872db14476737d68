// What a bubble tells a display when it arrives.
#pragma once

/// The event's name. Its payload is a SentPoints.
inline constexpr char kSentPoints[] = "sentPoints";
struct SentPoints {
  int value;
  int player;  ///< index of who earned them
};
