#include "Helper/MediaExtractorHelper/SampleRange.h"
#include "Helper/base/Log.h"
#include "Helper/pcm/Convert.h"
#include "zrcodecparser/MediaExtractorHelper.h"

namespace android {

status_t MediaExtractorHelper::ConvertEndian(MediaBufferHelper* buffer, int32_t sampleBits) {
    if (sampleBits == 8) return OK;
    if (sampleBits != 16 && sampleBits != 24 && sampleBits != 32) {
        ZR_LOGE(base::kExtractorTag, "[helper] endian change is not supported.");
        return OK;
    }
    const SampleRange range(buffer);
    const size_t bytes = static_cast<size_t>(sampleBits) / 8;
    const size_t samples = range.length / bytes;
    if (sampleBits == 24) {
        pcm::convert(pcm::Conversion::kSwap24, range.begin(), range.begin(), samples);
        return OK;
    }
    // Two bytes a sample, for 32 bits too.
    if (base::checkedSub(buffer->size(), range.offset) < 2 * samples) return ERROR_BUFFER_TOO_SMALL;
    using enum pcm::Conversion;
    pcm::convert(sampleBits == 16 ? kSwap16 : kSwap32, range.begin(), range.beginTimes(bytes),
                 samples);
    return OK;
}

}  // namespace android
