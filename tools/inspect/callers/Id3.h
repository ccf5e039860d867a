// ID3 tags.

#pragma once

#include <optional>

#include "inspect/base/InputFile.h"
#include "inspect/callers/Tags.h"

namespace inspect {

// The tag at the start of the file, or else, where files of its kind may have one, at its end.
std::optional<Tag> readId3(const InputFile& file, bool mayBeAtTheEnd, const TagLibrary& library);

}  // namespace inspect
