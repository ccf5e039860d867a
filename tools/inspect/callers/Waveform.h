// How loud PCM is over time, as it stands in the file and as the library converts it to 16 bits.

#pragma once

#include <algorithm>
#include <cstdint>
#include <vector>

#include "inspect/base/Columns.h"
#include "inspect/media/MediaFile.h"
#include "inspect/media/OpenFile.h"

namespace inspect {

// Of some samples of a channel, of which the loudest there can be are -1 and 1.
struct Extremes {
    float least = 0;
    float most = 0;

    Extremes& operator+=(const Extremes& other) {
        least = std::min(least, other.least);
        most = std::max(most, other.most);
        return *this;
    }
};
using Envelope = Columns<Extremes, 1200>;

inline constexpr size_t kWaveformChannels = 8;  // at most; others are left out

struct Waveform {
    std::vector<Envelope> before;  // by channel
    std::vector<Envelope> after;
    uint64_t frames = 0;
    bool isWhole = true;  // else only the beginning was looked at
};

// Of a stream of PCM that the library converts. Throws a FileError for a file that can no longer be
// read.
Waveform drawWaveform(const OpenFile& open, const Stream& stream);

}  // namespace inspect
