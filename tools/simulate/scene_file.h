// The scene in which a run has ended, as a level.
#pragma once

#include <string>

/// Writes what a level keeps of the scene to a file anywhere, which must hold a level or nothing. What would not come
/// back as it was is left out: the match controller, which would bring its pieces anew, broken things and growing
/// shadows, which forget how far they are, and the mark of a piece's duration. The scene is of no further use. False,
/// with the reason printed and an old file kept, when the file may not be written.
bool SaveScene(const std::string& path);
