// Parameter sets and messages inside the records of H.264, H.265 and AV1.

#pragma once

#include "inspect/media/HeaderTrace.h"
#include "inspect/records/Annotator.h"
#include "inspect/records/VideoFacts.h"

namespace inspect {

// Rows of the elements of the unit that is ahead, as far as they can be read, of the rest, and of
// the facts about pictures when the unit is one that tells these. Emulation prevention
// bytes (ITU-T H.264 7.3.1, ITU-T H.265 7.3.1.1) have rows where they stand between elements, else
// they are a part of the one that they stand in. Flags and bytes of one name share a row.
void readUnit(Annotator& out, HeaderTrace& trace, VideoFactsReader readFacts);

}  // namespace inspect
