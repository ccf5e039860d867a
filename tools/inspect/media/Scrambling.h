// The marks on the packets of MPEG-2 systems that say whether they are scrambled.

#pragma once

#include <set>

#include "inspect/media/OpenFile.h"

namespace inspect {

// The streams, by AVStream::id, of which most of the first packets are scrambled; nothing of a file
// that is neither a transport nor a program stream. Reads a bounded part.
std::set<int> scrambledStreams(const OpenFile& open);

}  // namespace inspect
