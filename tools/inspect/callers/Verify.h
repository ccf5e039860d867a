// Whether the samples of a file's tracks are there, whole and in order; none is decoded.

#pragma once

#include <cstdint>
#include <map>
#include <optional>

#include "inspect/media/MediaFile.h"
#include "inspect/media/OpenFile.h"

namespace inspect {

struct SamplePlace {
    uint64_t sample = 0;            // counted from 1, in the order of the file
    std::optional<int64_t> timeUs;  // of decoding where the file tells it, else of presentation
    std::optional<int64_t> offset;  // in the file
};

// Samples with one kind of fault.
struct FaultySamples {
    uint64_t count = 0;
    SamplePlace first;
};

struct Verification {
    bool isVideo = false;
    bool mayBeEmpty = false;         // text
    bool hasIndex = false;           // of the container, that holds all samples
    uint64_t samples = 0;            // in that index, else in the file
    uint64_t readable = 0;           // found in the file, and whole
    FaultySamples outside;           // not wholly inside the file, by that index
    uint64_t missingBytes = 0;       // of those
    FaultySamples cut;               // found in part, where there is no index
    std::optional<int64_t> endUs;    // where the last sample that was found ends
    bool hasUnitLengths = false;     // AVC and HEVC in samples of units behind their lengths
    FaultySamples brokenUnits;       // the lengths do not fill the sample, or all are zero
    FaultySamples backward;          // at the time of a sample before, or sooner
    std::optional<int64_t> gapAtUs;  // behind this time nothing comes for long; no fault
    int64_t gapUs = 0;
    // Of video. How far apart key frames are at most, up to the last sample.
    uint64_t keyFrames = 0;
    uint64_t keyDistance = 0;
    int64_t keyDistanceUs = 0;
    bool isReadToEnd = true;
};

// By the index of the stream, of video, audio and text. Reads the file to its end and shows on a
// terminal how far it is. Throws a FileError for a file that can no longer be read.
std::map<int, Verification> verifySamples(const OpenFile& open, const MediaFile& file);

}  // namespace inspect
