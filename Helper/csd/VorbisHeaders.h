// The three header packets of Vorbis in one block with Xiph lacing, as Matroska and others keep
// them (Vorbis I 4.2; for the lacing, the Ogg encapsulation RFC 3533 6 and Matroska's codec
// mappings).

#pragma once

#include <optional>

#include "Helper/base/ByteReader.h"

namespace android::csd {

using base::Bytes;

struct VorbisHeaders {
    Bytes identification;
    Bytes comment;
    Bytes setup;  // the rest of the block
};

// Splits the block: a packet count less one of 2, two sizes, the packets. Empty when a size or a
// packet runs past the end, the count is another, or the first packet is no identification header.
std::optional<VorbisHeaders> splitVorbisHeaders(Bytes block);

// Whether the second and third packets are of the types that belong there (Vorbis I 4.2.1).
bool hasVorbisHeaderTypes(const VorbisHeaders& headers);

}  // namespace android::csd
