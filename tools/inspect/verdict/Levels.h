// The levels of video codecs, for those who write them.

#pragma once

#include <cstdint>
#include <span>

#include "inspect/media/MediaFile.h"

namespace inspect {

struct Level {
    int level;             // as the bitstream has it
    const char* argument;  // as the encoder takes it; null = it finds the level itself
    int64_t picture;       // the most of a picture, and of the pictures of a second
    int64_t second;
    int64_t bitRate = 0;  // bits a second; 0 = no matter
};

struct LevelTable {
    std::span<const Level> levels;  // from low to high
    int64_t unit;                   // pictures count in squares of so many samples a side
};

extern const LevelTable kAvcBounds;
extern const LevelTable kHevcBounds;
extern const LevelTable kVp9Bounds;
extern const LevelTable kSimpleBounds;  // of MPEG-4 Visual, simple profile

// The lowest that holds the video; null when none does.
const Level* levelFor(const LevelTable& table, const Stream::Video& video);

}  // namespace inspect
