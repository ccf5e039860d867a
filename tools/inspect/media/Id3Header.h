// The header of an ID3v2 tag.

#pragma once

#include <optional>
#include <string>

#include "inspect/base/InputFile.h"

namespace inspect {

inline constexpr int64_t kId3HeaderSize = 10;

// What an ID3v2 tag begins with (ID3v2.4 3.1), zeros from where the file ends; empty when there is
// no "ID3" at the offset.
std::optional<ByteVector> readId3Header(const InputFile& file, int64_t offset);

// ID3v2.4 6.2, of the first four bytes; empty when this is no such number.
std::optional<uint32_t> syncsafe(Bytes bytes);

// Why the library refuses the tag at the start of the file; empty when that cannot be told.
std::string id3Fault(const InputFile& file, Bytes header);

}  // namespace inspect
