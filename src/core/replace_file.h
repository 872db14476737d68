// Putting a whole new file in an old one's place in one step: whoever looks, at whatever moment, finds one of the two.
#pragma once

#include <string>
#include <string_view>

/// The file beside `fileName` that its next content is gathered in.
std::string TemporaryOf(const std::string& fileName);

/// Writes the text to the temporary file, waits until it is on the disk, and renames it. On failure the old file stays,
/// the temporary one goes, and the system's reason is returned; empty on success.
std::string ReplaceFile(const std::string& fileName, std::string_view text);
