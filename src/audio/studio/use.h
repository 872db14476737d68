// What a sound system has in use at a moment, for whoever looks for leaks.
#pragma once

namespace Studio {

struct Use {
  int open = 0;    ///< instances that a handle still names
  int heard = 0;   ///< voices that play for an instance
  int voices = 0;  ///< how many may
  int lost = 0;    ///< instances that nobody can name or hear, and voices that play for none
};

}  // namespace Studio
