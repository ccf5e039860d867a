// What was found out about a track's samples, in words.

#pragma once

#include <ostream>
#include <string>

#include "inspect/callers/KeyFrames.h"
#include "inspect/callers/Verify.h"
#include "inspect/report/TextLayout.h"

namespace inspect {

std::string faultText(const Verification& found);  // empty when there is none
void printVerification(std::ostream& out, const Verification& found, const TextStyle& style);
void printKeyFrames(std::ostream& out, const KeyFrames& frames);

}  // namespace inspect
