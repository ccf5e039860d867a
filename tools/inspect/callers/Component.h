// The decoder glue's part: what components and older parsers get of a track.

#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <ostream>
#include <string>
#include <utility>
#include <vector>

#include "inspect/callers/Format.h"
#include "inspect/records/Explain.h"
#include "inspect/report/TextLayout.h"

namespace inspect {

struct TrackReport;

// One operation of the library's and what came of it.
struct Call {
    std::string operation;
    std::string result;                   // in words; empty for an operation without a status
    std::vector<Explanation> parameters;  // that a component received
    Entries entries;                      // of metadata, by four-character code
};

struct GlueOptions {
    bool component = false;
    bool legacy = false;
    std::string componentName;                          // of a Qualcomm video decoder
    std::vector<std::pair<std::string, int32_t>> keys;  // of a parser that knows more of the track
};

// All call the library and want a fatal handler that throws a LibraryFatal.
std::vector<Call> setUpComponent(const TrackReport& track, const GlueOptions& options);
std::vector<Call> describeToOlderParsers(const TrackReport& track);
Call callLibrary(const char* name, const std::function<std::optional<int32_t>()>& operation);

// A parameter by its structure. name is that of an index which a component was asked for.
Explanation explainParameter(uint32_t index, const std::string& name, Bytes parameter);

void printCalls(std::ostream& out, const char* heading, const std::vector<Call>& calls,
                const TextStyle& style);

}  // namespace inspect
