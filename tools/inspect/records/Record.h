// Codec data, and what components receive, taken apart.

#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "inspect/base/Bytes.h"
#include "inspect/media/MediaFile.h"
#include "inspect/records/VideoFacts.h"

namespace inspect {

// A named part of a record. The rows that have bytes follow one another without gap or overlap,
// from the first byte of the record to its last.
struct Row {
    size_t offset = 0;
    ByteVector bytes = {};  // none: a heading, or a field whose first row has its bytes
    uint64_t bits = 0;      // of a field that is no whole number of bytes; else 0
    unsigned depth = 0;
    std::string name = {};
    std::string value = {};
    // Of a field that is one, and not negative; of a heading, the part's size.
    std::optional<uint64_t> number = {};
    std::string_view clause = {};  // of a heading under which another syntax begins; else empty
};

struct Record {
    std::string key = {};  // of the format, or one of these below
    size_t sizeBytes = 0;
    std::string_view clause = {};  // of the standard that has its syntax; empty = none is public
    std::vector<Row> rows = {};
    std::string summary = {};            // in one line
    std::vector<VideoFacts> facts = {};  // of video, from each whole parameter set

    const Row* find(std::string_view name) const;   // not inside a part; null when there is none
    const Row* first(std::string_view name) const;  // wherever it stands; null when there is none
    bool isWhole() const;                           // nothing is missing at the end of a part
    // Whether it is one of ISO/IEC 14496-15 with a whole parameter set.
    bool isConfiguration() const;
};

// For the name of the container's private data, where the library only reads numbers from these.
inline constexpr std::string_view kPrivateData = "private data";

// For that of the first key frame's header, where there are no private data.
inline constexpr std::string_view kFirstFrame = "first key frame";

enum class Detail {
    kFacts,  // SEI messages, which can be long, stay bytes
    kAll,
};

// Reads what there is, and says so when it cannot be read. Anything unknown counts as a run of
// bytes.
Record readRecord(uint32_t codecType, std::string_view key, Bytes data,
                  Detail detail = Detail::kFacts);

bool hasReader(uint32_t codecType, std::string_view key);

// A component's parameter by its structure. name is that of an index which it was asked for.
Record readParameter(uint32_t index, const std::string& name, Bytes parameter);

// Where the parts of a file say different things about one video, a sentence for each: a record
// and its parameter set, the name of the track's box and the record, the size in the container and
// that in the record.
std::vector<std::string> contradictions(const Stream& stream, const std::vector<Record>& records);

}  // namespace inspect
