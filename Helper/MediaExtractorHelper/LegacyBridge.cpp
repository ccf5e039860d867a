// What older container parsers use: metadata under four-character codes, and the framework's status
// codes.

#include <algorithm>
#include <array>

#include "Helper/MediaExtractorHelper/DecoderQuery.h"
#include "Helper/base/Log.h"
#include "Helper/vocabulary/CodecTable.h"
#include "zrcodecparser/CodecType.h"
#include "zrcodecparser/FormatKeys.h"
#include "zrcodecparser/MediaDefs.h"
#include "zrcodecparser/MediaExtractorHelper.h"
#include "zrcodecparser/MetaKeys.h"

namespace android {
namespace {

struct BridgeRow {
    int32_t code;
    const char* mime;
};

// What older parsers can offer to the player. AC-4 is among it, though a format says of it that it
// is not supported; layer II goes by the type of layer III.
constexpr auto kBridgeRows = std::to_array<BridgeRow>({
        {kCodecTypeMpeg2, ZRE_MEDIA_MIMETYPE_VIDEO_MPEG2},
        {kCodecTypeMpeg4, ZRE_MEDIA_MIMETYPE_VIDEO_MPEG4},
        {kCodecTypeAvc, ZRE_MEDIA_MIMETYPE_VIDEO_AVC},
        {kCodecTypeMpeg1, ZRE_MEDIA_MIMETYPE_VIDEO_MPEG2},
        {kCodecTypeHevc, ZRE_MEDIA_MIMETYPE_VIDEO_HEVC},
        {kCodecTypeAac, ZRE_MEDIA_MIMETYPE_AUDIO_AAC},
        {kCodecTypeMp3, ZRE_MEDIA_MIMETYPE_AUDIO_MPEG},
        {kCodecTypeAc3, ZRE_MEDIA_MIMETYPE_AUDIO_AC3},
        {kCodecTypeEac3, ZRE_MEDIA_MIMETYPE_AUDIO_EAC3},
        {kCodecTypeDts, ZRE_MEDIA_MIMETYPE_AUDIO_DTS},
        {kCodecTypePcm, ZRE_MEDIA_MIMETYPE_AUDIO_RAW},
        {kCodecTypeMp2, ZRE_MEDIA_MIMETYPE_AUDIO_MPEG},
        {kCodecTypeDtsLbr, ZRE_MEDIA_MIMETYPE_AUDIO_DTS_LBR},
        {kCodecTypeAc4, ZRE_MEDIA_MIMETYPE_AUDIO_AC4},
});

void storeNotSupported(MetaDataBase& meta, int32_t codecType) {
    meta.setCString(kZreKeyMime, notSupportedMime(codecType));
}

// These two are offered without a decoder: the player finds a way of its own.
bool needsDecoder(int32_t codecType) {
    return codecType != kCodecTypeMpeg2 && codecType != kCodecTypeEac3;
}

void storeBridgeRow(MetaDataBase& meta, int32_t codecType) {
    const auto* row = std::ranges::find(kBridgeRows, codecType, &BridgeRow::code);
    if (row == kBridgeRows.end()) {
        storeNotSupported(meta, codecType);
        return;
    }
    meta.setCString(kZreKeyMime, row->mime);
    if (codecType == kCodecTypeMpeg4) meta.setInt32(kZreKeyUseArbitraryMode, 0);
}

struct TextRow {
    const char* const* formatKey;
    uint32_t metaKey;
};

// clang-format off
constexpr auto kTextRows = std::to_array<TextRow>({
        {&AMEDIAFORMAT_KEY_ALBUM,              kZreKeyAlbum},
        {&AMEDIAFORMAT_KEY_ARTIST,             kZreKeyArtist},
        {&AMEDIAFORMAT_KEY_ALBUMARTIST,        kZreKeyAlbumArtist},
        {&AMEDIAFORMAT_KEY_COMPOSER,           kZreKeyComposer},
        {&AMEDIAFORMAT_KEY_GENRE,              kZreKeyGenre},
        {&AMEDIAFORMAT_KEY_TITLE,              kZreKeyTitle},
        {&AMEDIAFORMAT_KEY_YEAR,               kZreKeyYear},
        {&AMEDIAFORMAT_KEY_AUTHOR,             kZreKeyAuthor},
        {&AMEDIAFORMAT_KEY_CDTRACKNUMBER,      kZreKeyCDTrackNumber},
        {&AMEDIAFORMAT_KEY_DISCNUMBER,         kZreKeyDiscNumber},
        {&AMEDIAFORMAT_KEY_COMPILATION,        kZreKeyCompilation},
        {&ZREAMEDIAFORMAT_KEY_UNSYNCEDLYRICS,  kZreKeyUnsyncedLyrics},
});
// clang-format on

void copyText(AMediaFormat* format, const char* formatKey, MetaDataBase* meta, uint32_t metaKey) {
    const char* text = nullptr;
    if (AMediaFormat_getString(format, formatKey, &text)) meta->setCString(metaKey, text);
}

void copyInt32(AMediaFormat* format, const char* formatKey, MetaDataBase* meta, uint32_t metaKey) {
    int32_t value = 0;
    if (AMediaFormat_getInt32(format, formatKey, &value)) meta->setInt32(metaKey, value);
}

void copyBuffer(AMediaFormat* format, const char* formatKey, MetaDataBase* meta, uint32_t metaKey,
                uint32_t type) {
    void* data = nullptr;
    size_t size = 0;
    if (AMediaFormat_getBuffer(format, formatKey, &data, &size)) {
        meta->setData(metaKey, type, data, size);
    }
}

struct StatusRow {
    int status;
    int32_t mediaStatus;
};

constexpr auto kStatusRows = std::to_array<StatusRow>({
        {UNKNOWN_ERROR, AMEDIA_ERROR_UNKNOWN},
        {ERROR_END_OF_STREAM, AMEDIA_ERROR_END_OF_STREAM},
        {ERROR_MALFORMED, AMEDIA_ERROR_MALFORMED},
        {ERROR_IO, AMEDIA_ERROR_IO},
        {INVALID_OPERATION, AMEDIA_ERROR_INVALID_OPERATION},
});

}  // namespace

int32_t MediaExtractorHelper::SupportCodecEx(int codecType, MetaDataBase& meta) {
    const CodecRow* row = findCodecRow(codecType);
    if (row == nullptr) {
        storeNotSupported(meta, codecType);
        return OK;
    }
    const DecoderAnswer answer = askForDecoder(*this, *row);
    if (!answer.isKnown()) {
        storeNotSupported(meta, codecType);
        return UNKNOWN_ERROR;
    }
    if (!answer.hasDecoder() && needsDecoder(codecType)) {
        ZR_LOGW(base::kExtractorTag, "#### Can not find Codec... Unsupported codec!!!!!");
        storeNotSupported(meta, codecType);
        return OK;
    }
    storeBridgeRow(meta, codecType);
    return OK;
}

int32_t MediaExtractorHelper::convertZRAMediaFormatToMeta(AMediaFormat* format,
                                                          MetaDataBase* meta) {
    copyText(format, AMEDIAFORMAT_KEY_MIME, meta, kZreKeyMime);
    copyInt32(format, AMEDIAFORMAT_KEY_WIDTH, meta, kZreKeyWidth);
    copyInt32(format, AMEDIAFORMAT_KEY_HEIGHT, meta, kZreKeyHeight);
    copyBuffer(format, AMEDIAFORMAT_KEY_CSD_HEVC, meta, kZreKeyHEVCConfig, kZreTypeHEVCConfig);
    for (const TextRow& row : kTextRows) copyText(format, *row.formatKey, meta, row.metaKey);

    int32_t encodingType = 0;
    int32_t dsdSampleRate = 0;
    if (AMediaFormat_getInt32(format, ZREAMEDIAFORMAT_KEY_ENCODINGTYPE, &encodingType)) {
        meta->setInt32(kZreKeyMixedEncodingType, encodingType);
    }
    // Older parsers have always been given the encoding type here, and count on it.
    if (AMediaFormat_getInt32(format, ZREAMEDIAFORMAT_KEY_DSDSAMPLERATE, &dsdSampleRate)) {
        meta->setInt32(kZreKeyDSDSampleRate, encodingType);
    }
    copyBuffer(format, AMEDIAFORMAT_KEY_ALBUMART, meta, kZreKeyAlbumArt, kZreTypeNone);
    return OK;
}

int32_t MediaExtractorHelper::convertZRAMediaFormatToMeta(AMediaFormat* format,
                                                          sp<MetaData>& meta) {
    return convertZRAMediaFormatToMeta(format, meta.get());
}

int32_t MediaExtractorHelper::convertZRErrorToAMediaError(int status) {
    const auto* row = std::ranges::find(kStatusRows, status, &StatusRow::status);
    return row == kStatusRows.end() ? status : row->mediaStatus;
}

}  // namespace android
