// Why a picture is a black square, in words for whoever drew it.
#pragma once

#include <string>

/// What keeps the picture of that name in `folder` from being read, as it stands on the disk now: no such file, another
/// form than PNG, too large, damaged. Empty when ReadPicture reads it.
std::string PictureFault(const std::string& folder, const std::string& name);
