#include "editor/bars/field_value.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <type_traits>

namespace {

// The type that a target points to.
template <class Pointer>
using Pointee = std::remove_pointer_t<std::decay_t<Pointer>>;

template <class T>
constexpr bool kIsNumber = std::is_same_v<T, int> || std::is_same_v<T, std::uint32_t> || std::is_same_v<T, float>;

bool IsSound(float value) { return std::isfinite(value); }
bool IsSound(const Vec3& v) { return IsFinite(v); }
bool IsSound(const FieldColour& c) { return IsFinite(Vec3{c[0], c[1], c[2]}); }
template <class T>
bool IsSound(const T& /*value*/) {
  return true;
}

template <class T>
T Limited(const Field& field, T value) {
  if constexpr (kIsNumber<T>)
    return static_cast<T>(std::clamp(static_cast<double>(value), field.lowest, field.highest));
  else if constexpr (std::is_same_v<T, std::string>)
    return value.substr(0, field.maxLength);
  else
    return value;
}

bool IsChoice(const Field& field, int value) {
  return field.choices.empty() || std::any_of(field.choices.begin(), field.choices.end(),
                                              [&](const auto& choice) { return choice.first == value; });
}

void Append(std::string& text, float value) {
  char digits[48];
  const auto end = std::to_chars(digits, digits + sizeof digits, value).ptr;
  text.append(digits, end);
}

std::string ToText(bool value) { return value ? "true" : "false"; }
std::string ToText(int value) { return std::to_string(value); }
std::string ToText(std::uint32_t value) { return std::to_string(value); }
std::string ToText(const std::string& value) { return value; }
std::string ToText(float value) {
  std::string text;
  Append(text, value);
  return text;
}
std::string ToText(const FieldColour& c) {
  std::string text;
  for (const float part : c) {
    if (!text.empty()) text += ' ';
    Append(text, part);
  }
  return text;
}
std::string ToText(const Vec3& v) { return ToText(FieldColour{v.x, v.y, v.z}); }

std::string_view Trimmed(std::string_view text) {
  const auto first = text.find_first_not_of(" \t\r");
  if (first == std::string_view::npos) return {};
  return text.substr(first, text.find_last_not_of(" \t\r") - first + 1);
}

template <class Number>
bool ParseNumber(std::string_view text, Number& number) {
  text = Trimmed(text);
  if (text.starts_with('+')) text.remove_prefix(1);
  const auto result = std::from_chars(text.data(), text.data() + text.size(), number);
  return result.ec == std::errc{} && result.ptr == text.data() + text.size();
}

bool Parse(std::string_view text, bool& value) {
  text = Trimmed(text);
  value = text == "true" || text == "1";
  return value || text == "false" || text == "0";
}
bool Parse(std::string_view text, int& value) { return ParseNumber(text, value); }
bool Parse(std::string_view text, std::uint32_t& value) { return ParseNumber(text, value); }
bool Parse(std::string_view text, float& value) { return ParseNumber(text, value) && std::isfinite(value); }
bool Parse(std::string_view text, std::string& value) {
  value = text;
  return true;
}
bool Parse(std::string_view text, FieldColour& value) {
  std::size_t part = 0;
  while (!(text = Trimmed(text)).empty()) {
    const auto end = std::min(text.find_first_of(", \t"), text.size());
    if (part == value.size() || !Parse(text.substr(0, end), value[part++])) return false;
    text.remove_prefix(end);
    text = Trimmed(text);
    if (text.starts_with(',')) text.remove_prefix(1);
  }
  return part == value.size();
}
bool Parse(std::string_view text, Vec3& value) {
  FieldColour parts;
  if (!Parse(text, parts)) return false;
  value = {parts[0], parts[1], parts[2]};
  return true;
}

}  // namespace

FieldValue GetValue(const Field& field) {
  return std::visit([](auto* target) { return FieldValue(*target); }, field.target);
}

bool SetValue(const Field& field, const FieldValue& value) {
  if (field.readOnly) return false;
  return std::visit(
      [&](auto* target) {
        using T = Pointee<decltype(target)>;
        const T* given = std::get_if<T>(&value);
        if (given == nullptr || !IsSound(*given)) return false;
        if constexpr (std::is_same_v<T, int>)
          if (!IsChoice(field, *given)) return false;
        T limited = Limited(field, *given);
        if (limited == *target) return false;
        *target = std::move(limited);
        return true;
      },
      field.target);
}

void PutBack(const Field& field, const FieldValue& value) {
  std::visit(
      [&](auto* target) {
        if (const auto* had = std::get_if<Pointee<decltype(target)>>(&value)) *target = *had;
      },
      field.target);
}

std::string TextOf(const Field& field) { return TextOf(field, GetValue(field)); }

std::string TextOf(const Field& field, const FieldValue& value) {
  if (const int* chosen = std::get_if<int>(&value))
    for (const auto& [number, name] : field.choices)
      if (number == *chosen) return std::string(name);
  return std::visit([](const auto& held) { return ToText(held); }, value);
}

bool ParseValue(const Field& field, std::string_view text, FieldValue& value) {
  for (const auto& [number, name] : field.choices) {
    if (name != Trimmed(text)) continue;
    value = number;
    return true;
  }
  return std::visit(
      [&](auto* target) {
        Pointee<decltype(target)> parsed{};
        if (!Parse(text, parsed)) return false;
        if constexpr (std::is_same_v<decltype(parsed), int>)
          if (!IsChoice(field, parsed)) return false;
        value = std::move(parsed);
        return true;
      },
      field.target);
}
