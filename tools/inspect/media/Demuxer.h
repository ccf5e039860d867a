// The demuxer at work on an open file.

#pragma once

#include <span>
#include <utility>
#include <vector>

#include "inspect/media/LibAv.h"
#include "inspect/media/OpenFile.h"

namespace inspect {

enum class Samples {
    kWhole,     // parsed into whole frames, whose kind the demuxer looks up where need be
    kAsStored,  // as the container cuts and marks them
};

class Demuxer {
public:
    // Throws a FileError for a file whose tracks cannot be read.
    Demuxer(const OpenFile& file, Samples samples);

    AVFormatContext& context() const { return *mContext; }
    std::span<AVStream*> streams() const { return {mContext->streams, mContext->nb_streams}; }
    // Of a stream's video, by the container alone: the codec's headers have no say. Zeros: unknown.
    std::pair<int, int> storedSize(int stream) const;

private:
    bool hasKnownStream() const;
    bool hasScrambledStream(const OpenFile& file) const;

    FileStream mStream;
    LibAvPtr<AVFormatContext> mContext;
    std::vector<std::pair<int, int>> mStoredSizes;
};

}  // namespace inspect
