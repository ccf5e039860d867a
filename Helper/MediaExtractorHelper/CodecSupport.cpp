// Which codecs the device can play, and under which MIME type.

#include <utility>

#include "Helper/MediaExtractorHelper/DecoderQuery.h"
#include "Helper/base/Check.h"
#include "Helper/vocabulary/CodecTable.h"
#include "platform/Features.h"
#include "zrcodecparser/CodecType.h"
#include "zrcodecparser/MediaExtractorHelper.h"

namespace android {
namespace {

constexpr int32_t kNoMimeType = 0x7FFFFFFF;

void storeMime(AMediaFormat* format, const char* mime) {
    AMediaFormat_setString(format, AMEDIAFORMAT_KEY_MIME, mime);
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
    DecoderAnswer answer = askForDecoder(*this, *row);
    if (!answer.isKnown()) return 1;

    const char* asked = answer.mime;
    if (answer.hasDecoder()) {
        checkCodecInfo(std::move(answer.list), answer.index);
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

int32_t MediaExtractorHelper::getCodecType(AMediaFormat* format) {
    const char* mime = nullptr;
    if (!AMediaFormat_getString(format, AMEDIAFORMAT_KEY_MIME, &mime)) return kNoMimeType;
    return findAudioCode(mime);
}

}  // namespace android
