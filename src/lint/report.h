// Where lint says what it found.
#pragma once

#include <cstdio>
#include <string>

#include "lint/rules.h"

/// Lists what is found in one file. After kMaxLines lines it goes on counting, but prints no more.
class LintReport {
 public:
  static constexpr int kMaxLines = 1000;

  /// `out`: null to only count.
  LintReport(std::string fileName, std::FILE* out) : fileName_(std::move(fileName)), out_(out) {}

  /// Prints "FILE:LINE: rule: text", with "note: " before the text of a note. `text` says what is wrong and what would
  /// be right.
  void Say(int line, RuleName rule, const std::string& text);
  bool HasFaults() const { return faults_ > 0; }
  /// Whether something was said for which the file must not be written anew.
  bool IsUnreadable() const { return unreadable_ > 0; }
  const std::string& GetFileName() const { return fileName_; }

 private:
  void Print(int line, const Rule& rule, const std::string& text);

  std::string fileName_;
  std::FILE* out_;
  int faults_ = 0;
  int unreadable_ = 0;
  int printed_ = 0;
};
