// Numbers of a level file, read strictly and written as the game writes them, without regard to the locale.
#pragma once

#include <charconv>
#include <cmath>
#include <string>
#include <string_view>
#include <type_traits>

/// Whether the whole text is that kind of number, and finite.
template <class Number>
bool ParsesWhole(std::string_view text, Number& number) {
  const auto result = std::from_chars(text.data(), text.data() + text.size(), number);
  if (result.ec != std::errc{} || result.ptr != text.data() + text.size()) return false;
  if constexpr (std::is_floating_point_v<Number>) return std::isfinite(number);
  return true;
}

/// A number as the game writes it: 6 significant digits.
std::string CanonicalNumber(float number);
