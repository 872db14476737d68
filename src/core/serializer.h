// Writes and reads the text format of levels and archetypes: tab-indented lines of "key: value" in nested blocks.
// Reading is positional: a value is whatever the next line holds, and keys are not compared. One Serializer serves one
// save or one load. Numbers are always in the C locale.
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>

#include "physics/math/matrix34.h"
#include "physics/math/quaternion.h"

struct TextLine;

enum class LineKind { kBlockOpen, kComponentOpen, kKeyValue, kBlockClose, kEndOfFile };

class Serializer {
 public:
  // --- writing: into memory until Close ---

  /// Starts a document for `fileName`; false when the temporary file beside it cannot be opened. The writes that follow
  /// a failure have no effect.
  bool OpenForWrite(const std::string& fileName);
  /// Starts a text that stays in memory, with floats at `digits` significant digits; TakeText ends it.
  void OpenInMemory(int digits);
  /// The same for the text that a file would hold, whole and with a file's digits; EndDocument before TakeText.
  void OpenDocument();
  void EndDocument();
  /// True for a text that is no file. What only files need must then leave no trace in the scene, and what is read has
  /// been in the scene before: it starts nothing that has started already.
  bool IsInMemory() const { return inMemory_; }
  /// Ends the document and puts it in the file's place in one step; false, with the old file untouched and a message,
  /// when that fails.
  bool Close();
  /// The text written so far.
  std::string TakeText() { return std::move(out_); }

  void BeginBlock(std::uint32_t id);
  void BeginComponent(std::string_view name);
  void EndBlock();
  /// 6 significant digits; NaN and infinity become 0 with a message.
  void WriteFloat(std::string_view key, float value);
  void WriteInt(std::string_view key, int value);
  void WriteBool(std::string_view key, bool value);
  /// Control characters and a final "{" would break the line: they are dropped, each kind with a message.
  void WriteString(std::string_view key, std::string_view value);
  void WriteVec3(const Vec3& v);
  void WriteQuaternion(const Quaternion& q);
  void WriteMatrix33(const Matrix33& m);
  void WriteMatrix34(const Matrix34& m);

  // --- reading: views into the cached text, which outlives the Serializer ---

  /// Opens a document through the file cache and passes its first line; false when there is none or it is empty.
  bool OpenForRead(const std::string& fileName);
  /// Reads a text that stays where it is for as long as the Serializer; `name` stands for it in messages.
  bool OpenText(const std::string& name, std::string_view text);
  /// The next non-empty line without its tabs. `key`: the object ID, the component's name or the text before the first
  /// colon; `value`: the text after ": ", for kKeyValue only.
  LineKind ReadLine(std::string_view& key, std::string_view& value);
  /// Each of these reads one line. A line that is no value gives 0, false or "". Numbers are read as prefixes; NaN and
  /// infinity give 0 with a message, integers out of range clamp.
  float ReadFloat();
  int ReadInt();
  bool ReadBool();
  std::string ReadString();
  /// An integer as the number of lines or blocks that follow: never negative, never more than the lines left.
  int ReadCount();
  /// True when the next line is a value; nothing is read.
  bool NextIsValue() const;
  /// The key of the next line, for the few lists that end by a key; empty when it is no value. Nothing is read.
  std::string_view NextKey() const;
  Vec3 ReadVec3();
  Quaternion ReadQuaternion();
  Matrix33 ReadMatrix33();
  Matrix34 ReadMatrix34();

  /// Blocks open at this point; 1 inside the document alone.
  int GetDepth() const { return depth_; }
  /// Reads lines until no more than `depth` blocks are open, or the text ends.
  void SkipToDepth(int depth);
  /// True once a read met the end of the text.
  bool HasMetEnd() const { return metEnd_; }
  /// "NAME: line N" of the line read last, for messages.
  std::string Where() const;
  /// Of the text, behind the line read last.
  std::size_t CountBytesLeft() const { return static_cast<std::size_t>(end_ - position_); }

 private:
  static constexpr int kFileDigits = 6;
  // What a text can hold that no file may; each kind is told once a save.
  enum class Fault { kNotFinite, kControlCharacter, kFinalBrace };

  void Line(std::string_view key, std::string_view value);
  void Indent();
  bool NextLine(TextLine& line);
  bool NextValue(std::string_view& value);
  void SkipLine();
  bool StartReading(const std::string& name, std::string_view text);
  void Complain(Fault fault, std::string_view key);

  std::string fileName_;
  // writing
  std::string out_;
  bool writing_ = false;
  int digits_ = kFileDigits;
  std::uint8_t indent_ = 0;
  std::array<bool, 3> told_{};  // by Fault
  // reading
  const char* position_ = nullptr;
  const char* end_ = nullptr;
  int lineNumber_ = 0;
  int depth_ = 0;
  bool reportedNumber_ = false;
  bool inMemory_ = false;
  bool metEnd_ = false;
};
