// A device as a list that is written by hand: a MIME type a line.

#pragma once

#include <string>
#include <string_view>

#include "inspect/devices/Decoder.h"

namespace inspect {

// A line is "TYPE [NAME] [LIMIT=VALUE]...", or more of the last one's limits; # starts a comment. A
// decoder without a name bears that of its type. Limits are spelt as in the XML form; there are
// "profile/levels=1/0x800,...", "software=1" and "can-swap-width-height=1" as well. Throws a
// FileError for what is no list.
DeviceDescription readMimeList(std::string_view text, const std::string& file);

}  // namespace inspect
