// Vorbis comment headers, as they stand in files.

#pragma once

#include <optional>
#include <string>
#include <vector>

#include "inspect/base/Bytes.h"
#include "inspect/base/InputFile.h"

namespace inspect {

struct CommentHeader {
    std::string codec;              // of the stream that it belongs to
    std::string place;              // where it stands, in words
    ByteVector bytes;               // from the vendor's length on
    std::optional<int64_t> offset;  // of these in the file, where they stand in one piece
};

struct CommentHeaders {
    std::vector<CommentHeader> list;
    std::vector<std::string> notes;  // what is wrong on the way to them
    std::string picture;             // a FLAC picture block, in words
};

// Each takes a bounded look at the beginning of the file.
CommentHeaders findOggComments(const InputFile& file);   // RFC 3533 and each codec's mapping
CommentHeaders findFlacComments(const InputFile& file);  // RFC 9639 8

struct Comments {
    std::vector<std::string> list;  // NAME=value
    std::vector<std::string> notes;
};

// Xiph, Vorbis I, section 5
Comments splitComments(const CommentHeader& header);

}  // namespace inspect
