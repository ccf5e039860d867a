// The text in a frame.

#pragma once

#include "Helper/base/ByteReader.h"

namespace android::id3 {

using base::Bytes;

enum class TextForm { kEightBit, kUtf16LittleEndian, kUtf16BigEndian };

struct FrameText {
    Bytes bytes{};  // whole code units; without a byte-order mark
    TextForm form = TextForm::kEightBit;
    bool narrow = false;  // UTF-16 that is to be handed on as 8-bit characters
};

// What the data of a frame say behind encoding byte (ID3v2.4 4), language and description; see
// ID3::Iterator::getstring. isLyrics counts for both halves.
FrameText readFrameText(Bytes data, bool secondHalf, bool isLyrics);

}  // namespace android::id3
