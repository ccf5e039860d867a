// Codec private data in the form in which a container parser hands it to the library.

#pragma once

#include "inspect/media/LibAv.h"
#include "inspect/media/MediaFile.h"

namespace inspect {

// AAC without an AudioSpecificConfig of its own.
bool mayHaveAdtsHeaders(const Stream& stream);
// Of the first packet: AAC behind ADTS headers has a codec code of its own, with which no private
// data go; VP9 without any tells of itself here.
void readHeader(const AVPacket& packet, Stream& stream);

// The box vpcC, VP Codec ISO Media File Format Binding 2.2, or WebM's features, which the demuxer
// reads and drops;
// nothing of a file that has none for the track.
ByteVector readVp9Record(const InputFile& file, int track);

// Brings the demuxer's form into the parsers'.
void adaptPrivateData(Stream& stream);

}  // namespace inspect
