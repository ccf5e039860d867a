// Streams of real encoders, made by the ffmpeg program at test time, and the opinion of FFmpeg's
// own demuxers and decoders on them. Everything here fails by std::runtime_error, which ends a test
// with its text.

#pragma once

#include <string>
#include <utility>
#include <vector>

#include "support/Platform.h"

extern "C" {
#include <libavcodec/avcodec.h>
}

namespace test::media {

struct Packet {
    Bytes data;
    int64_t duration;  // in the stream's time base
    bool key;
};

struct Sound {
    int sampleRate, channels, blockAlign, bitsPerSample;
    int64_t bitRate;
};

struct Stream {
    AVCodecID codec;
    int width;
    int height;
    Bytes extradata;
    std::vector<Packet> packets;
    int format = -1;  // of samples
    Sound sound{};
};

// A path in a folder that goes with the process.
std::string temporaryPath(const std::string& name);

Bytes readFile(const std::string& path);
void writeFile(const std::string& path, const Bytes& bytes);

// Runs ffmpeg with these arguments (shell syntax) and a file of this name as its output. Returns
// the file's path.
std::string encode(const std::string& arguments, const std::string& name);

// The only stream of the file, as libavformat sees it.
Stream demux(const std::string& path);

// A line a frame, its geometry and a checksum of its samples, from a decoder that knows the
// stream's numbers, but for the format, its extradata and the packets' data. Writes the picture
// size before cropping to codedSize, if given.
std::vector<std::string> decode(const Stream& stream, std::pair<int, int>* codedSize = nullptr);

}  // namespace test::media
