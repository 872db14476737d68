#include "lint/scanner.h"

#include <algorithm>

namespace {

using Kind = LintLine::Kind;

constexpr std::string_view kComponentStart = "Component: \"";
constexpr std::string_view kComponentEnd = "\" {";
constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";
constexpr std::string_view kBlanks = " \t";

std::string_view WithoutTrailing(std::string_view text) { return text.substr(0, text.find_last_not_of(kBlanks) + 1); }

bool IsControl(char c) { return static_cast<unsigned char>(c) < 0x20 || c == 0x7f; }

class Scanner {
 public:
  Scanner(std::string_view text, LintReport& report) : text_(text), report_(report) {}

  std::vector<LintLine> Run() {
    while (at_ < text_.size()) {
      const std::string_view line = NextLine();
      if (number_ == 1)
        CheckFirst(line);
      else if (!Take(line))
        break;
    }
    if (depth_ > 0 || number_ == 0)
      report_.Say(number_, "unexpected-end", "the file ends inside a block: \"}\" is missing");
    return std::move(lines_);
  }

 private:
  std::string_view NextLine() {
    const auto end = std::min(text_.find('\n', at_), text_.size());
    std::string_view line = text_.substr(at_, end - at_);
    at_ = end + 1;
    ++number_;
    if (end == text_.size()) report_.Say(number_, "line-end", "the last line must end with a line feed too");
    if (line.empty() || line.back() != '\r') return line;
    if (!returns_) report_.Say(number_, "line-end", "carriage returns from here on: the game saves lines without");
    returns_ = true;
    line.remove_suffix(1);
    return line;
  }

  // The game passes it over unread; only what says nothing may be lost.
  void CheckFirst(std::string_view line) {
    depth_ = 1;
    if (line == "{") return;
    if (line.starts_with(kByteOrderMark)) line.remove_prefix(kByteOrderMark.size());
    line.remove_prefix(std::min(line.find_first_not_of(kBlanks), line.size()));
    if (WithoutTrailing(line) == "{")
      report_.Say(1, "first-line", "the first line must be \"{\" alone");
    else
      report_.Say(1, "document", "the first line must be \"{\"");
  }

  // False at text behind the document.
  bool Take(std::string_view line) {
    line = Unindent(line);
    if (line.empty()) {
      report_.Say(number_, "empty-line", "remove it: files are saved without");
      return true;
    }
    if (depth_ == 0) {
      report_.Say(number_, "document", "text after the document's closing line");
      return false;
    }
    lines_.push_back(Classify(line));
    const Kind kind = lines_.back().kind;
    if (kind == Kind::kClose)
      --depth_;
    else if (kind != Kind::kValue)
      ++depth_;
    return true;
  }

  // Tabs only, as many as blocks are open.
  std::string_view Unindent(std::string_view line) {
    const auto tabs = std::min(line.find_first_not_of('\t'), line.size());
    line.remove_prefix(tabs);
    if (line.empty()) return line;
    if (line.front() == ' ') {
      line.remove_prefix(std::min(line.find_first_not_of(kBlanks), line.size()));
      if (!line.empty()) report_.Say(number_, "leading-blanks", "indent with tabs: the game does not strip blanks");
    } else if (tabs != depth_ - (line.front() == '}' && depth_ > 0 ? 1 : 0)) {
      report_.Say(number_, "indentation", "a tab for each open block is right");
    }
    return line;
  }

  LintLine Classify(std::string_view line) {
    const std::string_view trimmed = WithoutTrailing(line);
    const bool structural = trimmed.back() == '{' || trimmed == "}";
    if (structural && trimmed.size() < line.size())
      report_.Say(number_, "blanks", "blanks at the end of the line: remove them");
    if (trimmed.back() == '{') return ClassifyOpening(trimmed);
    if (line.front() != '}') return ClassifyValue(line);
    if (trimmed != "}") report_.Say(number_, "closing-line", "must be \"}\" alone");
    return {number_, Kind::kClose, {}, {}};
  }

  LintLine ClassifyOpening(std::string_view line) {
    if (line.size() >= kComponentStart.size() + kComponentEnd.size() && line.starts_with(kComponentStart) &&
        line.ends_with(kComponentEnd)) {
      const auto name = line.substr(kComponentStart.size());
      return {number_, Kind::kComponentOpen, name.substr(0, name.size() - kComponentEnd.size()), {}};
    }
    const auto id = line.substr(0, line.find(':'));
    const bool isId = !id.empty() && std::all_of(id.begin(), id.end(), [](char c) { return c >= '0' && c <= '9'; });
    if (!isId || line.substr(id.size()) != ": {")
      report_.Say(number_, "header", "must be an object (\"ID: {\") or a component (Component: \"NAME\" {)");
    return {number_, Kind::kBlockOpen, id, {}};
  }

  LintLine ClassifyValue(std::string_view line) {
    const auto colon = line.find(':');
    if (colon == std::string_view::npos) {
      report_.Say(number_, "value-line", "must be \"key: value\", with a blank after the first colon");
      return {number_, Kind::kValue, line, {}};
    }
    LintLine value = {number_, Kind::kValue, line.substr(0, colon), line.substr(colon + 1)};
    if (value.value.empty()) {
      report_.Say(number_, "empty-value", "the game saves an empty value with a blank after the colon");
      return value;
    }
    if (value.value.front() == ' ')
      value.value.remove_prefix(1);
    else
      report_.Say(number_, "blanks", "a blank must stand after the colon: the game passes over one letter there");
    TrimValue(value.value);
    return value;
  }

  void TrimValue(std::string_view& value) {
    const auto first = value.find_first_not_of(kBlanks);
    const std::string_view trimmed = first == std::string_view::npos ? "" : WithoutTrailing(value.substr(first));
    if (trimmed.size() < value.size()) report_.Say(number_, "blanks", "blanks around the value: remove them");
    value = trimmed;
    if (std::any_of(value.begin(), value.end(), IsControl))
      report_.Say(number_, "control-characters", "the game drops control characters from what it saves: remove them");
  }

  std::string_view text_;
  LintReport& report_;
  std::vector<LintLine> lines_;
  std::size_t at_ = 0;
  std::size_t depth_ = 0;
  int number_ = 0;
  bool returns_ = false;
};

}  // namespace

std::vector<LintLine> ScanLines(std::string_view text, LintReport& report) { return Scanner(text, report).Run(); }
