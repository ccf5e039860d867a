/// @file
/// What a container parser knows about one track, as it hands it to MediaExtractorHelper.
///
/// The parser owns the record and everything that it points to; the library reads it during the
/// call only, and only the part of the union that trackType names.

#pragma once

#include <cstdint>

namespace android {

inline constexpr uint32_t kTrackTypeVideo = 1;  ///< the record has TrackInfo::Video
inline constexpr uint32_t kTrackTypeAudio = 2;  ///< the record has TrackInfo::Audio
inline constexpr uint32_t kTrackTypeText = 3;   ///< the record has TrackInfo::Text

/// One track, as its container describes it.
struct TrackInfo {
    /// What the container says of pictures.
    struct Video {
        uint32_t width;         ///< pixels; 0 = unknown, and stored as it is
        uint32_t height;        ///< pixels; 0 = unknown, and stored as it is
        uint32_t bitRate;       ///< bits per second; 0 = unknown, and stored as it is
        uint32_t frameRate;     ///< frames per second; 0 = unknown
        uint32_t hasSyncFrame;  ///< nonzero: the container marks key frames
    };

    /// What the container says of sound.
    struct Audio {
        uint32_t channelCount;  ///< how many channels
        uint32_t sampleRate;    ///< samples per second
        /// Of a PCM sample, in the container; 0 = unknown. It stays the container's number where
        /// the parser hands out 16 bits: it then stores these itself, after setTrackMeta, under
        /// AMEDIAFORMAT_KEY_BITS_PER_SAMPLE, and 2 under AMEDIAFORMAT_KEY_PCM_ENCODING.
        uint32_t bitsPerSample;
        /// Bits per second; 0 = unknown, and stored as it is. For G.726 also the codec-specific
        /// data.
        uint32_t bitRate;
        uint16_t blockAlign;     ///< bytes; used by the WMA family
        const char* language;    ///< ISO 639, NUL-terminated; null = unknown
        uint8_t codecDelay[8];   ///< Opus: stored as it is as codec-specific data 1
        uint8_t seekPreRoll[8];  ///< Opus: stored as it is as codec-specific data 2
    };

    /// What the container says of subtitles.
    struct Text {
        uint32_t isBitmapSubtitle;     ///< nonzero: the subtitles are pictures (XSUB)
        uint32_t isUnsupportedBitmap;  ///< nonzero: such pictures cannot be shown
        const char* bitmapLanguage;    ///< of picture subtitles; null = unknown
        const char* textLanguage;      ///< of SubRip, SSA and ASS; must not be null for these
    };

    uint32_t trackType = 0;  ///< one of the kTrackType values
    uint32_t codecType = 0;  ///< a CodecType
    union {
        Video video;  ///< for kTrackTypeVideo
        Audio audio;  ///< for kTrackTypeAudio
        Text text;    ///< for kTrackTypeText
        /// A new record is zero from end to end, whichever of the three is filled in: it is this
        /// member that covers the gaps inside and behind the others.
        uint8_t zeros[sizeof(Audio)] = {};
    };
};

static_assert(sizeof(TrackInfo::Audio) >= sizeof(TrackInfo::Video) &&
              sizeof(TrackInfo::Audio) >= sizeof(TrackInfo::Text));

}  // namespace android
