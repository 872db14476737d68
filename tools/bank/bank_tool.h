// Makes sound banks and looks into them.
#pragma once

#include <cstdio>
#include <string>

/// Writes the bank at `out`, whose name ends in ".bank", and its strings bank beside it (".strings.bank"), from a text
/// with one event a line: path, "music" or "sfx", and an Ogg Vorbis file; "#" starts a comment. The files are looked
/// for in `soundFolder`, by default the text's own. The same input gives the same bytes. Prints every fault with its
/// line to standard error and writes nothing then; returns the exit code.
int BuildBank(const std::string& spec, const std::string& out, const std::string& soundFolder);

/// Prints one line an event, its path first. The strings bank is expected beside the file.
int ListBank(const std::string& file, std::FILE* out);

/// Writes the sound of an event, named by its path, as a 16-bit WAV file.
int ExtractFromBank(const std::string& file, const std::string& event, const std::string& out);
