// Undoing unsynchronisation: an encoder puts a 00 behind each FF, so that a player which knows
// nothing of tags finds no MPEG audio frame in one.

#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

#include "Helper/base/ByteReader.h"

namespace android::id3 {

using base::Bytes;

// Takes the 00 after each FF out of the bytes and returns how many are left, at their start
// (ID3v2.3 5).
size_t removeUnsynchronization(std::span<uint8_t> bytes);

enum class FrameSizes {
    kSyncsafe,  // ID3v2.4 4
    kPlain,     // as in ID3v2.3, which some programs write into v2.4 tags
};

// Whether simplifyFrames with syncsafe sizes would find every frame to fit; changes nothing. The
// offset lies within the tag.
bool framesFit(Bytes tag, size_t firstFrameOffset);

struct SimplifiedFrames {
    bool ok;      // every frame fits into the tag
    size_t size;  // what is left of the tag
};

// Makes plain frames of those of a v2.4 tag that are unsynchronised (all, or those that say so) or
// have a data length indicator (ID3v2.4 4.1.2), in one pass and in place. Sizes are syncsafe in
// every frame header that is written again: in those of frames with one of these flags, and in all
// of a tag with plain sizes. Bytes that become free are zeroed unless the walk fails.
SimplifiedFrames simplifyFrames(std::span<uint8_t> tag, size_t firstFrameOffset, FrameSizes sizes,
                                bool allUnsynchronised);

}  // namespace android::id3
