// How a container parser names the kind of a file.

#pragma once

#include "inspect/media/MediaFile.h"

namespace inspect {

struct Container {
    int fileKind = 0;             // an android::FileKind for setFileMeta; 0 = it has none
    const char* mime = nullptr;   // what the parser then stores itself; null = there is none
    bool hasWholeFrames = false;  // one video frame a sample, and key frames are marked
};

Container containerOf(const MediaFile& file);

}  // namespace inspect
