// Codec data of audio tracks, and the elementary stream descriptors that MPEG-4 video shares.

#include <algorithm>
#include <array>

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

void storeFlac(AMediaFormat* format, Bytes data) {
    setBuffer(format, ZREAMEDIAFORMAT_KEY_FLACCOECSPECIFICDATA, data);
    const auto info = csd::parseFlacStreamInfo(data);
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
    for (const csd::WmaField& field : layout.fields) {
        AMediaFormat_setInt32(format, field.key, csd::wmaFieldValue(data, field));
    }
    return OK;
}

}  // namespace

status_t MediaExtractorHelper::setAudioConfig(uint32_t codecType, const uint8_t* data, size_t* size,
                                              AMediaFormat* format) {
    const Bytes input(data, *size);
    if (const csd::WmaLayout* layout = csd::wmaLayout(codecType)) {
        return storeWma(format, input, *layout);
    }
    switch (codecType) {
        case kCodecTypeAac: return setESDS(data, size, format, true);
        case kCodecTypeFlac: storeFlac(format, input); break;
        case kCodecTypeVorbis:
            if (setVorbisCodecSpecificData(data, size, format) < 0) {
                ZR_LOGE(base::kExtractorTag, " fail to setting vorbis codec private data");
            }
            break;
        case kCodecTypeAdpcm: setBuffer(format, ZREAMEDIAFORMAT_KEY_ADPCMWAVEFORMAT, input); break;
        case kCodecTypeOpus: setBuffer(format, AMEDIAFORMAT_KEY_CSD_0, input); break;
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
    csd::writeFixedEsDescriptor({data, *size}, out);
}

bool MediaExtractorHelper::MakeAACCodecSpecificData(const uint8_t* config, size_t* outSize,
                                                    uint8_t* out) {
    const auto descriptor = csd::makeAacEsDescriptor(
            std::span<const uint8_t, csd::kAacConfigSize>(config, csd::kAacConfigSize));
    std::ranges::copy(descriptor, out);
    *outSize = descriptor.size();
    return true;
}

status_t MediaExtractorHelper::setAACCodecSpecificData(const uint8_t* config, size_t* outSize,
                                                       AMediaFormat* format) {
    std::array<uint8_t, csd::kAacEsDescriptorSize> descriptor;
    MakeAACCodecSpecificData(config, outSize, descriptor.data());
    setBuffer(format, AMEDIAFORMAT_KEY_CSD_0, descriptor);
    return OK;
}

size_t MediaExtractorHelper::bytesForSize(size_t value) {
    return csd::expandableSizeBytes(value);
}

void MediaExtractorHelper::storeSize(uint8_t* out, size_t& offset, size_t value) {
    csd::writeExpandableSize(out + offset, value);
    offset = base::checkedAdd(offset, csd::expandableSizeBytes(value));
}

status_t MediaExtractorHelper::setVorbisCodecSpecificData(const uint8_t* data, size_t* size,
                                                          AMediaFormat* format) {
    const auto headers = csd::splitVorbisHeaders({data, *size});
    if (!headers) return ERROR_MALFORMED;
    setBuffer(format, AMEDIAFORMAT_KEY_CSD_0, headers->identification);
    if (!csd::hasVorbisHeaderTypes(*headers)) return AMEDIA_ERROR_MALFORMED;
    setBuffer(format, AMEDIAFORMAT_KEY_CSD_1, headers->setup);
    return OK;
}

}  // namespace android
