// The level file that loading is measured on.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <string>
#include <utility>

namespace bench {

inline constexpr char kPicture[] = "tile.png";

// Builds the text of one level line by line.
class LevelText {
 public:
  void AddObject(int number) {
    Open(std::to_string(number + 1) + ":");
    Line("Name: Object" + std::to_string(number));
    Line("Core: false");
    AddTransform();
    OpenComponent("ScriptBox");
    Close();
    AddSprite();
    AddCollider();
    Close();
  }
  std::string Finish() && { return text_ + "}\n"; }

 private:
  void Line(const std::string& line) { text_ += std::string(depth_, '\t') + line + '\n'; }
  void Open(const std::string& head) {
    Line(head + " {");
    ++depth_;
  }
  void OpenComponent(const std::string& name) { Open("Component: \"" + name + "\""); }
  void Close() {
    --depth_;
    Line("}");
  }
  void Value(const std::string& key) { Line(key + ": " + DrawNumber()); }
  void Vector() {
    OpenComponent("Vec3");
    for (const char* key : {"x_", "y_", "z_"}) Value(key);
    Close();
  }

  void AddTransform() {
    OpenComponent("Transform");
    Vector();
    OpenComponent("Vec3");
    for (const char* line : {"r_: 1", "i_: 0", "j_: 0", "k_: 0"}) Line(line);
    Close();
    OpenComponent("Matrix34");
    for (const char* line : {": 1", ": 0", ": 0", ": 0", ": 1", ": 0", ": 0", ": 0", ": 1"}) Line(line);
    Vector();
    Close();
    Vector();
    Close();
  }

  void AddSprite() {
    OpenComponent("Sprite");
    for (const char* line : {"row: 1", "columns: 1", "start frame: 0", "end frame: 0"}) Line(line);
    for (const char* key : {"r", "g", "b", "a"}) Value(key);
    for (const char* line : {"mesh type: 0", "visibility: true", "shader name: default"}) Line(line);
    Line(std::string("texture path: ") + kPicture);
    Close();
  }

  void AddCollider() {
    OpenComponent("BoxCollider");
    for (const char* line : {"size: 1.13137", "type: 0", "restitution: 1", "ghost: false", "collision group: 1"})
      Line(line);
    Vector();
    Close();
  }

  // Levels hold many noughts and ones; the rest has up to six digits.
  std::string DrawNumber() {
    state_ = state_ * 1664525u + 1013904223u;
    const std::uint32_t kind = state_ >> 28;
    if (kind < 4) return "0";
    if (kind < 6) return "1";
    std::array<char, 32> digits = {};
    std::snprintf(digits.data(), digits.size(), "%g", (state_ & 0xFFFFF) / 16384.0 - 32.0);
    return digits.data();
  }

  std::string text_ = "{\n";
  std::size_t depth_ = 1;
  std::uint32_t state_ = 7;
};

/// The text of a level of `objects` objects, the same at every call.
inline std::string MakeLevel(int objects) {
  LevelText text;
  for (int i = 0; i < objects; ++i) text.AddObject(i);
  return std::move(text).Finish();
}

}  // namespace bench
