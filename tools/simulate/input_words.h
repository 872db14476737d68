// The words of one line of an input file, read in turn; the first failure sticks.
#pragma once

#include <string>
#include <string_view>

class InputWords {
 public:
  /// Of the line up to its comment, which "#" begins outside quotes.
  explicit InputWords(std::string_view line);

  bool IsEmpty() const { return rest_.empty(); }
  bool IsGood() const { return error_.empty(); }
  const std::string& GetError() const { return error_; }
  void Fail(const std::string& error);

  /// The next word, called `what` when it is missing.
  std::string Word(const char* what);
  /// A whole number within limits; the lower one on failure.
  int Number(const char* what, int low, int high);
  /// One of two words; true for the first.
  bool Choice(const char* what, std::string_view yes, std::string_view no);
  /// The next word if it is this one.
  bool Skip(std::string_view word);
  bool IsQuoted() const { return rest_.starts_with('"'); }
  /// A text between quotes, as Quote writes it.
  std::string Quoted(const char* what);
  /// All that is left, with one blank between its words.
  std::string Rest(const char* what);
  /// Nothing may be left.
  void End();

  /// The text between quotes, with a backslash before quotes and backslashes, and \n for the end of a line.
  static std::string Quote(std::string_view text);

 private:
  void SkipBlanks();

  std::string_view rest_;  // from the next word on
  std::string error_;
};
