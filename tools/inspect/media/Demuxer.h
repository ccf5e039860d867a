// The demuxer at work on an open file.

#pragma once

#include <deque>
#include <optional>
#include <set>
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

    // As av_read_frame does.
    int read(AVPacket& packet) const;

private:
    enum class Effort {
        kLeast,      // no decoder where the first packet tells as much
        kDecode,     // but no large pictures
        kDecodeAll,  // whatever memory it takes
    };
    // Returns libav's status.
    int start(const OpenFile& file, Samples samples, Effort effort);
    int findStreamInfo(Effort effort);
    // Of the streams that were spared a decoder. False: one of them needs it.
    bool readFirstPackets();
    bool lacksPicture() const;
    bool hasKnownStream() const;
    bool hasScrambledStream(const OpenFile& file) const;

    std::optional<FileStream> mStream;
    LibAvPtr<AVFormatContext> mContext;
    std::vector<std::pair<int, int>> mStoredSizes;
    std::set<int> mSpared;                         // streams, by index
    mutable std::deque<LibAvPtr<AVPacket>> mRead;  // ahead of whoever asks for them
};

}  // namespace inspect
