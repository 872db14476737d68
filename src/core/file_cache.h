// The text of level and archetype files, each read from disk once per run. What is saved elsewhere does not show: a
// file read before stays as it was read, until the editor forgets it.
#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

/// The largest file that is read, in bytes.
inline constexpr long long kMaxFileBytes = 16LL * 1024 * 1024;

/// The file's whole text, kept for the run. Null when it cannot be opened, is no regular file, or, each with a message,
/// is larger than kMaxFileBytes or is no IsLevelName; nothing is kept then.
const std::string* ReadCachedFile(const std::string& fileName);

/// Whether the file has been read in this run.
bool IsFileCached(const std::string& fileName);

/// When the file had been written that was read; nothing for one that was not, or whose text was given.
std::optional<std::filesystem::file_time_type> CachedFileTime(const std::string& fileName);

/// Forgets the text of one file, which the next reader reads anew; no reader of it may be open.
void ForgetCachedFile(const std::string& fileName);

/// Readers of that name get this text from now on, and no file is asked for; no reader of it may be open.
void KeepTextAsFile(const std::string& fileName, const std::string& text);

/// The names of all files that have been read in this run and not been forgotten, sorted.
std::vector<std::string> CachedFileNames();

/// Forgets every text; no reader may be open.
void ClearFileCache();
