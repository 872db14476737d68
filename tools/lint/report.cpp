#include "tools/lint/report.h"

void LintReport::Fault(int line, const char* rule, const std::string& text) {
  ++faults_;
  Print(line, rule, "", text);
}

void LintReport::Note(int line, const char* rule, const std::string& text) { Print(line, rule, "note: ", text); }

void LintReport::Print(int line, const char* rule, const char* kind, const std::string& text) {
  if (++printed_ > kMaxLines) return;
  if (printed_ == kMaxLines) {
    rule = "too-many";
    kind = "note: ";
  }
  std::fprintf(out_, "%s:%d: %s: %s%s\n", fileName_.c_str(), line, rule, kind,
               printed_ == kMaxLines ? "what follows is not listed: mend the lines above first" : text.c_str());
}
