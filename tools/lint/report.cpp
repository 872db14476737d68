#include "tools/lint/report.h"

void LintReport::Fault(int line, const char* rule, const std::string& text) {
  ++faults_;
  Print(line, rule, "", text);
}

void LintReport::Note(int line, const char* rule, const std::string& text) { Print(line, rule, "note: ", text); }

void LintReport::Print(int line, const char* rule, const char* kind, const std::string& text) {
  if (++printed_ <= kMaxLines)
    std::fprintf(out_, "%s:%d: %s: %s%s\n", fileName_.c_str(), line, rule, kind, text.c_str());
  else if (printed_ == kMaxLines + 1)
    std::fprintf(out_, "%s:%d: too-many: note: what follows is not listed: mend the lines above first\n",
                 fileName_.c_str(), line);
}
