// What older parsers, which keep metadata, get of a track.

#pragma once

#include <vector>

#include "inspect/callers/Calls.h"
#include "inspect/media/MediaFile.h"

namespace inspect {

// Belongs into a Session's life.
std::vector<Call> describeToOlderParsers(const Stream& stream, const Entries& entries);

}  // namespace inspect
