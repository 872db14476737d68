#include "lint/report.h"

void LintReport::Say(int line, RuleName rule, const std::string& text) {
  const RuleKind kind = rule.Get().kind;
  if (kind != RuleKind::kNote) ++faults_;
  if (kind == RuleKind::kUnreadable) ++unreadable_;
  if (out_ == nullptr) return;
  ++printed_;
  if (printed_ <= kMaxLines) Print(line, rule.Get(), text);
  if (printed_ == kMaxLines + 1)
    Print(line, RuleName("too-many").Get(), "what follows is not listed: mend the lines above first");
}

void LintReport::Print(int line, const Rule& rule, const std::string& text) {
  std::fprintf(out_, "%s:%d: %.*s: %s%s\n", fileName_.c_str(), line, static_cast<int>(rule.name.size()),
               rule.name.data(), rule.kind == RuleKind::kNote ? "note: " : "", text.c_str());
}
