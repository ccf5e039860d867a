// A device's media_codecs.xml and the files that it includes.

#pragma once

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "inspect/devices/Decoder.h"

namespace inspect {

// The text of a file by its name, relative to the folder of the list; nothing when there is none.
using FileReader = std::function<std::optional<std::string>(const std::string& name)>;

// The files in this order, but for what an earlier one includes. Throws a FileError for what is no
// XML, no codec list, or of a size that no device has.
DeviceDescription readXmlCodecLists(const std::vector<std::string>& files, const FileReader& read);

}  // namespace inspect
