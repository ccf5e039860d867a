// The boxes of an ISO base media file, ISO/IEC 14496-12 4.2, and the elements of Matroska, RFC
// 9559.

#pragma once

#include <algorithm>
#include <optional>
#include <string_view>

#include "inspect/base/InputFile.h"

namespace inspect {

// What a box holds.
struct BoxContent {
    uint64_t begin;
    uint64_t end;

    // Behind so many bytes of fields; empty where there are fewer.
    BoxContent behind(uint64_t fields) const {
        return {begin + std::min(fields, end - begin), end};
    }
};

// The nth box of this type among these, the first being 0.
std::optional<BoxContent> findBox(const InputFile& file, BoxContent boxes, std::string_view type,
                                  int nth = 0, bool isEbml = false);

// The sample entries, which are boxes, of the nth track.
std::optional<BoxContent> findSampleEntries(const InputFile& file, int track);

// CodecPrivate of the nth track of Matroska.
std::optional<BoxContent> findCodecPrivate(const InputFile& file, int track);

// As far as they go.
ByteVector readContent(const InputFile& file, BoxContent content);

}  // namespace inspect
