// The text of level and archetype files, each read from disk once per run. What is saved later does not show: a file
// read before stays as it was read.
#pragma once

#include <string>

/// The largest file that is read, in bytes.
inline constexpr long long kMaxFileBytes = 16LL * 1024 * 1024;

/// The file's whole text, kept for the run. Null when it cannot be opened, is no regular file, or, each with a message,
/// is larger than kMaxFileBytes or is no IsLevelName; nothing is kept then.
const std::string* ReadCachedFile(const std::string& fileName);

/// Whether the file has been read in this run.
bool IsFileCached(const std::string& fileName);

/// Forgets every text; no reader may be open.
void ClearFileCache();
