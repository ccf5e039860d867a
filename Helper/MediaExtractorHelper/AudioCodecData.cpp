// Codec data of audio tracks, and the elementary stream descriptors that MPEG-4 video shares.

#include <algorithm>
#include <vector>

#include "Helper/base/Checked.h"
#include "Helper/base/Log.h"
#include "Helper/base/Status.h"
#include "Helper/csd/EsDescriptor.h"
#include "Helper/csd/FlacStreamInfo.h"
#include "Helper/csd/VorbisHeaders.h"
#include "Helper/csd/WmaExtraData.h"
#include "zrcodecparser/CodecType.h"
#include "zrcodecparser/FormatKeys.h"
#include "zrcodecparser/MediaExtractorHelper.h"

namespace android {
namespace {

using csd::Bytes;

using base::kFailed;

void setBuffer(AMediaFormat* format, const char* key, Bytes data) {
    AMediaFormat_setBuffer(format, key, data.data(), data.size());
}

// The data may be a buffer of the format, which ends with the first store under its key: here and
// below, what is needed of them is taken before.

void storeFlac(AMediaFormat* format, Bytes data) {
    const auto info = csd::parseFlacStreamInfo(data);
    setBuffer(format, ZREAMEDIAFORMAT_KEY_FLACCOECSPECIFICDATA, data);
    if (!info) return;
    const auto set = [format](const char* key, uint32_t value) {
        AMediaFormat_setInt32(format, key, static_cast<int32_t>(value));
    };
    set(ZREAMEDIAFORMAT_KEY_MINBLOCKSIZE, info->minBlockSize);
    set(ZREAMEDIAFORMAT_KEY_MAXBLOCKSIZE, info->maxBlockSize);
    set(ZREAMEDIAFORMAT_KEY_MINFRAMESIZE, info->minFrameSize);
    set(ZREAMEDIAFORMAT_KEY_MAXFRAMESIZE, info->maxFrameSize);
}

status_t storeWma(AMediaFormat* format, Bytes data, const csd::WmaLayout& layout) {
    if (data.size() < layout.minSize) {
        if (layout.shortDataIsError) {
            ZR_LOGE(base::kExtractorTag, "WMA Error case : please check parsing");
            return kFailed;
        }
        ZR_LOGE(base::kExtractorTag, "ExtraData size(%zu) is incorrect", data.size());
        data = {};
    }
    for (const auto& [key, value] : csd::readWmaFields(data, layout)) {
        AMediaFormat_setInt32(format, key, value);
    }
    return OK;
}

// The two bytes of an AudioSpecificConfig (ISO/IEC 14496-3 1.6.2.1), taken as they are.
constexpr size_t kAacConfigSize = 2;

std::vector<uint8_t> makeAacDescriptor(const uint8_t* config) {
    return csd::makeEsDescriptor({config, kAacConfigSize}, csd::ObjectType::kAudio14496_3);
}

}  // namespace

status_t MediaExtractorHelper::setAudioConfig(uint32_t codecType, const uint8_t* data, size_t* size,
                                              AMediaFormat* format) {
    if (const csd::WmaLayout* layout = csd::wmaLayout(codecType)) {
        return storeWma(format, {data, *size}, *layout);
    }
    switch (codecType) {
        case kCodecTypeAac: return setESDS(data, size, format, true);
        case kCodecTypeFlac: storeFlac(format, {data, *size}); break;
        case kCodecTypeVorbis:
            if (setVorbisCodecSpecificData(data, size, format) < 0) {
                ZR_LOGE(base::kExtractorTag, " fail to setting vorbis codec private data");
            }
            break;
        case kCodecTypeAdpcm:
            setBuffer(format, ZREAMEDIAFORMAT_KEY_ADPCMWAVEFORMAT, {data, *size});
            break;
        case kCodecTypeOpus: setBuffer(format, AMEDIAFORMAT_KEY_CSD_0, {data, *size}); break;
        default: break;
    }
    return OK;
}

status_t MediaExtractorHelper::setESDS(const uint8_t* data, size_t* size, AMediaFormat* format,
                                       bool isAudio) {
    const auto type = isAudio ? csd::ObjectType::kAudio14496_3 : csd::ObjectType::kVisual14496_2;
    setBuffer(format, AMEDIAFORMAT_KEY_ESDS, csd::makeEsDescriptor({data, *size}, type));
    return OK;
}

void MediaExtractorHelper::makeESDS(const uint8_t* data, size_t* size, uint8_t* out) {
    using enum csd::SizeFields;
    std::ranges::copy(
            csd::makeEsDescriptor({data, *size}, csd::ObjectType::kVisual14496_2, kOneByte), out);
}

bool MediaExtractorHelper::MakeAACCodecSpecificData(const uint8_t* config, size_t* outSize,
                                                    uint8_t* out) {
    const auto descriptor = makeAacDescriptor(config);
    std::ranges::copy(descriptor, out);
    *outSize = descriptor.size();
    return true;
}

status_t MediaExtractorHelper::setAACCodecSpecificData(const uint8_t* config, size_t* outSize,
                                                       AMediaFormat* format) {
    const auto descriptor = makeAacDescriptor(config);
    setBuffer(format, AMEDIAFORMAT_KEY_CSD_0, descriptor);
    *outSize = descriptor.size();
    return OK;
}

size_t MediaExtractorHelper::bytesForSize(size_t value) {
    return csd::expandableSizeBytes(value);
}

void MediaExtractorHelper::storeSize(uint8_t* out, size_t& offset, size_t value) {
    const size_t end = base::checkedAdd(offset, csd::expandableSizeBytes(value));
    csd::writeExpandableSize(out + offset, value);
    offset = end;
}

status_t MediaExtractorHelper::setVorbisCodecSpecificData(const uint8_t* data, size_t* size,
                                                          AMediaFormat* format) {
    const auto headers = csd::splitVorbisHeaders({data, *size});
    if (!headers) return ERROR_MALFORMED;
    const bool typesAreRight = csd::hasVorbisHeaderTypes(*headers);
    const std::vector<uint8_t> setup(headers->setup.begin(), headers->setup.end());
    setBuffer(format, AMEDIAFORMAT_KEY_CSD_0, headers->identification);
    if (!typesAreRight) return AMEDIA_ERROR_MALFORMED;
    setBuffer(format, AMEDIAFORMAT_KEY_CSD_1, setup);
    return OK;
}

}  // namespace android
