// The one description of every block of a level file: its lines in order, their types, units and ranges, and what they
// mean. Lint reads by it, docs/format-reference.md is printed from it, and tests hold it against what the game writes.
// It stands on its own, so that lint never has to make a script to know its values: constructors act on the scene.
#pragma once

#include <limits>
#include <span>
#include <string>
#include <string_view>

#include "lint/rules.h"

enum class FieldType {
  kFloat,
  kInt,
  kBool,
  kTrue,  ///< a bool that the game always writes as true
  kString,
  kVec3,
  kFlatVec3,  ///< three lines without a block
  kQuaternion,
  kMatrix33,
  kMatrix34,
  kGeneratorId,    ///< the number by which bodies name a generator
  kGeneratorList,  ///< a count, and that many lines of such numbers
  kSegmentList,    ///< a count, the segments, and the line that ends them
  kObjectiveList,  ///< likewise
};

/// What a mirror makes of a vector.
enum class Mirrored {
  kSame,
  kWay,    ///< a direction, or a place beside the object: its part across the mirror turns round
  kSpin,   ///< turning about each axis: its two other parts do
  kLeast,  ///< the lower end of a range of ways, before the field of its upper end: they change places as well
  kMost,
};

/// What the numbers of a field may be, both ends included unless said otherwise.
struct Range {
  float low = std::numeric_limits<float>::lowest();
  float high = std::numeric_limits<float>::max();
  bool aboveLow = false;           ///< `low` itself is wrong
  RuleName rule = "out-of-range";  ///< that a number outside breaks
  std::string_view why = {};       ///< what would happen, for its message
};

/// "0 to 100", "above 0", "0 and up"; empty for any.
std::string RangeText(const Range& range);

struct FieldSchema {
  std::string_view key;    ///< empty for composite values, whose lines have fixed keys
  std::string_view label;  ///< on the editor's bar, or several of them; empty when it is not shown there
  FieldType type;
  std::string_view meaning;
  std::string_view unit = {};
  Range range = {};
  std::string_view name = {};  ///< of a value whose lines have no key of its own
  Mirrored mirrored = Mirrored::kSame;
};

struct BlockSchema {
  std::string_view name;
  std::string_view meaning;  ///< one sentence
  std::span<const FieldSchema> fields = {};
};

/// The block of a component or script by its name in files; null for an unknown one.
const BlockSchema* FindComponentSchema(std::string_view name);
const BlockSchema* FindScriptSchema(std::string_view name);
/// The values of a rule by the name that files use, without the line that names it; null for an unknown one.
const BlockSchema* FindObjectiveSchema(std::string_view name);

/// Everything that has a schema; components in the order in which an object holds them.
std::span<const BlockSchema> ComponentSchemas();
std::span<const BlockSchema> ScriptSchemas();
std::span<const BlockSchema> ObjectiveSchemas();

/// Lists of more are cut off by the game.
inline constexpr int kMostGenerators = 1000;
