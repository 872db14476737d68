// A page can start no other program.
#include "editor/files/played_copy.h"

std::string PlayedCopy::Start(const std::string& /*name*/, const std::string& /*text*/) {
  return "a browser runs no other program; brinewhirl-tool lint --play does it for a level that was downloaded";
}

std::optional<std::vector<std::string>> PlayedCopy::Poll() { return std::nullopt; }
void PlayedCopy::Stop() {}
