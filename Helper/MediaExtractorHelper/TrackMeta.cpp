// Describing files, tracks and samples in format keys.

#include <array>

#include "Helper/base/Log.h"
#include "zrcodecparser/CodecType.h"
#include "zrcodecparser/FormatKeys.h"
#include "zrcodecparser/MediaDefs.h"
#include "zrcodecparser/MediaExtractorHelper.h"
#include "zrcodecparser/TrackInfo.h"

namespace android {
namespace {

constexpr int32_t kMaxVideoSampleBytes = 0x1CB000;
constexpr int32_t kMaxOtherSampleBytes = 0x100000;

// Values of AMEDIAFORMAT_KEY_PCM_ENCODING
constexpr int32_t kPcm16Bit = 2;
constexpr int32_t kPcm8Bit = 3;

constexpr const char* kUndeterminedLanguage = "und";  // ISO 639-2

constexpr auto kContainerMimes = std::to_array<const char*>({
        ZRE_MEDIA_MIMETYPE_CONTAINER_AVI,       // kFileKindAvi
        ZRE_MEDIA_MIMETYPE_CONTAINER_MATROSKA,  // kFileKindMatroska
        ZRE_MEDIA_MIMETYPE_CONTAINER_ASF,       // kFileKindAsf
        ZRE_MEDIA_MIMETYPE_CONTAINER_MPEG4,     // kFileKindMpeg4
        ZRE_MEDIA_MIMETYPE_CONTAINER_AC3,       // kFileKindAc3
        ZRE_MEDIA_MIMETYPE_CONTAINER_DTS,       // kFileKindDts
        ZRE_MEDIA_MIMETYPE_CONTAINER_FLV,       // kFileKindFlv
        ZRE_MEDIA_MIMETYPE_CONTAINER_OGM,       // kFileKindOgm
        ZRE_MEDIA_MIMETYPE_AUDIO_QCELP,         // kFileKindQcp: the stream's type, on purpose
        ZRE_MEDIA_MIMETYPE_CONTAINER_RM,        // kFileKindRm
});
static_assert(kContainerMimes.size() == kFileKindRm - kFileKindAvi + 1);

void setUint32(AMediaFormat* format, const char* key, uint32_t value) {
    AMediaFormat_setInt32(format, key, static_cast<int32_t>(value));
}

void storeVideo(AMediaFormat* format, const TrackInfo::Video& video) {
    AMediaFormat_setInt32(format, AMEDIAFORMAT_KEY_MAX_INPUT_SIZE, kMaxVideoSampleBytes);
    setUint32(format, AMEDIAFORMAT_KEY_WIDTH, video.width);
    setUint32(format, AMEDIAFORMAT_KEY_HEIGHT, video.height);
    setUint32(format, AMEDIAFORMAT_KEY_STRIDE, video.width);
    setUint32(format, AMEDIAFORMAT_KEY_SLICE_HEIGHT, video.height);
    setUint32(format, AMEDIAFORMAT_KEY_BIT_RATE, video.bitRate);
    if (video.hasSyncFrame != 0)
        AMediaFormat_setInt32(format, ZREAMEDIAFORMAT_KEY_EXISTSYNCFRAME, 1);
    if (video.frameRate != 0) setUint32(format, AMEDIAFORMAT_KEY_FRAME_RATE, video.frameRate);
}

void storeAudio(AMediaFormat* format, uint32_t codecType, const TrackInfo::Audio& audio) {
    AMediaFormat_setInt32(format, AMEDIAFORMAT_KEY_MAX_INPUT_SIZE, kMaxOtherSampleBytes);
    setUint32(format, ZREAMEDIAFORMAT_KEY_REALSAMPLERATE, audio.sampleRate);
    setUint32(format, ZREAMEDIAFORMAT_KEY_REALSAMPLEBITS, audio.bitsPerSample);
    setUint32(format, AMEDIAFORMAT_KEY_SAMPLE_RATE, audio.sampleRate);
    setUint32(format, AMEDIAFORMAT_KEY_CHANNEL_COUNT, audio.channelCount);
    setUint32(format, AMEDIAFORMAT_KEY_BIT_RATE, audio.bitRate);
    if (codecType == kCodecTypeG726) {
        AMediaFormat_setBuffer(format, AMEDIAFORMAT_KEY_CSD_0, &audio.bitRate,
                               sizeof(audio.bitRate));
    }
    if (audio.bitsPerSample != 0) {
        setUint32(format, AMEDIAFORMAT_KEY_BITS_PER_SAMPLE, audio.bitsPerSample);
        setUint32(format, ZREAMEDIAFORMAT_KEY_SAMPLEBITS, audio.bitsPerSample);
        const bool is8BitPcm = codecType == kCodecTypePcm && audio.bitsPerSample == 8;
        AMediaFormat_setInt32(format, AMEDIAFORMAT_KEY_PCM_ENCODING,
                              is8BitPcm ? kPcm8Bit : kPcm16Bit);
    }

    // These are set for every codec, not for WMA alone; widths near the top of the type wrap.
    const auto wholeBytes =
            static_cast<uint32_t>((uint64_t{audio.bitsPerSample} + 7) & ~uint64_t{7});
    setUint32(format, ZREAMEDIAFORMAT_KEY_WMABITSPERSAMPLE, wholeBytes);
    AMediaFormat_setInt32(format, ZREAMEDIAFORMAT_KEY_WMABLOCKALIGN, audio.blockAlign);
    AMediaFormat_setInt32(format, ZREAMEDIAFORMAT_KEY_WMAVIRPKTSIZE, audio.blockAlign);

    if (codecType == kCodecTypeOpus) {
        AMediaFormat_setBuffer(format, AMEDIAFORMAT_KEY_CSD_1, audio.codecDelay,
                               sizeof(audio.codecDelay));
        AMediaFormat_setBuffer(format, AMEDIAFORMAT_KEY_CSD_2, audio.seekPreRoll,
                               sizeof(audio.seekPreRoll));
    }
    AMediaFormat_setString(format, AMEDIAFORMAT_KEY_LANGUAGE,
                           audio.language != nullptr ? audio.language : kUndeterminedLanguage);
}

// Null for a code that is no subtitle codec.
const char* subtitleMime(uint32_t codecType) {
    switch (codecType) {
        case kCodecTypeSubRip: return ZRE_MEDIA_MIMETYPE_TEXT_SUBRIP;
        case kCodecTypeSsa: return ZRE_MEDIA_MIMETYPE_TEXT_SSA;
        case kCodecTypeAss: return ZRE_MEDIA_MIMETYPE_TEXT_ASS;
        default: return nullptr;
    }
}

void storeText(AMediaFormat* format, uint32_t codecType, const TrackInfo::Text& text) {
    AMediaFormat_setInt32(format, AMEDIAFORMAT_KEY_MAX_INPUT_SIZE, kMaxOtherSampleBytes);

    const char* language = nullptr;
    const char* mime = ZRE_MEDIA_MIMETYPE_AUDIO_NOTSUPPORTED;  // the audio one for text too
    if (text.isBitmapSubtitle != 0) {
        language = text.bitmapLanguage;
        if (text.isUnsupportedBitmap == 0) mime = ZRE_MEDIA_MIMETYPE_TEXT_XSUB;
    } else if (const char* known = subtitleMime(codecType)) {
        language = text.textLanguage;
        mime = known;
    }
    if (language != nullptr) AMediaFormat_setString(format, AMEDIAFORMAT_KEY_LANGUAGE, language);
    AMediaFormat_setString(format, AMEDIAFORMAT_KEY_MIME, mime);
}

void storeUnknownKind(AMediaFormat* format, uint32_t trackType) {
    // The line number is a fixed part of the text, which log scanners know.
    constexpr int kLine = 1233;
    ZR_LOGE(base::kExtractorTag, "Function %s line %d : Failed with error %x \n", "setTrackMeta",
            kLine, static_cast<unsigned>(BAD_VALUE));
    ZR_LOGE(base::kExtractorTag, "Track type : %d", static_cast<int32_t>(trackType));
    AMediaFormat_setString(format, AMEDIAFORMAT_KEY_MIME, ZRE_MEDIA_MIMETYPE_AUDIO_NOTSUPPORTED);
}

}  // namespace

int32_t MediaExtractorHelper::setTrackMeta(void* trackInfo, AMediaFormat* format,
                                           bool useArbitraryMode) {
    const auto& info = *static_cast<const TrackInfo*>(trackInfo);
    const auto codecType = static_cast<int>(info.codecType);
    switch (info.trackType) {
        case kTrackTypeVideo:
            storeVideo(format, info.video);
            SupportCodecEx(codecType, format, useArbitraryMode);
            break;
        case kTrackTypeAudio:
            storeAudio(format, info.codecType, info.audio);
            SupportCodecEx(codecType, format, false);
            break;
        case kTrackTypeText: storeText(format, info.codecType, info.text); break;
        default: storeUnknownKind(format, info.trackType); break;
    }
    return OK;
}

int32_t MediaExtractorHelper::setFileMeta(int fileType, AMediaFormat* format) {
    if (fileType < kFileKindAvi || fileType > kFileKindRm) return AMEDIA_ERROR_UNKNOWN;
    AMediaFormat_setString(format, AMEDIAFORMAT_KEY_MIME,
                           kContainerMimes[static_cast<size_t>(fileType - kFileKindAvi)]);
    return OK;
}

int32_t MediaExtractorHelper::getMaxInputBuffer(AMediaFormat* format) {
    int32_t sizeBytes = 0;
    AMediaFormat_getInt32(format, AMEDIAFORMAT_KEY_MAX_INPUT_SIZE, &sizeBytes);
    return sizeBytes;
}

status_t MediaExtractorHelper::setDuration(int64_t durationUs, AMediaFormat* format) {
    AMediaFormat_setInt64(format, AMEDIAFORMAT_KEY_DURATION, durationUs);
    return OK;
}

status_t MediaExtractorHelper::setCurrentTime(int64_t timeUs, AMediaFormat* format) {
    AMediaFormat_setInt64(format, AMEDIAFORMAT_KEY_TIME_US, timeUs);
    return OK;
}

status_t MediaExtractorHelper::setEndTime(int64_t timeUs, AMediaFormat* format) {
    AMediaFormat_setInt64(format, ZREAMEDIAFORMAT_KEY_ENDOFTEXT, timeUs);
    return OK;
}

}  // namespace android
