// What the first samples of the tracks tell, and whether there are any.

#pragma once

#include <span>

#include "inspect/media/Demuxer.h"
#include "inspect/media/MediaFile.h"

namespace inspect {

// Notes AAC behind ADTS headers, and why nothing of a track can be read. Looks at the container's
// index where it holds every sample, else at what it reads on from here: a bounded part of the
// file, which says nothing about a track whose samples may come later.
void readFirstSamples(const OpenFile& open, const Demuxer& demuxer, std::span<Stream> streams);

}  // namespace inspect
