#include "lint/canonical.h"

#include <map>

#include "lint/number.h"
#include "physics/generator_host.h"

namespace {

using Kind = LintLine::Kind;

constexpr int kFirstGeneratorId = 42;
constexpr char kHostId[] = "1337";

bool IsHost(const std::vector<LintLine>& lines, std::size_t header) {
  return header + 1 < lines.size() && lines[header + 1].kind == Kind::kValue &&
         lines[header + 1].value == GalePhysics::kGeneratorHostName;
}

class Writer {
 public:
  Writer(const std::vector<LintLine>& lines, const std::vector<FieldType>& types, CanonicalIds ids)
      : lines_(lines), types_(types), ids_(ids) {}

  std::string Write() {
    text_ = "{\n";
    if (ids_ == CanonicalIds::kNumbered) NumberGenerators();
    for (std::size_t i = 0; i < lines_.size(); ++i) WriteLine(i);
    return std::move(text_);
  }

 private:
  // A number that two generators bear stays: nobody can say which of them a body means.
  void NumberGenerators() {
    std::map<std::string_view, int> uses;
    for (std::size_t i = 0; i < lines_.size(); ++i)
      if (IsDefinition(i)) ++uses[lines_[i].value];
    for (const auto& [id, count] : uses)
      if (count > 1) return;
    int next = kFirstGeneratorId;
    for (std::size_t i = 0; i < lines_.size(); ++i)
      if (IsDefinition(i)) generators_[lines_[i].value] = std::to_string(next++);
    for (std::size_t i = 0; i < lines_.size(); ++i)
      if (types_[i] == FieldType::kGeneratorId && !generators_.contains(lines_[i].value)) {
        generators_.clear();
        return;
      }
  }

  bool IsDefinition(std::size_t i) const { return types_[i] == FieldType::kGeneratorId && lines_[i].key == "My ID"; }

  void WriteLine(std::size_t i) {
    const LintLine& line = lines_[i];
    if (line.kind == Kind::kClose && depth_ > 0) --depth_;
    text_.append(depth_, '\t');
    if (line.kind == Kind::kClose)
      text_ += '}';
    else if (line.kind == Kind::kValue)
      WriteValue(i);
    else
      WriteOpening(i);
    text_ += '\n';
  }

  void WriteOpening(std::size_t i) {
    const LintLine& line = lines_[i];
    ++depth_;
    if (line.kind == Kind::kComponentOpen) {
      text_ += "Component: \"";
      text_ += line.key;
      text_ += "\" {";
      return;
    }
    if (ids_ == CanonicalIds::kKept)
      text_ += line.key;
    else if (IsHost(lines_, i))
      text_ += kHostId;
    else
      text_ += std::to_string(++objects_);
    text_ += ": {";
  }

  void WriteValue(std::size_t i) {
    const LintLine& line = lines_[i];
    text_ += line.key;
    text_ += ": ";
    const auto generator = types_[i] == FieldType::kGeneratorId ? generators_.find(line.value) : generators_.end();
    text_ += generator != generators_.end() ? generator->second : CanonicalValue(types_[i], line.value);
  }

  const std::vector<LintLine>& lines_;
  const std::vector<FieldType>& types_;
  CanonicalIds ids_;
  std::map<std::string_view, std::string> generators_;  // former to new number
  std::string text_;
  std::size_t depth_ = 1;
  std::size_t objects_ = 0;
};

}  // namespace

std::string CanonicalValue(FieldType type, std::string_view text) {
  float number = 0.0f;
  int whole = 0;
  if (type == FieldType::kFloat && ParsesWhole(text, number)) return CanonicalNumber(number);
  if ((type == FieldType::kInt || type == FieldType::kGeneratorId) && ParsesWhole(text, whole))
    return std::to_string(whole);
  return std::string(text);
}

std::string CanonicalText(const std::vector<LintLine>& lines, const std::vector<FieldType>& types, CanonicalIds ids) {
  return Writer(lines, types, ids).Write();
}
