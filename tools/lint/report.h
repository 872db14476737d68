// Where lint says what it found.
#pragma once

#include <cstdio>
#include <string>

/// Lists what is found in one file. After kMaxLines lines it goes on counting, but prints no more.
class LintReport {
 public:
  static constexpr int kMaxLines = 1000;

  LintReport(std::string fileName, std::FILE* out) : fileName_(std::move(fileName)), out_(out) {}

  /// `rule` is a stable name; `text` says what is wrong and what would be right.
  void Fault(int line, const char* rule, const std::string& text);
  /// Worth knowing, but right as it is.
  void Note(int line, const char* rule, const std::string& text);
  bool HasFaults() const { return faults_ > 0; }
  const std::string& GetFileName() const { return fileName_; }

 private:
  void Print(int line, const char* rule, const char* kind, const std::string& text);

  std::string fileName_;
  std::FILE* out_;
  int faults_ = 0;
  int printed_ = 0;
};
