// Vorbis comment headers, as they stand in files.

#pragma once

#include <optional>
#include <string>
#include <vector>

#include "inspect/base/Bytes.h"
#include "inspect/base/InputFile.h"

namespace inspect {

struct CommentHeader {
    std::string codec;               // of the stream that it belongs to
    std::string place;               // where it stands, in words
    std::vector<std::string> list;   // NAME=value
    std::vector<std::string> notes;  // what is wrong with it

    // Xiph, Vorbis I, section 5: from the vendor's length on, which stands at the offset in the
    // file if all of it does in one piece.
    void split(Bytes bytes, std::optional<int64_t> offset);
};

struct CommentHeaders {
    std::vector<CommentHeader> list;
    std::vector<std::string> notes;  // what is wrong on the way to them
    std::string picture;             // a FLAC picture block, in words
};

// Each takes a bounded look at the beginning of the file.
CommentHeaders findOggComments(const InputFile& file);   // RFC 3533 and each codec's mapping
CommentHeaders findFlacComments(const InputFile& file);  // RFC 9639 8

}  // namespace inspect
