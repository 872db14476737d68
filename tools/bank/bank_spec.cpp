#include "tools/bank/bank_spec.h"

#include <map>
#include <sstream>

namespace {

constexpr std::string_view kEffectPrefix = "event:/SFX/";
constexpr std::string_view kMusicPrefix = "event:/Music/";

// What is wrong with a line, or nothing.
std::string ParseLine(const std::string& text, BankSpecLine& line) {
  std::istringstream words(text);
  std::string kind;
  std::string rest;
  if (!(words >> line.path >> kind >> line.file) || words >> rest) return "not EVENT KIND FILE";
  if (!Studio::IsEventPath(line.path)) return line.path + ": no event path";
  if (kind != "music" && kind != "sfx") return kind + ": neither music nor sfx";
  line.category = kind == "music" ? Studio::Category::kMusic : Studio::Category::kEffects;
  const std::string_view prefix = kind == "music" ? kMusicPrefix : kEffectPrefix;
  if (!line.path.starts_with(prefix)) return line.path + ": does not begin with " + std::string(prefix);
  return {};
}

}  // namespace

std::vector<BankSpecLine> ParseBankSpec(std::string_view text, std::vector<std::string>& faults) {
  std::vector<BankSpecLine> lines;
  std::map<std::uint64_t, int> lineOfNumber;
  std::istringstream input{std::string(text)};
  int number = 0;
  for (std::string raw; std::getline(input, raw);) {
    ++number;
    const std::string content = raw.substr(0, raw.find('#'));
    if (content.find_first_not_of(" \t\r") == std::string::npos) continue;
    BankSpecLine line{number, {}, {}, {}};
    std::string fault = ParseLine(content, line);
    if (fault.empty()) {
      const auto [first, isNew] = lineOfNumber.emplace(Studio::EventNumber(line.path), number);
      if (!isNew) fault = line.path + ": the same event as in line " + std::to_string(first->second);
    }
    if (fault.empty())
      lines.push_back(line);
    else
      faults.push_back(std::to_string(number) + ": " + fault);
  }
  if (lines.size() > Studio::kMaxEvents)
    faults.push_back(std::to_string(number) + ": more than " + std::to_string(Studio::kMaxEvents) + " events");
  return lines;
}
