#include "lint/number.h"

std::string CanonicalNumber(float number) {
  char digits[48];
  return {digits, std::to_chars(digits, digits + sizeof digits, number, std::chars_format::general, 6).ptr};
}
