// Where this build and its sources lie. Behind functions, so that one object file alone knows a path of the machine and
// the compiler cache serves every other test in any folder.
#pragma once

#include <string>

/// The folder with the levels and archetypes that ship.
std::string GameFolder();
/// The folder of the build, with everything that the program reads.
std::string BuildFolder();
