#include "lint/block_reader.h"

#include "lint/canonical.h"
#include "lint/number.h"

namespace {

using Kind = LintLine::Kind;

const std::vector<std::string_view> kVec3Keys = {"x_", "y_", "z_"};
const std::vector<std::string_view> kFlatKeys = {"x", "y", "z"};
const std::vector<std::string_view> kQuaternionKeys = {"r_", "i_", "j_", "k_"};
const std::vector<std::string_view> kMatrixKeys(9);

std::string Quoted(std::string_view text) {
  std::string quoted(1, '"');
  quoted += text;
  quoted += '"';
  return quoted;
}

// What stands at a line, for messages that wanted something else there.
std::string Described(const LintLine& line) {
  if (line.kind == Kind::kClose) return "the end of the block";
  return (line.kind == Kind::kValue ? "the value " : "the block ") + Quoted(line.key);
}

}  // namespace

const LintBlock::Lines& LintBlock::Find(std::string_view field) const {
  static const Lines none;
  for (std::size_t i = 0; schema != nullptr && i < values.size(); ++i)
    if (schema->fields[i].key == field || (!field.empty() && schema->fields[i].name == field)) return values[i];
  return none;
}

float NumberOf(const LintLine& line) {
  float number = 0.0f;
  return ParsesWhole(line.value, number) ? number : 0.0f;
}

const LintLine* BlockReader::Expect(Kind kind, std::string_view key, const char* what) {
  if (!AtEnd() && Peek().kind == kind && Peek().key == key) return &Take();
  const int line = AtEnd() ? (lines_.empty() ? 1 : lines_.back().number) : Peek().number;
  report_.Say(line, "missing-or-shifted",
              std::string(what) + " " + Quoted(key) + " must stand here, not " +
                  (AtEnd() ? std::string("the end of the file") : Described(Peek())));
  return nullptr;
}

LintBlock BlockReader::ReadBlock(const LintLine& header, const BlockSchema& schema) {
  LintBlock block = {.name = header.key, .line = header.number, .schema = &schema};
  for (const FieldSchema& field : schema.fields) {
    if (ReadField(field, block)) continue;
    SkipBlock();
    return block;
  }
  if (!AtEnd() && Peek().kind != Kind::kClose)
    report_.Say(Peek().number, "missing-or-shifted", "too much in " + Quoted(schema.name) + ": it must end here");
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
  LintBlock::Lines& values = block.values.emplace_back();
  switch (field.type) {
    case FieldType::kVec3:
      return ReadComposite("Vec3", field, kVec3Keys, values);
    case FieldType::kQuaternion:
      return ReadComposite("Vec3", field, kQuaternionKeys, values);
    case FieldType::kMatrix33:
      return ReadComposite("Matrix33", field, kMatrixKeys, values);
    case FieldType::kMatrix34:
      return ReadComposite("Matrix34", field, kMatrixKeys, values);
    case FieldType::kFlatVec3:
      return ReadFloats(field, kFlatKeys, values);
    case FieldType::kString:
    case FieldType::kBool:
    case FieldType::kTrue:
      break;
    default:
      if (const LintLine* number = ReadNumber(field.key, field, field.type)) values.push_back(number);
      if (values.empty()) return false;
      if (field.type == FieldType::kGeneratorList) return ReadGenerators(block);
      if (field.type == FieldType::kSegmentList) return ReadSegments(block);
      return field.type != FieldType::kObjectiveList || ReadObjectives(block);
  }
  const LintLine* line = Expect(Kind::kValue, field.key, "the value");
  if (line == nullptr) return false;
  values.push_back(line);
  if (field.type == FieldType::kBool && line->value != "true" && line->value != "false")
    report_.Say(line->number, "bad-value", Quoted(line->value) + " must be true or false");
  if (field.type == FieldType::kTrue && line->value != "true")
    report_.Say(line->number, "bad-value", Quoted(line->value) + " must be true, which the game saves");
  return true;
}

// A bad number is told, and the block goes on behind it.
const LintLine* BlockReader::ReadNumber(std::string_view key, const FieldSchema& field, FieldType type) {
  const std::size_t index = next_;
  const LintLine* line = Expect(Kind::kValue, key, key.empty() ? "the number" : "the value");
  if (line == nullptr) return nullptr;
  const bool isList =
      type == FieldType::kGeneratorList || type == FieldType::kSegmentList || type == FieldType::kObjectiveList;
  types_[index] = isList ? FieldType::kInt : type;
  CheckNumber(*line, field, types_[index]);
  return line;
}

bool BlockReader::ReadFloats(const FieldSchema& field, const std::vector<std::string_view>& keys,
                             LintBlock::Lines& values) {
  for (const std::string_view key : keys) {
    const LintLine* line = ReadNumber(key, field, FieldType::kFloat);
    if (line == nullptr) return false;
    values.push_back(line);
  }
  return true;
}

bool BlockReader::ReadComposite(std::string_view header, const FieldSchema& field,
                                const std::vector<std::string_view>& keys, LintBlock::Lines& values) {
  if (Expect(Kind::kComponentOpen, header, "the block") == nullptr) return false;
  const bool read =
      ReadFloats(field, keys, values) && (header != "Matrix34" || ReadComposite("Vec3", field, kVec3Keys, values));
  if (!read) {
    SkipBlock();
    return false;
  }
  if (AtEnd() || Peek().kind != Kind::kClose)
    report_.Say(AtEnd() ? lines_.back().number : Peek().number, "missing-or-shifted",
                "too much in " + Quoted(header) + ": it must end here");
  SkipBlock();
  return true;
}

bool BlockReader::ReadGenerators(LintBlock& block) {
  static constexpr FieldSchema kId = {"generator ID", "", FieldType::kGeneratorId, ""};
  const LintLine& count = lines_[next_ - 1];
  int left = 0;
  if (!ParsesWhole(count.value, left) || left < 0 || left > kMostGenerators) return false;
  auto& ids = block.generatorIds[block.values.size() == block.schema->fields.size() ? 1 : 0];
  for (; left > 0; --left) {
    const LintLine* id = ReadNumber(kId.key, kId, kId.type);
    if (id == nullptr) return false;
    ids.push_back(id);
  }
  return true;
}

bool BlockReader::IsValueNext(std::string_view key) const {
  return !AtEnd() && Peek().kind == Kind::kValue && Peek().key == key;
}

void BlockReader::CheckCount(const LintLine& count, std::size_t found, const char* what) {
  if (NumberOf(count) != static_cast<float>(found))
    report_.Say(count.number, "wrong-count", std::to_string(found) + " " + what + " follow: write that number");
}

bool BlockReader::ReadSegments(LintBlock& block) {
  static constexpr FieldSchema kDuration = {
      "duration_", "", FieldType::kFloat,
      "",          "", {.low = 0.0f, .aboveLow = true, .rule = "no-time", .why = "the next segment comes at once"}};
  static constexpr FieldSchema kTurn = {"rotationAngle_", "", FieldType::kFloat, ""};
  static constexpr FieldSchema kShift = {"distance_", "", FieldType::kFloat, ""};
  const LintLine& count = lines_[next_ - 1];
  while (IsValueNext("levelName_")) {
    LintSegment segment = {.levelName = &Take(), .duration = nullptr, .rotationAngle = nullptr};
    segment.duration = ReadNumber(kDuration.key, kDuration, kDuration.type);
    if (segment.duration != nullptr) segment.rotationAngle = ReadNumber(kTurn.key, kTurn, kTurn.type);
    if (segment.rotationAngle == nullptr || ReadNumber(kShift.key, kShift, kShift.type) == nullptr) return false;
    block.segments.push_back(segment);
  }
  CheckCount(count, block.segments.size(), "segments");
  return ReadEnd("SentinelSegment", "NoMoreSegments");
}

// An unknown rule has unknown values: they end where the next rule, or the list's end, stands.
bool BlockReader::ReadObjectives(LintBlock& block) {
  const LintLine& count = lines_[next_ - 1];
  std::size_t found = 0;
  for (; IsValueNext("Objective"); ++found) {
    const LintLine& type = Take();
    const BlockSchema* schema = FindObjectiveSchema(type.value);
    if (schema == nullptr) {
      report_.Say(type.number, "unknown-objective", "no objective is called " + Quoted(type.value));
      while (!AtEnd() && Peek().kind == Kind::kValue && !IsValueNext("Objective") && !IsValueNext("No more objectives"))
        Take();
      continue;
    }
    LintBlock& values =
        block.objectives.emplace_back(LintBlock{.name = type.value, .line = type.number, .schema = schema});
    for (const FieldSchema& field : schema->fields)
      if (!ReadField(field, values)) return false;
  }
  CheckCount(count, found, "objectives");
  return ReadEnd("No more objectives", "Done");
}

bool BlockReader::ReadEnd(std::string_view key, std::string_view value) {
  const LintLine* line = Expect(Kind::kValue, key, "the value");
  if (line != nullptr && line->value != value)
    report_.Say(line->number, "bad-value", "must be " + Quoted(value) + ", which the game saves");
  return line != nullptr;
}

bool BlockReader::CheckNumber(const LintLine& line, const FieldSchema& field, FieldType type) {
  float number = 0.0f;
  int whole = 0;
  const bool isFloat = type == FieldType::kFloat;
  if (!(isFloat ? ParsesWhole(line.value, number) : ParsesWhole(line.value, whole))) {
    report_.Say(line.number, "bad-value",
                Quoted(line.value) + (isFloat ? " must be a finite number" : " must be a whole number"));
    return false;
  }
  const std::string canonical = CanonicalValue(type, line.value);
  if (canonical != line.value)
    report_.Say(line.number, "canonical-number", "the game saves " + std::string(line.value) + " as " + canonical);
  CheckRange(line, field);
  return true;
}

void BlockReader::CheckRange(const LintLine& line, const FieldSchema& field) {
  const Range& range = field.range;
  const float number = NumberOf(line);
  if (number > range.low || (number == range.low && !range.aboveLow)) {
    if (number <= range.high) return;
  }
  report_.Say(
      line.number, range.rule,
      Quoted(line.value) + " must be " + RangeText(range) + (range.why.empty() ? "" : ": ") + std::string(range.why));
}
