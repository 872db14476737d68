// Reads the blocks of a level file against the key table.
#pragma once

#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "tools/lint/key_table.h"
#include "tools/lint/scanner.h"

/// A level piece of an episode.
struct LintSegment {
  const LintLine* levelName;
  const LintLine* duration;  ///< null when it is no number
};

/// One component or script as it was read: where it stands and its single values by key.
struct LintBlock {
  std::string_view name;
  int line;
  std::map<std::string_view, const LintLine*> values = {};
  std::vector<const LintLine*> generatorIds = {};  ///< of a body, both lists
  std::vector<LintSegment> segments = {};          ///< of a SegmentManager
};

class BlockReader {
 public:
  BlockReader(const std::vector<LintLine>& lines, LintReport& report) : lines_(lines), report_(report) {}

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

 private:
  bool ReadField(const FieldSchema& field, LintBlock& block);
  bool ReadFloats(std::string_view header, const std::vector<std::string_view>& keys, bool translation);
  bool ReadSegments(LintBlock& block);
  bool ReadObjectives();
  bool IsValueNext(std::string_view key) const;
  /// A fault when the count does not fit what follows it.
  void CheckCount(const LintLine& count, std::size_t found, const char* what);
  bool CheckNumber(const LintLine& line, FieldType type);

  const std::vector<LintLine>& lines_;
  LintReport& report_;
  std::size_t next_ = 0;
};

/// The number of a value, 0 when it is none.
float NumberOf(const LintLine& line);
