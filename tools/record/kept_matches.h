// The last matches that were played, as recordings in the user's own folder for what programs leave behind.
#pragma once

#include <string>

class KeptMatches {
 public:
  /// Keeps that many, the next one included.
  explicit KeptMatches(int most);

  /// The newest recording, when the program that wrote it did not come to its end and is gone; otherwise empty.
  std::string FindInterrupted() const;
  /// Removes what is too much and gives the next recording a name that is not taken; empty where nothing can be kept.
  std::string MakeRoom() const;

 private:
  int most_;
  std::string folder_;  // empty: there is none
};
