#include "tools/lint/block_reader.h"

#include <charconv>
#include <cmath>

namespace {

using Kind = LintLine::Kind;

std::string Quoted(std::string_view text) {
  std::string quoted(1, '"');
  quoted += text;
  quoted += '"';
  return quoted;
}

template <class Number>
bool ParsesWhole(std::string_view text, Number& number) {
  const auto result = std::from_chars(text.data(), text.data() + text.size(), number);
  return result.ec == std::errc{} && result.ptr == text.data() + text.size();
}

// The text that the game would write for this number.
std::string Canonical(float number) {
  char text[48];
  const auto end = std::to_chars(text, text + sizeof text, number, std::chars_format::general, 6).ptr;
  return {text, end};
}

// What stands at a line, for messages that wanted something else there.
std::string Described(const LintLine& line) {
  if (line.kind == Kind::kClose) return "the end of the block";
  return (line.kind == Kind::kValue ? "the value " : "the block ") + Quoted(line.key);
}

}  // namespace

float NumberOf(const LintLine& line) {
  float number = 0.0f;
  return ParsesWhole(line.value, number) ? number : 0.0f;
}

const LintLine* BlockReader::Expect(Kind kind, std::string_view key, const char* what) {
  if (!AtEnd() && Peek().kind == kind && Peek().key == key) return &Take();
  const int line = AtEnd() ? (lines_.empty() ? 1 : lines_.back().number) : Peek().number;
  report_.Fault(line, "missing-or-shifted",
                std::string(what) + " " + Quoted(key) + " must stand here, not " +
                    (AtEnd() ? std::string("the end of the file") : Described(Peek())));
  return nullptr;
}

LintBlock BlockReader::ReadBlock(const LintLine& header, const BlockSchema& schema) {
  LintBlock block = {.name = header.key, .line = header.number};
  for (const FieldSchema& field : schema.fields) {
    if (ReadField(field, block)) continue;
    SkipBlock();
    return block;
  }
  if (!AtEnd() && Peek().kind != Kind::kClose)
    report_.Fault(Peek().number, "missing-or-shifted", "too much in " + Quoted(schema.name) + ": it must end here");
  SkipBlock();
  return block;
}

void BlockReader::SkipBlock() {
  for (int depth = 1; depth > 0 && !AtEnd();) {
    const Kind kind = Take().kind;
    if (kind == Kind::kClose)
      --depth;
    else if (kind != Kind::kValue)
      ++depth;
  }
}

bool BlockReader::ReadField(const FieldSchema& field, LintBlock& block) {
  switch (field.type) {
    case FieldType::kVec3:
      return ReadFloats("Vec3", {"x_", "y_", "z_"}, false);
    case FieldType::kQuaternion:
      return ReadFloats("Vec3", {"r_", "i_", "j_", "k_"}, false);
    case FieldType::kMatrix33:
      return ReadFloats("Matrix33", std::vector<std::string_view>(9), false);
    case FieldType::kMatrix34:
      return ReadFloats("Matrix34", std::vector<std::string_view>(9), true);
    default:
      break;
  }
  const LintLine* line = Expect(Kind::kValue, field.key, "the value");
  if (line == nullptr) return false;
  block.values[field.key] = line;
  if (field.type == FieldType::kString) return true;
  if (field.type == FieldType::kBool) {
    if (line->value != "true" && line->value != "false")
      report_.Fault(line->number, "bad-value", Quoted(line->value) + " must be true or false");
    return true;
  }
  if (field.type == FieldType::kSegmentList) return CheckNumber(*line, FieldType::kInt) && ReadSegments(block);
  if (field.type == FieldType::kObjectiveList) return CheckNumber(*line, FieldType::kInt) && ReadObjectives();
  if (field.type != FieldType::kGeneratorList) {
    CheckNumber(*line, field.type);
    return true;
  }
  if (!CheckNumber(*line, FieldType::kInt)) return false;
  int count = 0;
  ParsesWhole(line->value, count);
  if (count < 0) {
    report_.Fault(line->number, "bad-value", Quoted(line->value) + " counts the lines that follow: write 0 or more");
    return false;
  }
  for (int i = 0; i < count; ++i) {
    const LintLine* id = Expect(Kind::kValue, "generator ID", "the value");
    if (id == nullptr) return false;
    CheckNumber(*id, FieldType::kInt);
    block.generatorIds.push_back(id);
  }
  return true;
}

bool BlockReader::IsValueNext(std::string_view key) const {
  return !AtEnd() && Peek().kind == Kind::kValue && Peek().key == key;
}

void BlockReader::CheckCount(const LintLine& count, std::size_t found, const char* what) {
  if (NumberOf(count) != static_cast<float>(found))
    report_.Fault(count.number, "wrong-count", std::to_string(found) + " " + what + " follow: write that number");
}

bool BlockReader::ReadSegments(LintBlock& block) {
  const LintLine& count = lines_[next_ - 1];
  while (IsValueNext("levelName_")) {
    LintSegment segment = {&Take(), nullptr};
    for (const char* key : {"duration_", "rotationAngle_", "distance_"}) {
      const LintLine* line = Expect(Kind::kValue, key, "the value");
      if (line == nullptr) return false;
      if (CheckNumber(*line, FieldType::kFloat) && line->key == "duration_") segment.duration = line;
    }
    block.segments.push_back(segment);
  }
  CheckCount(count, block.segments.size(), "segments");
  return Expect(Kind::kValue, "SentinelSegment", "the value") != nullptr;
}

// An unknown rule has unknown values: they end where the next rule, or the list's end, stands.
bool BlockReader::ReadObjectives() {
  const LintLine& count = lines_[next_ - 1];
  std::size_t found = 0;
  for (; IsValueNext("Objective"); ++found) {
    const LintLine& type = Take();
    const BlockSchema* schema = FindObjectiveSchema(type.value);
    if (schema == nullptr) {
      report_.Fault(type.number, "unknown-objective", "no objective is called " + Quoted(type.value));
      while (!AtEnd() && Peek().kind == Kind::kValue && !IsValueNext("Objective") && !IsValueNext("No more objectives"))
        Take();
      continue;
    }
    LintBlock values = {.name = schema->name, .line = type.number};
    for (const FieldSchema& field : schema->fields)
      if (!ReadField(field, values)) return false;
  }
  CheckCount(count, found, "objectives");
  return Expect(Kind::kValue, "No more objectives", "the value") != nullptr;
}

bool BlockReader::ReadFloats(std::string_view header, const std::vector<std::string_view>& keys, bool translation) {
  if (Expect(Kind::kComponentOpen, header, "the block") == nullptr) return false;
  for (const std::string_view key : keys) {
    const LintLine* line = Expect(Kind::kValue, key, "the number");
    if (line == nullptr) {
      SkipBlock();
      return false;
    }
    CheckNumber(*line, FieldType::kFloat);
  }
  if (translation && !ReadFloats("Vec3", {"x_", "y_", "z_"}, false)) {
    SkipBlock();
    return false;
  }
  if (!AtEnd() && Peek().kind == Kind::kClose) {
    Take();
    return true;
  }
  report_.Fault(AtEnd() ? lines_.back().number : Peek().number, "missing-or-shifted",
                "too much in " + Quoted(header) + ": it must end here");
  SkipBlock();
  return true;
}

bool BlockReader::CheckNumber(const LintLine& line, FieldType type) {
  float number = 0.0f;
  int whole = 0;
  const bool good = type == FieldType::kInt ? ParsesWhole(line.value, whole)
                                            : ParsesWhole(line.value, number) && std::isfinite(number);
  if (!good) {
    report_.Fault(
        line.number, "bad-value",
        Quoted(line.value) + (type == FieldType::kInt ? " must be a whole number" : " must be a finite number"));
    return false;
  }
  if (type == FieldType::kFloat && Canonical(number) != line.value)
    report_.Note(line.number, "canonical-number", "the game saves it as " + Canonical(number));
  return true;
}
