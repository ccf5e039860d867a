// Elementary stream descriptors (ISO/IEC 14496-1 7.2.6.5, box esds) around decoder-specific data.
// There is no SLConfigDescriptor, and streamType stays zero, which is meant.

#pragma once

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

// How the sizes in a descriptor are written.
enum class SizeFields {
    kExpandable,
    kOneByte,  // whatever the size: its low 8 bits
};

// The descriptor. With sizes of one byte it has 22 bytes more than the decoder-specific data.
std::vector<uint8_t> makeEsDescriptor(Bytes decoderSpecificInfo, ObjectType objectType,
                                      SizeFields sizeFields = SizeFields::kExpandable);

}  // namespace android::csd
