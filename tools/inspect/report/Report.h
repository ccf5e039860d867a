// What the library made of a file: all that there is to print.

#pragma once

#include <optional>
#include <string>
#include <vector>

#include "inspect/callers/Component.h"
#include "inspect/callers/Format.h"
#include "inspect/callers/KeyFrames.h"
#include "inspect/callers/Tags.h"
#include "inspect/callers/Verdict.h"
#include "inspect/media/MediaFile.h"
#include "inspect/records/Describe.h"
#include "inspect/records/Explain.h"

namespace inspect {

struct WavFile {
    std::string path;
    uint64_t frames;
};

struct TrackReport {
    Stream stream;
    Entries entries;
    std::vector<CodecDatum> codecData;
    std::optional<WavFile> dump;  // of PCM, when asked for
    Verdict verdict;
    std::vector<std::string> notes;  // what went wrong beside the verdict
    std::vector<host::LogLine> log;
    std::vector<Explanation> explanations;  // when asked for
    std::optional<KeyFrames> keyFrames;     // of a video track, when asked for
    std::vector<Call> component;            // when asked for
    std::vector<Call> legacy;               // when asked for
};

struct FileReport {
    std::string path;
    std::string error;  // not empty: the file could not be read, and nothing else is set
    std::vector<std::string> outputErrors;  // why files could not be written, with their paths
    std::optional<std::string> truncation;
    std::string format;
    std::string formatName;
    Entries entries;
    std::vector<TrackReport> tracks;  // also what is no track to the library: Kind::kOther
    Tags tags;
};

}  // namespace inspect
