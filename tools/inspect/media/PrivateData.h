// Codec private data in the form in which a container parser hands it to the library.

#pragma once

#include <span>

#include "inspect/media/LibAv.h"
#include "inspect/media/MediaFile.h"

namespace inspect {

// Where the container has no private data but the stream's first packets do (H.264 and
// H.265 with start codes, AAC behind ADTS headers), takes it from these. Reads packets off the
// file.
void completeFromPackets(AVFormatContext& file, std::span<Stream> streams);

// The box vpcC, VP Codec ISO Media File Format Binding 2.2, which the demuxer reads and drops;
// nothing of a file that has none for the track.
ByteVector readVp9Record(const InputFile& file, int track);

// Brings the demuxer's form into the parsers'.
void adaptPrivateData(Stream& stream);

}  // namespace inspect
