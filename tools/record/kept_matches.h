// The last matches that were played, as recordings in the folder matches/ where levels are saved, too.
#pragma once

#include <string>

class KeptMatches {
 public:
  /// Keeps that many, in the working folder.
  explicit KeptMatches(int most);

  /// The newest recording, when the program that wrote it did not come to its end and is gone; otherwise empty.
  std::string FindInterrupted() const;
  /// A name for the next recording that is not taken; empty where nothing can be kept.
  std::string NextName() const;
  /// Removes what is too much, the oldest first, and nothing that is still being written.
  void RemoveOldest() const;

 private:
  int most_;
  std::string folder_;  // empty: there is none
};
