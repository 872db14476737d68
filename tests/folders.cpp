#include "folders.h"

std::string GameFolder() { return BRINEWHIRL_GAME_DIR; }
std::string BuildFolder() { return BRINEWHIRL_BUILD_DIR; }
