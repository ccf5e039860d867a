#include "Helper/csd/EsDescriptor.h"

#include <algorithm>

#include "Helper/base/ByteWriter.h"
#include "Helper/base/Checked.h"

namespace android::csd {
namespace {

// ISO/IEC 14496-1 Table 1
constexpr uint8_t kEsDescrTag = 0x03;
constexpr uint8_t kDecoderConfigDescrTag = 0x04;
constexpr uint8_t kDecSpecificInfoTag = 0x05;

// What stands in a descriptor between its size field and the next descriptor's tag.
constexpr size_t kEsFields = 3;              // ES_ID, flags
constexpr size_t kDecoderConfigFields = 13;  // objectTypeIndication to avgBitrate
constexpr size_t kDecoderConfigZeros = 12;   // of these, all after objectTypeIndication
constexpr size_t kTagSize = 1;

void expandable(base::ByteWriter& writer, size_t value) {
    uint8_t field[4];
    writeExpandableSize(field, value);
    writer.bytes(Bytes(field, expandableSizeBytes(value)));
}

}  // namespace

size_t expandableSizeBytes(size_t value) {
    if (value < 1u << 7) return 1;
    if (value < 1u << 14) return 2;
    if (value < 1u << 21) return 3;
    return 4;
}

void writeExpandableSize(uint8_t* out, size_t value) {
    const size_t last = expandableSizeBytes(value) - 1;
    out[last] = value & 0x7F;
    for (size_t i = last; i > 0; --i) {
        value >>= 7;
        out[i - 1] = static_cast<uint8_t>(0x80 | (value & 0x7F));
    }
}

std::vector<uint8_t> makeEsDescriptor(Bytes decoderSpecificInfo, ObjectType objectType) {
    using base::checkedAdd;
    const size_t infoSize = decoderSpecificInfo.size();
    const size_t configSize = checkedAdd(checkedAdd(infoSize, expandableSizeBytes(infoSize)),
                                         kDecoderConfigFields + kTagSize);
    const size_t esSize = checkedAdd(checkedAdd(configSize, expandableSizeBytes(configSize)),
                                     kEsFields + kTagSize);
    const size_t total = checkedAdd(checkedAdd(esSize, expandableSizeBytes(esSize)), kTagSize);

    base::ByteWriter writer(total);
    writer.u8(kEsDescrTag);
    expandable(writer, esSize);
    writer.u16(0);  // ES_ID
    writer.u8(0);   // streamDependenceFlag, URL_Flag, OCRstreamFlag, streamPriority

    writer.u8(kDecoderConfigDescrTag);
    expandable(writer, configSize);
    writer.u8(static_cast<uint8_t>(objectType));  // objectTypeIndication
    writer.zeros(kDecoderConfigZeros);  // streamType, bufferSizeDB, maxBitrate, avgBitrate

    writer.u8(kDecSpecificInfoTag);
    expandable(writer, infoSize);
    writer.bytes(decoderSpecificInfo);
    return writer.take();
}

void writeFixedEsDescriptor(Bytes decoderSpecificInfo, uint8_t* out) {
    const size_t infoSize = decoderSpecificInfo.size();
    *out++ = kEsDescrTag;
    *out++ = static_cast<uint8_t>(infoSize + 20);
    out = std::fill_n(out, kEsFields, uint8_t{0});
    *out++ = kDecoderConfigDescrTag;
    *out++ = static_cast<uint8_t>(infoSize + 15);
    *out++ = static_cast<uint8_t>(ObjectType::kVisual14496_2);
    out = std::fill_n(out, kDecoderConfigZeros, uint8_t{0});
    *out++ = kDecSpecificInfoTag;
    *out++ = static_cast<uint8_t>(infoSize);
    std::ranges::copy(decoderSpecificInfo, out);
}

std::array<uint8_t, kAacEsDescriptorSize> makeAacEsDescriptor(
        std::span<const uint8_t, kAacConfigSize> audioSpecificConfig) {
    return {
            kEsDescrTag,
            22,
            0,
            0,  // ES_ID
            0,  // flags
            kDecoderConfigDescrTag,
            17,
            static_cast<uint8_t>(ObjectType::kAudio14496_3),
            0,  // streamType
            0,
            0,
            0,  // bufferSizeDB
            0,
            0,
            0,
            0,  // maxBitrate
            0,
            0,
            0,
            0,  // avgBitrate
            kDecSpecificInfoTag,
            kAacConfigSize,
            audioSpecificConfig[0],
            audioSpecificConfig[1],
    };
}

}  // namespace android::csd
