#pragma once

/// The program's version, as the build gives it.
const char* ProgramVersion();
