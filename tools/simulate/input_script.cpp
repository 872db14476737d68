#include "tools/simulate/input_script.h"

#include <algorithm>
#include <sstream>

#include "tools/simulate/input_words.h"

namespace {

std::string LineError(int number, const std::string& error) { return "line " + std::to_string(number) + ": " + error; }

}  // namespace

bool InputScript::Parse(const std::string& text, std::string& error) {
  std::istringstream lines(text);
  int number = 0;
  for (std::string line; std::getline(lines, line);) {
    ++number;
    if (lines.eof() && IsRecording()) break;
    std::string fault;
    if (ParseLine(line, number, fault)) continue;
    error = LineError(number, fault);
    return false;
  }
  std::stable_sort(lines_.begin(), lines_.end(), [](const Line& a, const Line& b) { return a.frame < b.frame; });
  return true;
}

bool InputScript::ParseLine(const std::string& line, int number, std::string& error) {
  if (lines_.empty() && ParseHeader(line, error)) return error.empty();
  Line parsed{0, number, {}};
  if (!ParseInputLine(line, parsed.frame, parsed.event, error)) return error.empty();
  const auto* mark = std::get_if<Given::Mark>(&parsed.event);
  frames_ = std::max(frames_, mark == nullptr ? parsed.frame + 1 : parsed.frame);
  hasEnd_ = hasEnd_ || (mark != nullptr && mark->end);
  lines_.push_back(std::move(parsed));
  return true;
}

// True when the line is one of a header, right or wrong.
bool InputScript::ParseHeader(const std::string& line, std::string& error) {
  InputWords words(line);
  if (words.Skip("version"))
    header_.version = words.Word("the version");
  else if (words.Skip("data"))
    header_.dataDigest = words.Word("the data's digest");
  else if (words.Skip("start")) {
    header_.boot = words.Word("the start") == "boot";
    if (!header_.boot) words.Fail("the start must be boot");
  } else
    return false;
  words.End();
  error = words.GetError();
  return true;
}

bool InputScript::Apply(int frame, ScriptedPlatform& platform, std::string& error) {
  for (; next_ < lines_.size() && lines_[next_].frame <= frame; ++next_) {
    const std::string fault = ::Apply(lines_[next_].event, platform);
    if (fault.empty()) continue;
    error = LineError(lines_[next_].number, fault);
    return false;
  }
  return true;
}

std::string InputScript::FindPad(int slot) const {
  for (const Line& line : lines_) {
    const auto* presence = std::get_if<Given::PadPresence>(&line.event);
    const auto* axis = std::get_if<Given::PadAxis>(&line.event);
    const auto* button = std::get_if<Given::PadButton>(&line.event);
    if ((presence != nullptr && presence->slot == slot) || (axis != nullptr && axis->slot == slot) ||
        (button != nullptr && button->slot == slot))
      return LineError(line.number, "pad " + std::to_string(slot) + " is flown by --bots");
  }
  return {};
}

std::string InputScript::FindMouse() const {
  for (const Line& line : lines_)
    if (std::holds_alternative<Given::Mouse>(line.event) || std::holds_alternative<Given::Click>(line.event))
      return LineError(line.number, "the mouse is flown by --mouse");
  return {};
}
