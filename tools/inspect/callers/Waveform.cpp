#include "inspect/callers/Waveform.h"

#include <bit>
#include <cmath>

#include "inspect/callers/Hooks.h"
#include "inspect/callers/PcmFormat.h"
#include "inspect/media/Samples.h"
#include "platform/Host.h"

namespace inspect {
namespace {

using namespace android;

constexpr uint64_t kMaxBytes = 32 << 20;
constexpr uint64_t kMaxSeconds = 60;
constexpr size_t kFramesAtATime = 1024;

// By the codec's name alone, without the library.
float sampleOf(const PcmFormat& format, Bytes bytes) {
    ByteCursor cursor(bytes);
    const uint64_t raw =
            format.isBigEndian ? cursor.big(bytes.size()) : cursor.little(bytes.size());
    if (format.isFloat) {
        const auto value = std::bit_cast<float>(static_cast<uint32_t>(raw));
        return std::isfinite(value) ? std::clamp(value, -1.F, 1.F) : 0;
    }
    const auto half = static_cast<int64_t>(uint64_t{1} << (format.bits - 1));
    const bool isUnsigned = format.bits == 8 && !format.isBigEndian;
    const auto number = static_cast<int64_t>(raw);
    const int64_t value = isUnsigned ? number - half : number >= half ? number - 2 * half : number;
    return static_cast<float>(value) / static_cast<float>(half);
}

constexpr PcmFormat kConverted = {"pcm_s16le", 16, false, false, ""};

class Drawing {
public:
    Drawing(const PcmFormat& format, size_t channels) : mFormat(format), mChannels(channels) {
        mResult.before.resize(std::min(channels, kWaveformChannels));
        mResult.after.resize(mResult.before.size());
    }

    void add(Bytes packet) {
        const size_t frameBytes = mFormat.bits / 8 * mChannels;
        while (packet.size() >= frameBytes) {
            const size_t frames = std::min(packet.size() / frameBytes, kFramesAtATime);
            addFrames(packet.first(frames * frameBytes));
            packet = packet.subspan(frames * frameBytes);
            mResult.frames += frames;
        }
    }

    Waveform& result() { return mResult; }

private:
    void addFrames(Bytes frames) {
        draw(mResult.before, mFormat, frames);
        const size_t samples = frames.size() / (mFormat.bits / 8);
        ByteVector room(frames.begin(), frames.end());
        room.resize(std::max(room.size(), 2 * samples));
        host::SampleBuffer buffer(room.data(), room.size(), 0, frames.size());
        convertTo16(mFormat, buffer, *mHelper);
        draw(mResult.after, kConverted,
             Bytes(room).first(std::min(2 * samples, buffer.range_length())));
    }

    void draw(std::vector<Envelope>& channels, const PcmFormat& format, Bytes frames) const {
        const size_t bytes = format.bits / 8;
        for (size_t at = 0; at + bytes * mChannels <= frames.size(); at += bytes * mChannels) {
            for (size_t i = 0; i < channels.size(); i++) {
                const float value = sampleOf(format, frames.subspan(at + i * bytes, bytes));
                channels[i].add({value, value});
            }
        }
    }

    const PcmFormat& mFormat;
    const size_t mChannels;
    const sp<MediaExtractorHelper> mHelper = new MediaExtractorHelper;
    Waveform mResult;
};

}  // namespace

Waveform drawWaveform(const OpenFile& open, const Stream& stream) {
    const PcmFormat* format = findPcmFormat(stream);
    const size_t channels = stream.audio.channelCount;
    if (format == nullptr || channels == 0) return {};
    const Demuxer demuxer(open, Samples::kAsStored);
    const LogSink silence(LogSink::drop);  // each block is logged
    for (AVStream* each : demuxer.streams()) {
        if (each->index != stream.index) each->discard = AVDISCARD_ALL;
    }
    const uint64_t frameBytes = uint64_t{format->bits / 8} * channels;
    const uint64_t maxFrames =
            std::min(kMaxBytes / frameBytes, kMaxSeconds * stream.audio.sampleRate);
    Drawing drawing(*format, channels);
    walkSamples(open, demuxer, [&](const AVPacket& packet) {
        const bool isMine = packet.stream_index == stream.index;
        if (isMine) drawing.add({packet.data, static_cast<size_t>(packet.size)});
        drawing.result().isWhole = drawing.result().frames < maxFrames;
        return drawing.result().isWhole;
    });
    return std::move(drawing.result());
}

}  // namespace inspect
