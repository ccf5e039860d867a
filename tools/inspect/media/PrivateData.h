// Codec private data in the form in which a container parser hands it to the library.

#pragma once

#include <span>

#include "inspect/media/LibAv.h"
#include "inspect/media/MediaFile.h"

namespace inspect {

// Finds the AAC streams whose frames stand behind ADTS headers, which have a codec code of their
// own, with which no private data go. Reads packets off the file.
void findAdtsHeaders(AVFormatContext& file, std::span<Stream> streams);

// The box vpcC, VP Codec ISO Media File Format Binding 2.2, which the demuxer reads and drops;
// nothing of a file that has none for the track.
ByteVector readVp9Record(const InputFile& file, int track);

// Brings the demuxer's form into the parsers'.
void adaptPrivateData(Stream& stream);

}  // namespace inspect
