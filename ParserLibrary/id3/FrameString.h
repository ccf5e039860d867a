// Texts of frames as strings of the platform.

#pragma once

#include "ParserLibrary/id3/Frames.h"
#include "platform/Strings.h"

namespace android::id3 {

struct TextPart {
    bool secondHalf = false;
    bool isLyrics = false;
};

// The text of the frame at an offset, size bytes with its header; see ID3::Iterator::getstring.
void setFrameText(String8* s, const TagView& tag, size_t offset, size_t size, TextPart part);

}  // namespace android::id3
