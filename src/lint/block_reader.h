// Reads the blocks of a level file against the key table.
#pragma once

#include <array>
#include <string>
#include <string_view>
#include <vector>

#include "lint/key_table.h"
#include "lint/scanner.h"

/// A level piece of an episode; the numbers are null when they are none.
struct LintSegment {
  const LintLine* levelName;
  const LintLine* duration;
  const LintLine* rotationAngle;
};

/// One component, script or objective as it was read: where it stands and the lines of its values.
struct LintBlock {
  using Lines = std::vector<const LintLine*>;

  std::string_view name;
  int line;
  const BlockSchema* schema = nullptr;
  std::vector<Lines> values = {};          ///< by field of the schema; short when the block is damaged
  std::array<Lines, 2> generatorIds = {};  ///< of a body: what pushes it, and what hangs on it
  std::vector<LintSegment> segments = {};  ///< of a SegmentManager
  std::vector<LintBlock> objectives = {};  ///< of an ObjectiveManager

  /// The lines of the field of that key or name; empty when the block has none.
  const Lines& Find(std::string_view field) const;
};

class BlockReader {
 public:
  BlockReader(const std::vector<LintLine>& lines, LintReport& report)
      : lines_(lines), types_(lines.size(), FieldType::kString), report_(report) {}

  bool AtEnd() const { return next_ >= lines_.size(); }
  const LintLine& Peek() const { return lines_[next_]; }
  const LintLine& Take() { return lines_[next_++]; }
  /// A line of that kind and key, or null with a fault; nothing is taken then.
  const LintLine* Expect(LintLine::Kind kind, std::string_view key, const char* what);
  /// Reads a block whose header has been taken, up to and including its closing line. After the first fault in it the
  /// rest of the block is skipped.
  LintBlock ReadBlock(const LintLine& header, const BlockSchema& schema);
  /// Skips the rest of a block whose header has been taken, with its closing line.
  void SkipBlock();

  /// What each line's value is; texts where nothing else is known.
  const std::vector<FieldType>& GetTypes() const { return types_; }

 private:
  bool ReadField(const FieldSchema& field, LintBlock& block);
  const LintLine* ReadNumber(std::string_view key, const FieldSchema& field, FieldType type);
  bool ReadFloats(const FieldSchema& field, const std::vector<std::string_view>& keys, LintBlock::Lines& values);
  bool ReadComposite(std::string_view header, const FieldSchema& field, const std::vector<std::string_view>& keys,
                     LintBlock::Lines& values);
  bool ReadGenerators(LintBlock& block);
  bool ReadSegments(LintBlock& block);
  bool ReadObjectives(LintBlock& block);
  bool ReadEnd(std::string_view key, std::string_view value);
  bool IsValueNext(std::string_view key) const;
  /// A fault when the count does not fit what follows it.
  void CheckCount(const LintLine& count, std::size_t found, const char* what);
  bool CheckNumber(const LintLine& line, const FieldSchema& field, FieldType type);
  void CheckRange(const LintLine& line, const FieldSchema& field);

  const std::vector<LintLine>& lines_;
  std::vector<FieldType> types_;
  LintReport& report_;
  std::size_t next_ = 0;
};

/// The number of a value, 0 when it is none.
float NumberOf(const LintLine& line);
