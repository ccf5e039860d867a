#include "Helper/MediaExtractorHelper/DecoderQuery.h"

#include "Helper/base/Log.h"
#include "Helper/base/Status.h"
#include "zrcodecparser/MediaExtractorHelper.h"

namespace android {
namespace {

sp<IMediaCodecList> codecList() {
    sp<IMediaCodecList> list = MediaCodecList::getInstance();
    if (list == nullptr)
        ZR_LOGE(base::kExtractorTag, "#### mediacodec list instance returned NULL");
    return list;
}

ssize_t findDecoder(const sp<IMediaCodecList>& list, const char* mime) {
    return list->findCodecByType(mime, /*encoder=*/false, /*startIndex=*/0);
}

}  // namespace

DecoderAnswer askForDecoder(MediaExtractorHelper& helper, const CodecRow& row) {
    DecoderAnswer answer;
    bool isSoftware = false;
    if (row.alternative != nullptr && helper.checkIsZRSWCodec(row.code, isSoftware) != OK) {
        return answer;
    }
    if (!helper.checkIsMediaserver()) {
        ZR_LOGE(base::kExtractorTag, "#### mediaserver is not alive !!so return error");
        return answer;
    }
    answer.list = codecList();
    if (answer.list == nullptr) return answer;
    answer.mime = isSoftware ? row.alternative : row.primary;
    answer.index = findDecoder(answer.list, answer.mime);
    return answer;
}

int32_t MediaExtractorHelper::checkIsZRSWCodec(int codecType, bool& isSoftware) {
    if (!checkIsMediaserver()) {
        ZR_LOGE(base::kExtractorTag, "checkIsZRSWCodec - mediaserver is not alive! return error");
        return base::kFailed;
    }
    const sp<IMediaCodecList> list = codecList();
    if (list == nullptr) return base::kFailed;

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
    const sp<IMediaPlayerService> service = mediaPlayerService();
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

}  // namespace android
