// Whether a decoder's list of profiles and levels holds those of a track.

#pragma once

#include "inspect/devices/Judge.h"

namespace inspect {

// The excess of a profile that the decoder does not have; a level counts half a doubling.
inline constexpr double kOtherTools = 100;

// Adds to the judgement. Codecs without profiles pass.
void judgeProfile(const TrackFacts& facts, const Decoder& decoder, Judgement& judgement);

}  // namespace inspect
