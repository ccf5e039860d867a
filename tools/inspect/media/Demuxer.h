// Opens a file as a container parser would.

#pragma once

#include <string>

#include "inspect/media/MediaFile.h"

namespace inspect {

// Throws a FileError for a file that cannot be read or holds no media. A file that ends too early
// is described as far as it goes, with what is missing in truncation.
MediaFile readMediaFile(const std::string& path);

}  // namespace inspect
