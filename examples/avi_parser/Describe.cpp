#include "Describe.h"

#include <algorithm>
#include <cmath>

#include "zrcodecparser/CodecType.h"
#include "zrcodecparser/FormatKeys.h"
#include "zrcodecparser/MediaDefs.h"

namespace avi {
namespace {

using namespace android;

struct Codec {
    uint32_t tag;
    CodecType type;
};

// biCompression of a BITMAPINFOHEADER.
constexpr Codec kVideoCodecs[] = {
        {fourCC("H264"), kCodecTypeAvc},       {fourCC("h264"), kCodecTypeAvc},
        {fourCC("X264"), kCodecTypeAvc},       {fourCC("FMP4"), kCodecTypeMpeg4},
        {fourCC("MP4V"), kCodecTypeMpeg4},     {fourCC("mp4v"), kCodecTypeMpeg4},
        {fourCC("XVID"), kCodecTypeXvid},      {fourCC("DIVX"), kCodecTypeDivx4},
        {fourCC("DX50"), kCodecTypeDivx5},     {fourCC("DIV3"), kCodecTypeDivx311},
        {fourCC("MPG4"), kCodecTypeMsMpeg4V1}, {fourCC("MP42"), kCodecTypeMsMpeg4V2},
        {fourCC("MP43"), kCodecTypeMsMpeg4V3}, {fourCC("MJPG"), kCodecTypeMjpeg},
        {fourCC("WMV1"), kCodecTypeWmv7},      {fourCC("WMV2"), kCodecTypeWmv8},
        {fourCC("WMV3"), kCodecTypeWmv},       {fourCC("WVC1"), kCodecTypeVc1Advanced},
};

// wFormatTag of a WAVEFORMATEX.
constexpr Codec kAudioCodecs[] = {
        {0x0001, kCodecTypePcm},         {0x0006, kCodecTypeG711ALaw},
        {0x0007, kCodecTypeG711MuLaw},   {0x000A, kCodecTypeWmaVoice},
        {0x0050, kCodecTypeMp2},         {0x0055, kCodecTypeMp3},
        {0x00FF, kCodecTypeAac},         {0x0160, kCodecTypeWmaV1},
        {0x0161, kCodecTypeWmaV2},       {0x0162, kCodecTypeWmaPro},
        {0x0163, kCodecTypeWmaLossless}, {0x2000, kCodecTypeAc3},
        {0x2001, kCodecTypeDts},
};
constexpr uint16_t kExtensibleTag = 0xFFFE;

template <size_t kCount>
uint32_t findCodec(const Codec (&codecs)[kCount], uint32_t tag, CodecType none) {
    const auto* found = std::find_if(std::begin(codecs), std::end(codecs),
                                     [&](const Codec& codec) { return codec.tag == tag; });
    return static_cast<uint32_t>(found == std::end(codecs) ? none : found->type);
}

Bytes bytesFrom(const Bytes& bytes, size_t offset) {
    const auto count = static_cast<ptrdiff_t>(std::min(offset, bytes.size()));
    return Bytes(bytes.begin() + count, bytes.end());
}

// BITMAPINFOHEADER: all numbers are little-endian; a negative height is that of a picture whose
// rows stand from top to bottom.
TrackInfo videoInfo(const Track& track, bool hasIndex) {
    TrackInfo info;
    info.trackType = kTrackTypeVideo;
    info.codecType = findCodec(kVideoCodecs, read32(track.format, 16), kCodecTypeNoVideo);
    const uint32_t height = read32(track.format, 8);
    info.video.width = read32(track.format, 4);
    info.video.height = height >> 31 != 0 ? 0 - height : height;
    info.video.frameRate = track.scale == 0 ? 0 : track.rate / track.scale;
    info.video.hasSyncFrame = hasIndex ? 1 : 0;
    return info;
}

// WAVEFORMATEX; WAVEFORMATEXTENSIBLE keeps the format tag in its subformat.
TrackInfo audioInfo(const Track& track) {
    const uint16_t tag = read16(track.format, 0);
    TrackInfo info;
    info.trackType = kTrackTypeAudio;
    info.codecType = findCodec(kAudioCodecs, tag == kExtensibleTag ? read16(track.format, 24) : tag,
                               kCodecTypeNoAudio);
    info.audio.channelCount = read16(track.format, 2);
    info.audio.sampleRate = read32(track.format, 4);
    info.audio.bitRate = static_cast<uint32_t>(uint64_t{8} * read32(track.format, 8));
    info.audio.blockAlign = read16(track.format, 12);
    info.audio.bitsPerSample = read16(track.format, 14);
    return info;  // the language stays null: AVI names none
}

// Of a stream that carries its codec data itself: those in the first sample.
Bytes dataInStream(const Reader& reader, const Track& track, uint32_t codecType) {
    const bool isMpeg4 = codecType == kCodecTypeMpeg4 || codecType == kCodecTypeXvid ||
                         codecType == kCodecTypeDivx4 || codecType == kCodecTypeDivx5;
    Bytes sample;
    if ((!isMpeg4 && codecType != kCodecTypeAvc) || track.samples.empty() ||
        reader.read(track.samples.front(), &sample) != OK) {
        return {};
    }
    // The library looks for SPS and PPS; of MPEG-4 it wants what stands in front of the first VOP
    // (ISO/IEC 14496-2 6.2.1).
    const uint8_t vopStartCode[] = {0, 0, 1, 0xB6};
    if (isMpeg4) {
        sample.erase(std::search(sample.begin(), sample.end(), std::begin(vopStartCode),
                                 std::end(vopStartCode)),
                     sample.end());
    }
    return sample;
}

// Video codec data stand behind the 40 bytes of the BITMAPINFOHEADER, or else in the stream.
status_t storeVideoData(const Reader& reader, const Track& track, TrackInfo* info,
                        MediaExtractorHelper& helper, AMediaFormat* format) {
    Bytes data = bytesFrom(track.format, 40);
    if (data.empty()) data = dataInStream(reader, track, info->codecType);
    size_t size = data.size();
    // Less than 4 bytes of AVC would end the process.
    if (info->codecType == kCodecTypeAvc && size < 4) return ERROR_MALFORMED;
    return size == 0 ? OK : helper.setVideoConfig(info, data.data(), size, format);
}

// Audio codec data stand behind the size of them, which ends a WAVEFORMATEX.
status_t storeAudioData(const Track& track, const TrackInfo& info, MediaExtractorHelper& helper,
                        AMediaFormat* format) {
    Bytes data = bytesFrom(track.format, 18);
    data.resize(std::min<size_t>(data.size(), read16(track.format, 16)));
    size_t size = data.size();
    return helper.setAudioConfig(info.codecType, data.data(), &size, format);
}

void storeDuration(const Track& track, MediaExtractorHelper& helper, AMediaFormat* format) {
    if (track.rate == 0) return;
    // Doubles do not overflow, whatever the file says.
    const double seconds = double{1} * track.length * track.scale / track.rate;
    if (seconds < 1e9) helper.setDuration(std::llround(seconds * 1e6), format);
}

// Buffers are made of this size, so it must hold the largest sample of this file.
void storeLargestSample(const Track& track, const Description& description,
                        MediaExtractorHelper& helper, AMediaFormat* format) {
    uint64_t largest = 0;
    for (const Sample& sample : track.samples) largest = std::max<uint64_t>(largest, sample.size);
    if (description.isPcm && description.info.audio.bitsPerSample == 8) largest *= 2;
    if (largest > INT32_MAX) largest = INT32_MAX;
    if (static_cast<int32_t>(largest) > helper.getMaxInputBuffer(format)) {
        AMediaFormat_setInt32(format, AMEDIAFORMAT_KEY_MAX_INPUT_SIZE,
                              static_cast<int32_t>(largest));
    }
}

}  // namespace

status_t describe(const Reader& reader, const Track& track, MediaExtractorHelper& helper,
                  AMediaFormat* format, Description* description) {
    const bool isVideo = track.kind == fourCC("vids");
    TrackInfo& info = description->info;
    info = isVideo ? videoInfo(track, reader.hasIndex()) : audioInfo(track);
    description->isPcm = !isVideo && info.codecType == kCodecTypePcm;

    helper.setTrackMeta(&info, format, /*useArbitraryMode=*/false);
    AMediaFormat_setString(format, ZREAMEDIAFORMAT_KEY_FILEFORMAT,
                           ZRE_MEDIA_MIMETYPE_CONTAINER_AVI);
    storeDuration(track, helper, format);
    storeLargestSample(track, *description, helper, format);
    if (description->isPcm) {
        // The parser hands out 16 bits, whatever the file has: see convertTo16().
        AMediaFormat_setInt32(format, AMEDIAFORMAT_KEY_BITS_PER_SAMPLE, 16);
        AMediaFormat_setInt32(format, AMEDIAFORMAT_KEY_PCM_ENCODING, 2);
    }
    return isVideo ? storeVideoData(reader, track, &info, helper, format)
                   : storeAudioData(track, info, helper, format);
}

status_t convertTo16(const Description& description, MediaExtractorHelper& helper,
                     const Bytes& samples, Bytes* converted) {
    const auto bits = static_cast<int32_t>(description.info.audio.bitsPerSample);
    if (bits == 16) {  // the library writes nothing for these
        *converted = samples;
        return OK;
    }
    const size_t count = bits < 8 ? 0 : samples.size() / static_cast<size_t>(bits / 8);
    converted->resize(2 * count);
    return helper.ConvertXto16(samples.data(), converted->data(), bits, count,
                               /*bigEndian=*/false);
}

bool isKeyFrame(const Description& description, MediaExtractorHelper& helper, const Bytes& sample) {
    return helper.isKeyFrame(sample.data(), sample.size(),
                             static_cast<int>(description.info.codecType));
}

}  // namespace avi
