// What a stream and its codec data say that a decoder must take.

#pragma once

#include <vector>

#include "inspect/devices/TrackFacts.h"
#include "inspect/media/MediaFile.h"
#include "inspect/records/Record.h"

namespace inspect {

TrackFacts factsOf(const Stream& stream, const std::vector<Record>& records);

}  // namespace inspect
