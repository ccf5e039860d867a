// Tells the library what an AVI file says about a track, and asks it about the samples.

#pragma once

#include "AviReader.h"
#include "platform/MediaFormat.h"
#include "zrcodecparser/MediaExtractorHelper.h"
#include "zrcodecparser/TrackInfo.h"

namespace avi {

// What the parser has to remember of a track beside its format.
struct Description {
    android::TrackInfo info;
    bool isPcm = false;
};

// Stores everything about the track in the format, which the caller owns. Returns the library's
// status for the codec data: a track whose codec data are refused is not to be offered.
android::status_t describe(const Reader& reader, const Track& track,
                           android::MediaExtractorHelper& helper, AMediaFormat* format,
                           Description* description);

// PCM samples as 16 bits in the machine's order. Returns the library's status.
android::status_t convertTo16(const Description& description, android::MediaExtractorHelper& helper,
                              const Bytes& samples, Bytes* converted);

// Whether the library finds that the sample can be decoded on its own.
bool isKeyFrame(const Description& description, android::MediaExtractorHelper& helper,
                const Bytes& sample);

}  // namespace avi
