#include "tools/lint/scanner.h"

#include <algorithm>

namespace {

constexpr std::string_view kComponentStart = "Component: \"";
constexpr std::string_view kComponentEnd = "\" {";

LintLine Classify(int number, std::string_view text, LintReport& report) {
  using Kind = LintLine::Kind;
  if (text.back() == '{') {
    if (text.substr(0, kComponentStart.size()) == kComponentStart &&
        text.size() >= kComponentStart.size() + kComponentEnd.size() &&
        text.substr(text.size() - kComponentEnd.size()) == kComponentEnd) {
      const auto name = text.substr(kComponentStart.size());
      return {number, Kind::kComponentOpen, name.substr(0, name.size() - kComponentEnd.size()), {}};
    }
    const auto id = text.substr(0, text.find(':'));
    const bool isId = !id.empty() && std::all_of(id.begin(), id.end(), [](char c) { return c >= '0' && c <= '9'; });
    if (!isId || text.substr(id.size()) != ": {")
      report.Fault(number, "header", "must be an object (\"ID: {\") or a component (Component: \"NAME\" {)");
    return {number, Kind::kBlockOpen, id, {}};
  }
  if (text.front() == '}') {
    if (text != "}") report.Fault(number, "closing-line", "must be \"}\" alone");
    return {number, Kind::kClose, {}, {}};
  }
  const auto colon = text.find(':');
  if (colon != std::string_view::npos && colon + 1 == text.size()) {
    report.Note(number, "empty-value", "the game saves an empty value with a blank after the colon");
    return {number, Kind::kValue, text.substr(0, colon), {}};
  }
  if (colon == std::string_view::npos || text[colon + 1] != ' ') {
    report.Fault(number, "value-line", "must be \"key: value\", with a blank after the first colon");
    return {number, Kind::kValue, text.substr(0, colon), text.substr(std::min(colon, text.size() - 1) + 1)};
  }
  const LintLine line = {number, Kind::kValue, text.substr(0, colon), text.substr(colon + 2)};
  if (!line.value.empty() && (line.value.front() == ' ' || line.value.back() == ' '))
    report.Fault(number, "blanks", "blanks around the value: remove them");
  return line;
}

// Tabs only, as many as blocks are open.
std::string_view Unindent(int number, std::string_view line, std::size_t depth, LintReport& report) {
  const auto tabs = std::min(line.find_first_not_of('\t'), line.size());
  line.remove_prefix(tabs);
  if (!line.empty() && line.front() == ' ') {
    report.Fault(number, "leading-blanks", "indent with tabs: the game does not strip blanks");
    line.remove_prefix(std::min(line.find_first_not_of(' '), line.size()));
  } else if (!line.empty() && tabs != depth - (line.front() == '}' && depth > 0 ? 1 : 0)) {
    report.Note(number, "indentation", "a tab for each open block is usual");
  }
  return line;
}

}  // namespace

std::vector<LintLine> ScanLines(std::string_view text, LintReport& report) {
  std::vector<LintLine> lines;
  std::size_t depth = 0;
  int number = 0;
  bool returns = false;
  for (std::size_t at = 0; at < text.size();) {
    const auto end = std::min(text.find('\n', at), text.size());
    std::string_view line = text.substr(at, end - at);
    at = end + 1;
    ++number;
    if (!line.empty() && line.back() == '\r') {
      if (!returns) report.Note(number, "line-end", "carriage returns from here on: the game saves lines without");
      returns = true;
      line.remove_suffix(1);
    }
    if (number == 1) {
      if (line != "{") report.Fault(number, "document", "the first line must be \"{\"");
      depth = 1;
      continue;
    }
    line = Unindent(number, line, depth, report);
    if (line.empty()) {
      report.Fault(number, "empty-line", "remove it: files are saved without");
      continue;
    }
    if (depth == 0) {
      report.Fault(number, "document", "text after the document's closing line");
      break;
    }
    lines.push_back(Classify(number, line, report));
    if (line.back() == '{')
      ++depth;
    else if (line.front() == '}')
      --depth;
  }
  if (depth > 0 || number == 0)
    report.Fault(number, "unexpected-end", "the file ends inside a block: \"}\" is missing");
  return lines;
}
