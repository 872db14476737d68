#include "core/file_name.h"

#include <algorithm>

namespace {

bool IsForbidden(char c) {
  const auto code = static_cast<unsigned char>(c);
  return c == '/' || c == '\\' || code < 0x20 || code == 0x7f;
}

bool NamesDrive(std::string_view name) {
  const auto isLetter = [](char c) { return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z'); };
  return name.size() >= 2 && name[1] == ':' && isLetter(name[0]);
}

}  // namespace

bool IsPlainName(std::string_view name) {
  return !name.empty() && name != "." && name.find("..") == std::string_view::npos && !NamesDrive(name) &&
         std::none_of(name.begin(), name.end(), IsForbidden);
}

bool IsLevelName(std::string_view name) {
  for (const std::string_view folder : {"examples/", "autosaves/"})
    if (name.starts_with(folder)) return IsPlainName(name.substr(folder.size()));
  return IsPlainName(name);
}
