// The one question that choosing a MIME type asks of the device: is there a decoder for this codec?

#pragma once

#include <sys/types.h>

#include "Helper/vocabulary/CodecTable.h"
#include "platform/CodecList.h"
#include "platform/RefBase.h"

namespace android {

class MediaExtractorHelper;

struct DecoderAnswer {
    sp<IMediaCodecList> list;    // null: the device could not be asked, which is logged
    const char* mime = nullptr;  // the type asked for: the codec's primary or its alternative
    ssize_t index = -1;          // of its first decoder in the list; negative: there is none

    bool isKnown() const { return list != nullptr; }
    bool hasDecoder() const { return index >= 0; }
};

// Asks for the alternative first, for codecs that have one. Blocks on the media server.
DecoderAnswer askForDecoder(MediaExtractorHelper& helper, const CodecRow& row);

}  // namespace android
