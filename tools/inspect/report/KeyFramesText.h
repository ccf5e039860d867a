// Key frames, for a person.

#pragma once

#include <ostream>

#include "inspect/callers/KeyFrames.h"

namespace inspect {

void printKeyFrames(std::ostream& out, const KeyFrames& frames);

}  // namespace inspect
