#include "Helper/csd/EsDescriptor.h"

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
constexpr size_t kMaxSizeBytes = 4;

size_t sizeFieldBytes(SizeFields fields, size_t value) {
    return fields == SizeFields::kOneByte ? 1 : expandableSizeBytes(value);
}

void writeSizeField(base::ByteWriter& writer, SizeFields fields, size_t value) {
    if (fields == SizeFields::kOneByte) return writer.u8(static_cast<uint8_t>(value));
    uint8_t field[kMaxSizeBytes];
    writeExpandableSize(field, value);
    writer.bytes(Bytes(field, expandableSizeBytes(value)));
}

}  // namespace

size_t expandableSizeBytes(size_t value) {
    if (value < 1u << 7) return 1;
    if (value < 1u << 14) return 2;
    if (value < 1u << 21) return 3;
    return kMaxSizeBytes;
}

void writeExpandableSize(uint8_t* out, size_t value) {
    const size_t last = expandableSizeBytes(value) - 1;
    out[last] = value & 0x7F;
    for (size_t i = last; i > 0; --i) {
        value >>= 7;
        out[i - 1] = static_cast<uint8_t>(0x80 | (value & 0x7F));
    }
}

std::vector<uint8_t> makeEsDescriptor(Bytes decoderSpecificInfo, ObjectType objectType,
                                      SizeFields sizeFields) {
    // A descriptor of this many bytes behind its size field, with that field and its tag.
    const auto withHead = [sizeFields](size_t size) {
        return base::checkedAdd(size, kTagSize + sizeFieldBytes(sizeFields, size));
    };
    const size_t infoSize = decoderSpecificInfo.size();
    const size_t configSize = base::checkedAdd(withHead(infoSize), kDecoderConfigFields);
    const size_t esSize = base::checkedAdd(withHead(configSize), kEsFields);

    base::ByteWriter writer(withHead(esSize));
    const auto head = [&writer, sizeFields](uint8_t tag, size_t size) {
        writer.u8(tag);
        writeSizeField(writer, sizeFields, size);
    };
    head(kEsDescrTag, esSize);
    writer.u16(0);  // ES_ID
    writer.u8(0);   // streamDependenceFlag, URL_Flag, OCRstreamFlag, streamPriority

    head(kDecoderConfigDescrTag, configSize);
    writer.u8(static_cast<uint8_t>(objectType));  // objectTypeIndication
    writer.zeros(kDecoderConfigZeros);  // streamType, bufferSizeDB, maxBitrate, avgBitrate

    head(kDecSpecificInfoTag, infoSize);
    writer.bytes(decoderSpecificInfo);
    return writer.take();
}

}  // namespace android::csd
