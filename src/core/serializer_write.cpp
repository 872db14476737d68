#include <algorithm>
#include <cerrno>
#include <charconv>
#include <cmath>
#include <cstdio>
#include <cstring>
#include <fstream>
#include <utility>

#include "core/print.h"
#include "core/replace_file.h"
#include "core/serializer.h"

bool Serializer::OpenForWrite(const std::string& fileName) {
  fileName_ = fileName;
  writing_ = std::ofstream(TemporaryOf(fileName), std::ios::binary | std::ios::trunc).is_open();
  out_ = "{\n";
  indent_ = 1;
  if (!writing_) Print("%s: cannot be written: %s\n", fileName.c_str(), std::strerror(errno));
  return writing_;
}

void Serializer::OpenInMemory(int digits) {
  fileName_ = "memory";
  digits_ = digits;
  inMemory_ = true;
  writing_ = true;
  indent_ = 0;
}

void Serializer::OpenDocument() {
  fileName_ = "memory";
  out_ = "{\n";
  writing_ = true;
  indent_ = 1;
}

void Serializer::EndDocument() { out_ += "}\n"; }

bool Serializer::Close() {
  if (!writing_) return false;
  out_ += "}\n";
  writing_ = false;
  const std::string reason = ReplaceFile(fileName_, out_);
  if (reason.empty()) return true;
  Print("%s: could not be saved, the old file is kept: %s\n", fileName_.c_str(), reason.c_str());
  return false;
}

void Serializer::Indent() { out_.append(indent_, '\t'); }

void Serializer::BeginBlock(std::uint32_t id) {
  Indent();
  out_ += std::to_string(id);
  out_ += ": {\n";
  ++indent_;
}

void Serializer::BeginComponent(std::string_view name) {
  Indent();
  out_ += "Component: \"";
  out_ += name;
  out_ += "\" {\n";
  ++indent_;
}

void Serializer::EndBlock() {
  --indent_;
  Indent();
  out_ += "}\n";
}

void Serializer::Line(std::string_view key, std::string_view value) {
  Indent();
  out_ += key;
  out_ += ": ";
  out_ += value;
  out_ += '\n';
}

void Serializer::Complain(Fault fault, std::string_view key) {
  constexpr const char* kTexts[] = {
      "not a finite number, written as 0:", "control characters would break the line, dropped from",
      "a \"{\" at the end would break the line, dropped from"};
  const auto index = static_cast<std::size_t>(fault);
  if (std::exchange(told_[index], true)) return;
  Print("%s: %s %s\n", fileName_.c_str(), kTexts[index], std::string(key).c_str());
}

void Serializer::WriteFloat(std::string_view key, float value) {
  if (!std::isfinite(value)) {
    Complain(Fault::kNotFinite, key);
    value = 0.0f;
  }
  char text[48];
  const auto end = std::to_chars(text, text + sizeof text, value, std::chars_format::general, digits_).ptr;
  Line(key, {text, static_cast<std::size_t>(end - text)});
}

void Serializer::WriteInt(std::string_view key, int value) { Line(key, std::to_string(value)); }

void Serializer::WriteBool(std::string_view key, bool value) { Line(key, value ? "true" : "false"); }

void Serializer::WriteString(std::string_view key, std::string_view value) {
  std::string text(value);
  const bool hadControl =
      std::erase_if(text, [](char c) { return static_cast<unsigned char>(c) < 0x20 || c == 0x7f; }) > 0;
  if (hadControl) Complain(Fault::kControlCharacter, key);
  if (text.ends_with('{')) Complain(Fault::kFinalBrace, key);
  while (text.ends_with('{')) text.pop_back();
  Line(key, text);
}

void Serializer::WriteVec3(const Vec3& v) {
  BeginComponent("Vec3");
  WriteFloat("x_", v.x);
  WriteFloat("y_", v.y);
  WriteFloat("z_", v.z);
  EndBlock();
}

// The header of a quaternion is that of a vector: readers tell them apart by position.
void Serializer::WriteQuaternion(const Quaternion& q) {
  BeginComponent("Vec3");
  WriteFloat("r_", q.r);
  WriteFloat("i_", q.i);
  WriteFloat("j_", q.j);
  WriteFloat("k_", q.k);
  EndBlock();
}

void Serializer::WriteMatrix33(const Matrix33& m) {
  BeginComponent("Matrix33");
  for (const float value : m.m) WriteFloat("", value);
  EndBlock();
}

void Serializer::WriteMatrix34(const Matrix34& m) {
  BeginComponent("Matrix34");
  for (const float value : m.rotation.m) WriteFloat("", value);
  WriteVec3(m.translation);
  EndBlock();
}
