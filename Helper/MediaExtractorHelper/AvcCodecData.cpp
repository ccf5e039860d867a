// Codec data of H.264 tracks.

#include "Helper/base/Log.h"
#include "Helper/base/Status.h"
#include "Helper/csd/AvcConfig.h"
#include "Helper/csd/AvcSps.h"
#include "zrcodecparser/MediaExtractorHelper.h"

namespace android {
namespace {

using base::kFailed;

void readDimensions(csd::Bytes sps, int32_t* width, int32_t* height) {
    const csd::AvcSps fields = csd::parseAvcSps(sps);
    if (fields.seq_scaling_matrix_present_flag)
        ZR_LOGW(base::kExtractorTag, "seq_scaling_matrix_present_flag != 0u");

    csd::PictureSize size = csd::codedSize(fields);
    *width = size.width;
    *height = size.height;
    if (!fields.frame_cropping_flag) return;
    size = csd::croppedSize(fields, size);
    *width = size.width;
    *height = size.height;
}

status_t storeRecord(AMediaFormat* format, const csd::AvcParameterSets& sets, int32_t width,
                     int32_t height) {
    const auto record = csd::makeAvcRecord(sets);
    if (!record) return kFailed;
    AMediaFormat_setBuffer(format, AMEDIAFORMAT_KEY_CSD_AVC, record->data(), record->size());
    AMediaFormat_setInt32(format, AMEDIAFORMAT_KEY_WIDTH, width);
    AMediaFormat_setInt32(format, AMEDIAFORMAT_KEY_HEIGHT, height);
    AMediaFormat_setInt32(format, AMEDIAFORMAT_KEY_STRIDE, width);
    AMediaFormat_setInt32(format, AMEDIAFORMAT_KEY_SLICE_HEIGHT, height);

    const int profile = (*record)[csd::kAvcRecordProfile];
    const int level = (*record)[csd::kAvcRecordLevel];
    ZR_LOGI(base::kExtractorTag, "found AVC codec config (%d x %d, %d-profile level %d.%d)", width,
            height, profile, level / 10, level % 10);
    return OK;
}

}  // namespace

status_t MediaExtractorHelper::setAVCCSeqHeader(const uint8_t* data, size_t& size,
                                                void* /*trackInfo*/, AMediaFormat* format) {
    if (size == 0) {
        ZR_LOGE(base::kExtractorTag, "setAVCCSeqHeader size <= 0");
        return kFailed;
    }
    const csd::Bytes input(data, size);
    int32_t width = 0;
    int32_t height = 0;
    if (const auto [sps, pps] = csd::findAvcUnits(input); sps) {
        readDimensions(*sps, &width, &height);
        if (!pps) return kFailed;
        return storeRecord(format, {*sps, *pps, pps->size()}, width, height);
    }
    if (const auto sets = csd::splitAvcLengthPrefixed(input)) {
        readDimensions(sets->sps, &width, &height);
        return storeRecord(format, *sets, width, height);
    }
    AMediaFormat_setBuffer(format, AMEDIAFORMAT_KEY_CSD_AVC, data, size);
    return OK;
}

void MediaExtractorHelper::FindAVCDimensions(const sp<ABuffer>& sps, int32_t* width,
                                             int32_t* height) {
    readDimensions({sps->data(), sps->size()}, width, height);
}

}  // namespace android
