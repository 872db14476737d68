#include "tools/simulate/input_words.h"

#include <algorithm>
#include <charconv>

namespace {

constexpr std::string_view kBlanks = " \t\r\v\f";

// Where the comment begins, or the line's end.
std::size_t FindComment(std::string_view line) {
  bool quoted = false;
  for (std::size_t i = 0; i < line.size(); ++i) {
    if (quoted && line[i] == '\\')
      ++i;
    else if (line[i] == '"' && (quoted || i == 0 || kBlanks.find(line[i - 1]) != std::string_view::npos))
      quoted = !quoted;
    else if (line[i] == '#' && !quoted)
      return i;
  }
  return quoted ? std::min(line.find('#'), line.size()) : line.size();
}

}  // namespace

InputWords::InputWords(std::string_view line) : rest_(line.substr(0, FindComment(line))) { SkipBlanks(); }

void InputWords::SkipBlanks() { rest_.remove_prefix(std::min(rest_.find_first_not_of(kBlanks), rest_.size())); }

void InputWords::Fail(const std::string& error) {
  if (error_.empty()) error_ = error;
}

std::string InputWords::Word(const char* what) {
  if (rest_.empty()) Fail(std::string(what) + " is missing");
  const std::string word(rest_.substr(0, rest_.find_first_of(kBlanks)));
  rest_.remove_prefix(word.size());
  SkipBlanks();
  return word;
}

int InputWords::Number(const char* what, int low, int high) {
  const std::string word = Word(what);
  int value = low;
  const auto result = std::from_chars(word.data(), word.data() + word.size(), value);
  const bool whole = result.ec == std::errc{} && result.ptr == word.data() + word.size();
  if (!whole || value < low || value > high)
    Fail(std::string(what) + " must be a whole number from " + std::to_string(low) + " to " + std::to_string(high));
  return std::clamp(value, low, high);
}

bool InputWords::Choice(const char* what, std::string_view yes, std::string_view no) {
  const std::string word = Word(what);
  if (word != yes && word != no) Fail(std::string(what) + " must be " + std::string(yes) + " or " + std::string(no));
  return word == yes;
}

bool InputWords::Skip(std::string_view word) {
  if (rest_.substr(0, rest_.find_first_of(kBlanks)) != word) return false;
  rest_.remove_prefix(word.size());
  SkipBlanks();
  return true;
}

std::string InputWords::Quoted(const char* what) {
  std::string text;
  if (!IsQuoted()) Fail(std::string(what) + " must stand between quotes");
  std::size_t i = 1;
  for (; i < rest_.size() && rest_[i] != '"'; ++i) {
    const bool escaped = rest_[i] == '\\';
    if (escaped && ++i == rest_.size()) break;
    text += escaped && rest_[i] == 'n' ? '\n' : rest_[i];
  }
  if (i >= rest_.size()) Fail(std::string(what) + " lacks its closing quote");
  rest_.remove_prefix(std::min(i + 1, rest_.size()));
  SkipBlanks();
  return text;
}

std::string InputWords::Rest(const char* what) {
  if (rest_.empty()) Fail(std::string(what) + " is missing");
  std::string all;
  while (!rest_.empty()) all += (all.empty() ? "" : " ") + Word(what);
  return all;
}

void InputWords::End() {
  if (!rest_.empty()) Fail("\"" + Word("") + "\" is too much");
}

std::string InputWords::Quote(std::string_view text) {
  std::string quoted = "\"";
  for (const char c : text) {
    if (c == '"' || c == '\\') quoted += '\\';
    if (c == '\n')
      quoted += "\\n";
    else
      quoted += c;
  }
  return quoted + '"';
}
