// Elementary stream descriptors (ISO/IEC 14496-1 7.2.6.5, box esds) around decoder-specific data.
// None of them carries an SLConfigDescriptor, and streamType stays zero: readers on the device look
// at the object type and the decoder-specific data only.

#pragma once

#include <array>
#include <vector>

#include "Helper/base/ByteReader.h"

namespace android::csd {

using base::Bytes;

// objectTypeIndication, ISO/IEC 14496-1 Table 5
enum class ObjectType : uint8_t {
    kVisual14496_2 = 0x20,
    kAudio14496_3 = 0x40,
};

// The expandable size field (ISO/IEC 14496-1 8.3.3): how many bytes it takes for a value, 1 to 4,
// and the field itself. Values of 2^28 and above lose their top bits.
size_t expandableSizeBytes(size_t value);
void writeExpandableSize(uint8_t* out, size_t value);

// The descriptor with expandable sizes throughout.
std::vector<uint8_t> makeEsDescriptor(Bytes decoderSpecificInfo, ObjectType objectType);

// The MPEG-4 Visual descriptor with one-byte sizes whatever the data: each keeps its low 8 bits.
// Writes data.size() + kFixedEsDescriptorOverhead bytes.
inline constexpr size_t kFixedEsDescriptorOverhead = 22;
void writeFixedEsDescriptor(Bytes decoderSpecificInfo, uint8_t* out);

// The descriptor of an AAC stream for the two bytes of its AudioSpecificConfig (ISO/IEC 14496-3
// 1.6.2.1), which are taken as they are.
inline constexpr size_t kAacConfigSize = 2;
inline constexpr size_t kAacEsDescriptorSize = 24;
std::array<uint8_t, kAacEsDescriptorSize> makeAacEsDescriptor(
        std::span<const uint8_t, kAacConfigSize> audioSpecificConfig);

}  // namespace android::csd
