#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstdlib>
#include <cstring>
#include <limits>

#include "core/file_cache.h"
#include "core/line_scan.h"
#include "core/print.h"
#include "core/serializer.h"

namespace {

// The part of a value that from_chars may start at: it takes no blanks and no plus sign itself.
std::string_view NumberStart(std::string_view text) {
  const auto start = text.find_first_not_of(' ');
  text.remove_prefix(start == std::string_view::npos ? text.size() : start);
  if (text.size() > 1 && text[0] == '+' && text[1] != '-') text.remove_prefix(1);
  return text;
}

// What files hold nearly always: digits with a point at most, few enough that the number without its point and the
// power of ten are both exact floats. Their quotient is then the nearest float, which from_chars would give more
// slowly. False for anything else.
bool ReadPlainNumber(std::string_view text, float& number) {
  constexpr std::array<float, 9> kPowers = {1.0f, 1e1f, 1e2f, 1e3f, 1e4f, 1e5f, 1e6f, 1e7f, 1e8f};
  constexpr int kMostExact = 1 << 24;
  const bool negative = !text.empty() && text.front() == '-';
  if (negative) text.remove_prefix(1);
  if (text.empty() || text.size() > kPowers.size() || text.front() == '.') return false;
  int digits = 0;
  std::size_t decimals = 0;
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (text[i] == '.' && decimals == 0 && i + 1 < text.size()) {
      decimals = text.size() - i - 1;
    } else if (text[i] >= '0' && text[i] <= '9') {
      digits = digits * 10 + (text[i] - '0');
    } else {
      return false;
    }
  }
  if (digits > kMostExact) return false;
  const float size = static_cast<float>(digits) / kPowers[decimals];
  number = negative ? -size : size;
  return true;
}

std::string_view ValueOf(const TextLine& line) {
  return line.colon + 2 > line.text.size() ? std::string_view{} : line.text.substr(line.colon + 2);
}

// Of a number out of a float's range: too near to 0 rather than too far from it.
bool IsBelowOne(std::string_view text) { return std::abs(std::strtod(std::string(text).c_str(), nullptr)) < 1.0; }

bool OpensBlock(std::string_view line) { return line.back() == '{'; }
bool ClosesBlock(std::string_view line) { return line.front() == '}'; }

}  // namespace

bool Serializer::OpenForRead(const std::string& fileName) {
  const std::string* text = ReadCachedFile(fileName);
  return StartReading(fileName, text == nullptr ? std::string_view{} : *text);
}

bool Serializer::OpenText(const std::string& name, std::string_view text) {
  inMemory_ = true;
  return StartReading(name, text);
}

bool Serializer::StartReading(const std::string& name, std::string_view text) {
  fileName_ = name;
  if (text.empty()) return false;
  position_ = text.data();
  end_ = position_ + text.size();
  const auto* lineEnd = static_cast<const char*>(std::memchr(position_, '\n', text.size()));
  position_ = lineEnd == nullptr ? end_ : lineEnd + 1;
  lineNumber_ = 1;
  depth_ = 1;
  return true;
}

bool Serializer::NextLine(TextLine& line) {
  while (position_ < end_) {
    line = ScanLine(position_, end_, position_);
    ++lineNumber_;
    if (!line.text.empty() && line.text.back() == '\r') line.text.remove_suffix(1);
    if (line.text.empty()) continue;
    if (OpensBlock(line.text))
      ++depth_;
    else if (ClosesBlock(line.text))
      --depth_;
    return true;
  }
  metEnd_ = true;
  return false;
}

LineKind Serializer::ReadLine(std::string_view& key, std::string_view& value) {
  TextLine read;
  if (!NextLine(read)) return LineKind::kEndOfFile;
  const std::string_view line = read.text;
  const std::string_view beforeColon = line.substr(0, read.colon);
  if (OpensBlock(line)) {
    key = beforeColon;
    if (beforeColon != "Component") return LineKind::kBlockOpen;
    const auto first = line.find('"');
    const auto last = line.rfind('"');
    key = first == std::string_view::npos || last == first ? std::string_view{}
                                                           : line.substr(first + 1, last - first - 1);
    return LineKind::kComponentOpen;
  }
  if (ClosesBlock(line)) return LineKind::kBlockClose;
  key = beforeColon;
  value = ValueOf(read);
  return LineKind::kKeyValue;
}

bool Serializer::NextValue(std::string_view& value) {
  TextLine line;
  if (!NextLine(line) || OpensBlock(line.text) || ClosesBlock(line.text)) return false;
  value = ValueOf(line);
  return true;
}

void Serializer::SkipLine() {
  TextLine line;
  NextLine(line);
}

float Serializer::ReadFloat() {
  std::string_view value;
  if (!NextValue(value)) return 0.0f;
  const std::string_view text = NumberStart(value);
  float number = 0.0f;
  if (ReadPlainNumber(text, number)) return number;
  const auto result = std::from_chars(text.data(), text.data() + text.size(), number);
  if (result.ec == std::errc{} && std::isfinite(number)) return number;
  const bool tooSmall = result.ec == std::errc::result_out_of_range && IsBelowOne(text);
  if (result.ec != std::errc::invalid_argument && !tooSmall && !reportedNumber_) {
    Print("%s: not a finite number, read as 0, as are all others in this file\n", Where().c_str());
    reportedNumber_ = true;
  }
  return 0.0f;
}

int Serializer::ReadInt() {
  std::string_view value;
  if (!NextValue(value)) return 0;
  const std::string_view text = NumberStart(value);
  int number = 0;
  const auto result = std::from_chars(text.data(), text.data() + text.size(), number);
  if (result.ec != std::errc::result_out_of_range) return number;
  return text.front() == '-' ? std::numeric_limits<int>::min() : std::numeric_limits<int>::max();
}

bool Serializer::ReadBool() {
  std::string_view value;
  return NextValue(value) && !value.empty() && (value.front() == 't' || value.front() == 'T');
}

std::string Serializer::ReadString() {
  std::string_view value;
  return NextValue(value) ? std::string(value) : std::string{};
}

int Serializer::ReadCount() {
  const int count = ReadInt();
  if (count <= 0) return 0;
  // A line that is read holds a character and its end; counting the lines would make a load quadratic.
  const std::ptrdiff_t mostLinesLeft = (end_ - position_) / 2 + 1;
  return static_cast<int>(std::min<std::ptrdiff_t>(count, mostLinesLeft));
}

bool Serializer::NextIsValue() const {
  Serializer ahead = *this;
  std::string_view value;
  return ahead.NextValue(value);
}

std::string_view Serializer::NextKey() const {
  Serializer ahead = *this;
  std::string_view key;
  std::string_view value;
  return ahead.ReadLine(key, value) == LineKind::kKeyValue ? key : std::string_view{};
}

Vec3 Serializer::ReadVec3() {
  SkipLine();
  Vec3 v;
  v.x = ReadFloat();
  v.y = ReadFloat();
  v.z = ReadFloat();
  SkipLine();
  return v;
}

Quaternion Serializer::ReadQuaternion() {
  SkipLine();
  Quaternion q;
  q.r = ReadFloat();
  q.i = ReadFloat();
  q.j = ReadFloat();
  q.k = ReadFloat();
  SkipLine();
  return q;
}

Matrix33 Serializer::ReadMatrix33() {
  SkipLine();
  Matrix33 m;
  for (float& value : m.m) value = ReadFloat();
  SkipLine();
  return m;
}

Matrix34 Serializer::ReadMatrix34() {
  SkipLine();
  Matrix34 m;
  for (float& value : m.rotation.m) value = ReadFloat();
  m.translation = ReadVec3();
  SkipLine();
  return m;
}

void Serializer::SkipToDepth(int depth) {
  TextLine line;
  while (depth_ > depth && NextLine(line)) {
  }
}

std::string Serializer::Where() const { return fileName_ + ": line " + std::to_string(lineNumber_); }
