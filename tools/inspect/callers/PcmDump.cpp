#include "inspect/callers/PcmDump.h"

#include <algorithm>

#include "inspect/callers/Hooks.h"
#include "inspect/callers/PcmFormat.h"
#include "inspect/media/Samples.h"
#include "platform/Host.h"
#include "zrcodecparser/WavDump.h"

namespace inspect {
namespace {

using namespace android;

constexpr size_t kMaxNameBytes = 1023;  // WavDump cuts off the rest
constexpr uint64_t kHeaderBytes = 44;
constexpr size_t kSampleBytes = 2;      // of those written
constexpr size_t kBlockSamples = 1024;  // as decoders hand out

const PcmFormat& formatOf(const Stream& stream, const std::string& path) {
    const PcmFormat* format = findPcmFormat(stream);
    if (format == nullptr) {
        const sp<MediaExtractorHelper> helper = new MediaExtractorHelper;
        failOn(path, "cannot be dumped: " + whyNotTo16(stream, *helper));
    }
    const uint64_t frameBytes = uint64_t{kSampleBytes} * stream.audio.channelCount;
    const uint64_t byteRate = frameBytes * stream.audio.sampleRate;
    if (byteRate == 0 || frameBytes > UINT16_MAX || byteRate > UINT32_MAX) {
        failOn(path, "cannot be dumped: no WAV header holds its rate and channels");
    }
    return *format;
}

class Dump {
public:
    // Goes to the other name; the path is for complaints.
    Dump(const std::string& path, const std::string& other, const PcmFormat& format,
         const Stream::Audio& audio)
        : mPath(path),
          mOther(other),
          mFormat(format),
          mChannels(audio.channelCount),
          mWav(other.c_str()) {
        const auto channels = static_cast<uint16_t>(mChannels);
        if (mWav.open(audio.sampleRate, 8 * kSampleBytes, channels) != 0) {
            failOn(mPath, "cannot be created");
        }
        checkSize();
    }

    // Leaves out a frame that is cut off, and what no WAV file can hold.
    void add(Bytes packet) {
        const size_t bytes = mFormat.bits / 8;
        const size_t whole = packet.size() / bytes / mChannels;
        const uint64_t room = (UINT32_MAX - kHeaderBytes) / kSampleBytes / mChannels - frames();
        mCutBytes += packet.size() % (bytes * mChannels);
        size_t samples = std::min<size_t>(whole, room) * mChannels;
        for (; samples > 0; samples -= std::min(samples, kBlockSamples)) {
            const size_t size = std::min(samples, kBlockSamples) * bytes;
            write(packet.first(size));
            packet = packet.subspan(size);
        }
        if (whole > room) failOn(mPath, "is full: the lengths in a WAV file end at 4 GiB");
    }

    uint64_t frames() const { return mWritten / kSampleBytes / mChannels; }
    uint64_t cutBytes() const { return mCutBytes; }

private:
    void write(Bytes block) {
        ByteVector room(block.begin(), block.end());
        room.resize(std::max(room.size(), room.size() / (mFormat.bits / 8) * kSampleBytes));
        host::SampleBuffer buffer(room.data(), room.size(), 0, block.size());
        convertTo16(mFormat, buffer, *mHelper);
        mWritten += mWav.dump(room.data(), static_cast<uint32_t>(buffer.range_length()));
        checkSize();
    }

    // The library does not look at errors while it writes.
    void checkSize() const {
        std::error_code error;
        const uint64_t size = std::filesystem::file_size(mOther, error);
        if (!error && size == kHeaderBytes + mWritten) return;
        failOn(mPath, "could not be written: it has " + std::to_string(error ? 0 : size) +
                              " bytes instead of " + std::to_string(kHeaderBytes + mWritten));
    }

    const std::string mPath;
    const std::string mOther;
    const PcmFormat& mFormat;
    const size_t mChannels;
    WavDump mWav;
    const sp<MediaExtractorHelper> mHelper = new MediaExtractorHelper;
    uint64_t mWritten = 0;  // bytes behind the header
    uint64_t mCutBytes = 0;
};

}  // namespace

size_t firstPcmStream(const MediaFile& file) {
    const auto found = std::ranges::find_if(file.streams, isPcm);
    if (found != file.streams.end()) return static_cast<size_t>(found - file.streams.begin());
    std::string codecs;
    for (const Stream& stream : file.streams) {
        codecs += (codecs.empty() ? "" : ", ") + stream.codec;
    }
    failOn(file.path, "has no track of linear PCM to dump, but: " + codecs);
}

PcmDump dumpPcm(const std::string& path, const OutputRules& rules, const OpenFile& open,
                const Stream& stream, std::vector<host::LogLine>& log) {
    const PcmFormat& format = formatOf(stream, open.input().path());
    const Demuxer demuxer(open, Samples::kAsStored);
    OutputFile file(path, rules);
    const std::string other = file.temporaryPath();
    if (other.size() > kMaxNameBytes) failOn(path, "is too long a name");
    const LogSink sink([&](host::LogLine line) {  // each block is logged
        if (const size_t at = line.text.find(other); at != std::string::npos) {
            line.text.replace(at, other.size(), path);
        }
        const bool isNew = std::ranges::count(log, line.text, &host::LogLine::text) == 0;
        if (isNew && log.size() < 50) log.push_back(line);
    });
    PcmDump result{.path = path, .frames = 0, .cutBytes = 0};
    {
        Dump dump(path, other, format, stream.audio);
        std::map<int, Dump&> tracks = {{stream.index, dump}};
        const int status =
                walkTracks(open, demuxer, tracks, [](Dump& track, const AVPacket& packet) {
                    track.add({packet.data, static_cast<size_t>(packet.size)});
                });
        if (status != AVERROR_EOF) failOn(open.input().path(), readingError(status));
        result.frames = dump.frames();
        result.cutBytes = dump.cutBytes();
    }
    file.keep();
    return result;
}

}  // namespace inspect
