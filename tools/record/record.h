// The game in its window, recorded as an input file.
#pragma once

#include <string>

struct RecordOptions {
  std::string dataFolder;  ///< absolute; empty: the program's own data
  std::string file;        ///< absolute, and not there yet; empty: nothing, or what `keep` says
  int keep = 0;            ///< above 0: the last so many matches stay in matches/ there
};

/// Plays until the player leaves, then prints the digest of the final state. An exit code: 1 when nothing can be played
/// or `file` cannot be made.
int Record(const RecordOptions& options);
