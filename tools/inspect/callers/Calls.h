// Operations of the library's and what came of them.

#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "inspect/callers/Format.h"
#include "inspect/media/MediaFile.h"
#include "inspect/records/Record.h"

namespace inspect {

struct Call {
    std::string operation;
    std::string result;              // in words; empty for an operation without a status
    std::vector<Record> parameters;  // that a component received
    Entries entries;                 // of metadata, by four-character code
};

// How the result of an operation ends that a track is not for.
inline constexpr const char* kDoesNotApply = ", does not apply";

// Wants a fatal handler that throws a LibraryFatal.
Call callLibrary(const char* name, const std::function<std::optional<int32_t>()>& operation);

// What older parsers, which keep metadata, get of a track. Belongs into a Session's life.
std::vector<Call> describeToOlderParsers(const Stream& stream, const Entries& entries);

}  // namespace inspect
