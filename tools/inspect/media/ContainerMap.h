// The kind of file that a container parser takes a file for.

#pragma once

#include "inspect/media/MediaFile.h"

namespace inspect {

// From the demuxer's name, the brand and the streams.
Container containerOf(const MediaFile& file);

}  // namespace inspect
