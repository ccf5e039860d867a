#include <cstring>

#include "Helper/MediaExtractorHelper/SampleRange.h"
#include "Helper/base/Check.h"
#include "Helper/base/Checked.h"
#include "Helper/base/Log.h"
#include "Helper/pcm/Convert.h"
#include "zrcodecparser/MediaExtractorHelper.h"

namespace android {
namespace {

using base::checkedAdd;
using base::checkedCast;
using base::checkedMul;
using base::checkedSub;
using pcm::convert;
using enum pcm::Conversion;

status_t notSupported() {
    ZR_LOGE(base::kExtractorTag, "[helper] Conversion is not supported.");
    return INVALID_OPERATION;
}

status_t notImplemented(int32_t sourceBits, int32_t destinationBits) {
    ZR_LOGE(base::kExtractorTag, "[helper] dst(%d) and src(%d) bit converint is not implemented.",
            destinationBits, sourceBits);
    return ERROR_UNSUPPORTED;
}

bool isWidth(int32_t bits) {
    return bits == 8 || bits == 16 || bits == 24 || bits == 32;
}

// The count is a signed number of 32 bits, whose predecessor has to be one as well.
size_t countOf8Bit(size_t samples) {
    const auto count = static_cast<int32_t>(static_cast<uint32_t>(samples));
    if (count == INT32_MIN) base::fatalOverflow();
    return count > 0 ? static_cast<size_t>(count) : 0;
}

// The bytes are counted in 32 bits, too.
size_t countOf24Packed(int32_t samples) {
    if (samples <= 0) return 0;
    checkedMul(samples, 3);
    return static_cast<size_t>(samples);
}

pcm::Conversion to24Packed(bool isFloat, bool bigEndian) {
    if (isFloat) return bigEndian ? kFloatToBigInt24 : kFloatToInt24;
    return bigEndian ? kInt32ToBigInt24 : kInt32ToInt24;
}

// Deliberately, 0 stays 0 and any other number becomes 2^31.
void int32ToScaledFloat(const uint8_t* source, uint8_t* destination, size_t samples) {
    checkedMul(samples, 4);
    for (size_t i = 0; i < samples; ++i) {
        int32_t word;
        std::memcpy(&word, source + 4 * i, sizeof(word));
        if (word < 0) base::fatalOverflow();
        const float scaled = word == 0 ? 0.0f : 0x1p31f;
        std::memcpy(destination + 4 * i, &scaled, sizeof(scaled));
    }
}

}  // namespace

status_t MediaExtractorHelper::ConvertXtoX(MediaBufferHelper* buffer, int32_t sourceBits,
                                           int32_t destinationBits, bool sourceIsFloat,
                                           bool bigEndian) {
    if (!isWidth(sourceBits) || !isWidth(destinationBits)) return notSupported();
    switch (destinationBits) {
        case 8: return sourceBits == 8 ? OK : notImplemented(sourceBits, destinationBits);
        case 16: return ConvertXto16(buffer, sourceBits, bigEndian);
        case 24:
            if (sourceBits < 24) return notImplemented(sourceBits, destinationBits);
            return ConvertXto24packed(buffer, sourceBits, sourceIsFloat, bigEndian);
        default:
            if (sourceBits == 32 && sourceIsFloat) return OK;
            return ConvertXtoFloat(buffer, sourceBits, bigEndian);
    }
}

status_t MediaExtractorHelper::ConvertXto16(MediaBufferHelper* buffer, int32_t sourceBits,
                                            bool bigEndian) {
    if (sourceBits == 16) return OK;
    if (!isWidth(sourceBits)) return notSupported();
    const SampleRange range(buffer);
    const size_t samples = range.length / (static_cast<size_t>(sourceBits) / 8);
    const size_t bytes = checkedMul(samples, 2);
    if (sourceBits == 8 && checkedSub(buffer->size(), range.offset) < bytes) {
        return ERROR_BUFFER_TOO_SMALL;
    }
    const size_t end = checkedAdd(range.offset, bytes);
    const status_t status =
            ConvertXto16(range.begin(), range.begin(), sourceBits, samples, bigEndian);
    buffer->set_range(range.offset, end);
    if (sourceBits == 24) {
        ZR_LOGD(base::kExtractorTag, "[ODO] offset %zu, size %zu, numOfSamples %zu, size %zu",
                range.offset, end, samples, buffer->size());
    }
    return status;
}

status_t MediaExtractorHelper::ConvertXto16(const uint8_t* source, uint8_t* destination,
                                            int32_t sourceBits, size_t samples, bool bigEndian) {
    switch (sourceBits) {
        case 8:
            samples = countOf8Bit(samples);
            convert(bigEndian ? kSigned8ToInt16 : kUnsigned8ToInt16, source, destination, samples);
            return OK;
        case 16: return OK;
        case 24:
            convert(bigEndian ? kBigInt24ToInt16 : kInt24ToInt16, source, destination, samples);
            return OK;
        case 32: convert(kInt32ToInt16, source, destination, samples); return OK;
        default: return notSupported();
    }
}

status_t MediaExtractorHelper::ConvertXto24packed(MediaBufferHelper* buffer, int32_t sourceBits,
                                                  bool sourceIsFloat, bool bigEndian) {
    if (sourceBits == 24) return OK;
    if (sourceBits != 32) return notSupported();
    const SampleRange range(buffer);
    const auto samples = static_cast<int32_t>(static_cast<uint32_t>(range.length / 4));
    const size_t end = checkedAdd(range.offset, checkedCast<size_t>(checkedMul(samples, 3)));
    const uint8_t* source = range.beginTimes(4);
    convert(to24Packed(sourceIsFloat, bigEndian), source, range.begin(),
            static_cast<size_t>(samples));
    buffer->set_range(range.offset, end);
    return OK;
}

status_t MediaExtractorHelper::ConvertXto24packed(const uint32_t* source, uint8_t* destination,
                                                  int32_t samples, bool bigEndian) {
    convert(to24Packed(false, bigEndian), reinterpret_cast<const uint8_t*>(source), destination,
            countOf24Packed(samples));
    return OK;
}

status_t MediaExtractorHelper::ConvertXto24packed(const float* source, uint8_t* destination,
                                                  int32_t samples, bool bigEndian) {
    convert(to24Packed(true, bigEndian), reinterpret_cast<const uint8_t*>(source), destination,
            countOf24Packed(samples));
    return OK;
}

status_t MediaExtractorHelper::ConvertXtoFloat(MediaBufferHelper* buffer, int32_t sourceBits,
                                               bool bigEndian) {
    if (sourceBits != 24 && sourceBits != 32) return notSupported();
    const SampleRange range(buffer);
    const size_t samples = range.length / (static_cast<size_t>(sourceBits) / 8);
    if (sourceBits == 32 && bigEndian) {
        if (checkedSub(buffer->size(), range.offset) < 2 * samples) return OK;
    }
    const size_t end = checkedAdd(range.offset, checkedMul(samples, 4));
    uint8_t* const data = range.begin();
    if (sourceBits == 24) {
        if (bigEndian) convert(kSwap24, data, data, samples);
        convert(kInt24ToFloat, data, data, samples);
    } else if (!bigEndian) {
        convert(kInt32ToFloat, data, data, samples);
    } else {
        uint8_t* const reversed = range.beginTimes(4);
        if (reversed == data) {
            convert(kBigInt32ToFloat, data, data, samples);
        } else {
            convert(kSwap32, data, reversed, samples);
            convert(kInt32ToFloat, data, data, samples);
        }
    }
    buffer->set_range(range.offset, end);
    return OK;
}

status_t MediaExtractorHelper::ConvertXtoFloat(const uint8_t* source, uint8_t* destination,
                                               int32_t sourceBits, size_t samples, bool) {
    switch (sourceBits) {
        case 24: convert(kInt24ToFloat, source, destination, samples); return OK;
        case 32: convert(kInt32ToFloat, source, destination, samples); return OK;
        default: return notSupported();
    }
}

status_t MediaExtractorHelper::ConvertXto32(MediaBufferHelper* buffer, int32_t sourceBits,
                                            bool sourceIsFloat, bool) {
    if (sourceBits != 24 && sourceBits != 32) return notSupported();
    if (sourceBits == 32 && !sourceIsFloat) return OK;
    const SampleRange range(buffer);
    const size_t samples = range.length / (static_cast<size_t>(sourceBits) / 8);
    const size_t bytes = checkedMul(samples, 4);
    const size_t end = checkedAdd(range.offset, bytes);
    if (sourceBits == 32) {
        int32ToScaledFloat(range.begin(), range.begin(), samples);
    } else if (bytes != 0) {
        // A byte forward at a time, each write overtakes the next read: the first 0 is copied on.
        std::memset(range.begin(), 0, bytes);
    }
    buffer->set_range(range.offset, end);
    return OK;
}

status_t MediaExtractorHelper::ConvertXto32(const uint8_t* source, uint8_t* destination,
                                            int32_t sourceBits, size_t samples, bool bigEndian) {
    switch (sourceBits) {
        case 24:
            convert(bigEndian ? kBigInt24ToInt32 : kInt24ToInt32, source, destination, samples);
            return OK;
        case 32: int32ToScaledFloat(source, destination, samples); return OK;
        default: return notSupported();
    }
}

}  // namespace android
