#include "lint/lint_object.h"

#include "physics/generator_host.h"

bool LintObject::IsHost() const { return name == GalePhysics::kGeneratorHostName; }

const LintLine* ValueOf(const LintBlock* block, std::string_view key) {
  if (block == nullptr) return nullptr;
  const auto& lines = block->Find(key);
  return lines.empty() ? nullptr : lines.front();
}

float NumberOf(const LintBlock* block, std::string_view key, float none) {
  const LintLine* line = ValueOf(block, key);
  return line == nullptr ? none : NumberOf(*line);
}

std::vector<float> NumbersOf(const LintBlock* block, std::string_view name) {
  std::vector<float> numbers;
  if (block == nullptr) return numbers;
  for (const LintLine* line : block->Find(name)) numbers.push_back(NumberOf(*line));
  return numbers;
}

bool HasCollider(const LintObject& object, bool ghost) {
  return std::any_of(object.components.begin(), object.components.end(), [ghost](const LintBlock& block) {
    const LintLine* value = ValueOf(&block, "ghost");
    return value != nullptr && (value->value == "true") == ghost;
  });
}
