// What a file is that is no media file, and a tag's picture: by their first bytes.

#pragma once

#include <string_view>

#include "inspect/base/Bytes.h"

namespace inspect {

struct FileKind {
    std::string_view name;            // "JPEG", "HLS playlist"
    const char* extension = nullptr;  // of a picture's name: ".jpg"; null = it is no picture
};

inline constexpr size_t kFileKindBytes = 4096;  // that may be looked at

// Null for what is not known.
const FileKind* findFileKind(Bytes head);

}  // namespace inspect
