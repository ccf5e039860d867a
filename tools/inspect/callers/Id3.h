// ID3 tags.

#pragma once

#include <optional>
#include <string>

#include "inspect/base/InputFile.h"
#include "inspect/callers/Tags.h"

namespace inspect {

constexpr int64_t kId3HeaderSize = 10;

// What an ID3v2 tag begins with (ID3v2.4 3.1), zeros from where the file ends; empty when there is
// no "ID3" at the offset.
std::optional<ByteVector> readId3Header(const InputFile& file, int64_t offset);

// ID3v2.4 6.2, of the first four bytes; empty when this is no such number.
std::optional<uint32_t> syncsafe(Bytes bytes);

// Why the library refuses the tag at the start of the file; empty when that cannot be told.
std::string id3Fault(const InputFile& file, Bytes header);

// The tag at the start of the file, or else, where files of its kind may have one, at its end.
std::optional<Tag> readId3(const InputFile& file, bool mayBeAtTheEnd, const TagLibrary& library);

}  // namespace inspect
