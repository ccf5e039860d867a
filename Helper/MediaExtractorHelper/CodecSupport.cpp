// Which codecs the device can play, and under which MIME type.

#include <utility>

#include "Helper/base/Check.h"
#include "Helper/base/Log.h"
#include "Helper/vocabulary/CodecTable.h"
#include "platform/CodecList.h"
#include "platform/Features.h"
#include "zrcodecparser/CodecType.h"
#include "zrcodecparser/MediaDefs.h"
#include "zrcodecparser/MediaExtractorHelper.h"

namespace android {
namespace {

constexpr int32_t kNoMimeType = 0x7FFFFFFF;

void storeMime(AMediaFormat* format, const char* mime) {
    AMediaFormat_setString(format, AMEDIAFORMAT_KEY_MIME, mime);
}

// Codes that no table knows count as video, those next to the audio codes too.
const char* notSupportedMime(int32_t codecType) {
    const bool isAudio = codecType >= kCodecTypeNoAudio && codecType <= kCodecTypeMpegHMhm1;
    return isAudio ? ZRE_MEDIA_MIMETYPE_AUDIO_NOTSUPPORTED : ZRE_MEDIA_MIMETYPE_VIDEO_NOTSUPPORTED;
}

sp<IMediaCodecList> codecList() {
    sp<IMediaCodecList> list = MediaCodecList::getInstance();
    if (list == nullptr)
        ZR_LOGE(base::kExtractorTag, "#### mediacodec list instance returned NULL");
    return list;
}

ssize_t findDecoder(const sp<IMediaCodecList>& list, const char* mime) {
    return list->findCodecByType(mime, /*encoder=*/false, /*startIndex=*/0);
}

// Takes the list over, so that nothing is held where the check ends the process.
void checkCodecInfo(sp<IMediaCodecList> list, ssize_t index) {
    const sp<MediaCodecInfo> reference = list->getCodecInfo(static_cast<size_t>(index));
    list.clear();
    const MediaCodecInfo* info = reference.get();
    ZR_CHECK(base::kAtMediaExtractorHelper, info != NULL);
    info->getCodecName();
}

bool divxAlternativeIsOn() {
    return com::zre::config::Features2::enable_divx_alternative().value_or(false);
}

void storeRow(AMediaFormat* format, const CodecRow& row, const char* asked, bool useArbitraryMode) {
    if (row.code == kCodecTypeWmaLossless) {
        // Both reads are without effect; they stay because a platform may count on being asked.
        int32_t unused = 0;
        AMediaFormat_getInt32(format, AMEDIAFORMAT_KEY_SAMPLE_RATE, &unused);
        AMediaFormat_getInt32(format, AMEDIAFORMAT_KEY_CHANNEL_COUNT, &unused);
    }
    storeMime(format, row.mime != nullptr ? row.mime : asked);
    for (const CodecExtra& extra : row.extras) {
        if (extra.key == nullptr) continue;
        const int32_t value = extra.value == kCallersArbitraryMode ? useArbitraryMode : extra.value;
        AMediaFormat_setInt32(format, extra.key, value);
    }
}

}  // namespace

int32_t MediaExtractorHelper::SupportCodecEx(int codecType, AMediaFormat* format,
                                             bool useArbitraryMode) {
    const CodecRow* row = findCodecRow(codecType);
    if (row == nullptr) {
        storeMime(format, notSupportedMime(codecType));
        return 1;
    }
    bool isSoftware = false;
    if (row->alternative != nullptr && checkIsZRSWCodec(codecType, isSoftware) != 0) return 1;
    if (!checkIsMediaserver()) {
        ZR_LOGE(base::kExtractorTag, "#### mediaserver is not alive !!so return error");
        return 1;
    }
    sp<IMediaCodecList> list = codecList();
    if (list == nullptr) return 1;

    const char* asked = row->asked(isSoftware);
    const ssize_t index = findDecoder(list, asked);
    if (index >= 0) {
        checkCodecInfo(std::move(list), index);
    } else if (row->withoutDecoder == WithoutDecoder::kDivxAsMpeg4 && divxAlternativeIsOn()) {
        row = findCodecRow(kCodecTypeMpeg4);
        asked = row->primary;
    } else if (row->withoutDecoder != WithoutDecoder::kOfferAnyway) {
        storeMime(format, notSupportedMime(codecType));
        return 1;
    }
    storeRow(format, *row, asked, useArbitraryMode);
    return 1;
}

int32_t MediaExtractorHelper::checkIsZRSWCodec(int codecType, bool& isSoftware) {
    if (!checkIsMediaserver()) {
        ZR_LOGE(base::kExtractorTag, "checkIsZRSWCodec - mediaserver is not alive! return error");
        return -1;
    }
    const sp<IMediaCodecList> list = codecList();
    if (list == nullptr) return -1;

    const CodecRow* row = findCodecRow(codecType);
    if (row == nullptr || row->alternative == nullptr) return 0;
    if (findDecoder(list, row->alternative) >= 0) {
        ZR_LOGI(base::kExtractorTag, "#### Succuss to find ZRSWCodec in mediaCodecList : %s",
                row->alternative);
        isSoftware = true;
    }
    return 0;
}

bool MediaExtractorHelper::checkIsMediaserver() {
    const sp<IServiceManager> manager = defaultServiceManager();
    const sp<IMediaPlayerService> service =
            IMediaPlayerService::asInterface(manager->getService("media.player"));
    if (service == nullptr) {
        ZR_LOGE(base::kExtractorTag, "mediaserver die !!");
        return false;
    }
    if (service->getCodecList() == nullptr) {
        ZR_LOGE(base::kExtractorTag, "Can't get codec list");
        return false;
    }
    return true;
}

int32_t MediaExtractorHelper::getCodecType(AMediaFormat* format) {
    const char* mime = nullptr;
    if (!AMediaFormat_getString(format, AMEDIAFORMAT_KEY_MIME, &mime)) return kNoMimeType;
    return findAudioCode(mime);
}

}  // namespace android
