// What the first packet of a video tells of it, without a decoder.

#pragma once

#include "inspect/media/LibAv.h"

namespace inspect {

// Whether its first packet tells all that libavformat would have a decoder find out: the headers of
// the container hold the rest.
bool canBeReadFromPacket(const AVStream& stream);

// Whether a decoder that is opened behind the first packet finds there what it would otherwise have
// to decode a picture for: the parameter sets.
bool findsParametersInPacket(const AVStream& stream);

// Fills in the profile, the size of the pictures and the depth of their samples as a decoder does.
// False: they cannot be told.
bool readFromPacket(const AVPacket& packet, AVStream& stream);

}  // namespace inspect
