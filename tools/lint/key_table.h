// What every block of a level file must hold, line by line. It stands on its own, so that lint never has to make a
// script to know its values: constructors act on the scene.
#pragma once

#include <span>
#include <string_view>

enum class FieldType {
  kFloat,
  kInt,
  kBool,
  kString,
  kVec3,
  kQuaternion,
  kMatrix33,
  kMatrix34,
  kGeneratorList,
  kSegmentList,    ///< a count, the segments, and the line that ends them
  kObjectiveList,  ///< likewise
};

struct FieldSchema {
  std::string_view key;  ///< empty for composite values, whose lines have fixed keys
  FieldType type;
};

struct BlockSchema {
  std::string_view name;
  std::span<const FieldSchema> fields;
};

/// The block of a component or script by its name in files; null for an unknown one.
const BlockSchema* FindComponentSchema(std::string_view name);
const BlockSchema* FindScriptSchema(std::string_view name);
/// The values of a rule by the name that files use, without the line that names it; null for an unknown one.
const BlockSchema* FindObjectiveSchema(std::string_view name);

/// Everything that has a schema.
std::span<const BlockSchema> ComponentSchemas();
std::span<const BlockSchema> ScriptSchemas();
std::span<const BlockSchema> ObjectiveSchemas();
