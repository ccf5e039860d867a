// What is kept of a file that is one of many: the summary, the database and the comparison with
// an earlier run are made of it.

#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "inspect/report/JsonReport.h"

namespace inspect {

// On a device.
struct PlayRow {
    std::string device;   // its name
    std::string verdict;  // the stable code of a Play or a FilePlay
    bool plays = false;
    std::string reason;   // empty = there is nothing to explain
    std::string decoder;  // empty = none
    std::string fix =
            {};  // what to change, in a sentence; empty = nobody asked, or nothing is to be
    std::string command = {};  // that does it; empty = none helps. The database keeps neither
};

struct TrackRow {
    int64_t index = 0;
    std::string kind;   // "video"
    std::string codec;  // the demuxer's name
    std::string mime;   // empty = the library has none
    std::string profile;
    std::string level;
    std::optional<int64_t> durationUs;  // what is empty is not known, or no matter of its kind
    std::optional<int64_t> width;
    std::optional<int64_t> height;
    std::optional<double> frameRate;
    std::optional<int64_t> channels;
    std::optional<int64_t> sampleRate;
    std::optional<int64_t> bitRate;
    std::optional<int64_t> bitDepth;
    std::vector<PlayRow> plays;  // in the order of the devices; empty = no track to the library
};

struct TagValue {
    std::string kind;   // "ID3v2.4"
    std::string name;   // "title"
    std::string value;  // text; numbers in decimal digits
};

struct FileRow {
    std::string path;                   // its bytes
    std::optional<int64_t> sizeBytes;   // none = it could not be opened
    std::optional<int64_t> modifiedNs;  // since 1970; with the size, what tells of a change
    std::string error;                  // empty = it could be read, and all below is set
    std::string fault;                  // what is wrong all the same; not read from JSON
    std::string format;                 // the demuxer's name
    std::string mime;
    std::optional<int64_t> durationUs;
    std::vector<PlayRow> plays;  // in the order of the devices
    std::vector<TrackRow> tracks;
    std::vector<TagValue> tags;
};

using RowReader = std::function<void(const FileRow&)>;

// Whether all plays on every device that is asked for: "all", "video" or "audio"; empty = nothing
// has to.
bool meets(const std::string& check, const FileRow& row);

// What a file's JSON line says, or the part of one that digestOf() leaves. Throws a FileError for
// what is no such line.
FileRow rowOf(const Json& line);

// The part of a file's JSON line that rowOf() reads.
Json digestOf(Json line);

}  // namespace inspect
