// The picture block of FLAC files and Vorbis comments (RFC 9639 8.8).

#pragma once

#include <optional>

#include "Helper/base/ByteReader.h"

namespace android::vorbis {

using base::Bytes;

// The picture data in a block that holds a front cover, or nothing: for a picture of another type,
// a link instead of a picture, a MIME type of more than 127 characters, or a block that is cut
// short.
std::optional<Bytes> frontCover(Bytes block);

}  // namespace android::vorbis
