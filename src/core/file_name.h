// Which file names the game takes from level files, from the editor's bars and from the tool's command line: nothing
// that they say may lead out of the game's folder.
#pragma once

#include <string_view>

/// A file of the folder itself: not empty, no slash or backslash, no drive, no "..", no control character. Only such a
/// name is written, and only such a picture is read from Texture/.
bool IsPlainName(std::string_view name);

/// A level or archetype that may be read: a plain name, or one behind "examples/" or "autosaves/".
bool IsLevelName(std::string_view name);

/// What is wrong with a name that is not plain, for messages: "NAME: " stands before it.
inline constexpr char kNoPlainName[] = "is no plain name in the game's folder";
