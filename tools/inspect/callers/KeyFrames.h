// Which samples of a file's video tracks the library calls key frames, beside what is marked.

#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "inspect/base/Columns.h"
#include "inspect/media/MediaFile.h"
#include "inspect/media/OpenFile.h"

namespace inspect {

struct KeyFrameDispute {
    uint64_t sample;  // counted from 1, in the order of the file
    std::optional<int64_t> timeUs;
    bool libraryCallsKey;  // the other one does not
};

// Whether any of a few samples is one.
struct KeyFrameMarks {
    bool library = false;
    bool marked = false;
    bool disputed = false;

    KeyFrameMarks& operator+=(const KeyFrameMarks& other) {
        library = library || other.library;
        marked = marked || other.marked;
        disputed = disputed || other.disputed;
        return *this;
    }
};

struct KeyFrames {
    bool isExamined = false;           // by the library, of this codec
    bool isMarkedByContainer = false;  // else the demuxer's parser marked the samples
    uint64_t samples = 0;
    uint64_t unreadable = 0;  // samples that do not follow the container's form
    uint64_t library = 0;
    uint64_t marked = 0;
    uint64_t disputed = 0;
    std::vector<uint64_t> firstOfLibrary;  // sample numbers
    std::vector<KeyFrameDispute> firstDisputed;
    Columns<KeyFrameMarks, 1000> strip;  // of all samples
};

inline constexpr size_t kKeyFramesListed = 20;  // at most, in each list above

// By the index of the stream. Reads the file to its end and shows on a terminal how far it is.
// Throws a FileError for a file that can no longer be read.
std::map<int, KeyFrames> compareKeyFrames(const OpenFile& open, const MediaFile& file);

}  // namespace inspect
