// A device's media_codecs.xml and the files that it includes.

#pragma once

#include <functional>
#include <optional>
#include <set>
#include <string>

#include "inspect/devices/Decoder.h"

namespace inspect {

// The text of a file by its name, relative to the folder of the list; nothing when there is none.
using FileReader = std::function<std::optional<std::string>(const std::string& name)>;

// The files in the order of their names, but for what an earlier one includes. Throws a FileError
// for what is no XML, no codec list, or of a size that no device has.
DeviceDescription readXmlCodecLists(const std::set<std::string>& files, const FileReader& read);

}  // namespace inspect
