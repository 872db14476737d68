#include "core/version.h"

const char* ProgramVersion() { return BRINEWHIRL_VERSION; }
