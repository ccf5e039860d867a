// Codec data in words.

#pragma once

#include <string>

#include "inspect/base/Bytes.h"

namespace inspect {

// One kind of codec data each. The bytes may hold anything; what cannot be read is said to be so.
std::string describeAvcRecord(Bytes data);          // ISO/IEC 14496-15 5.3.3.1.2
std::string describeHevcRecord(Bytes data);         // ISO/IEC 14496-15 8.3.3.1.2
std::string describeVc1Header(Bytes data);          // a sequence header, picture size, profile byte
std::string describeWmv7Header(Bytes data);         // the same without a picture size
std::string describeTheoraHeaders(Bytes data);      // Theora 6
std::string describeEsDescriptor(Bytes data);       // ISO/IEC 14496-1 7.2.6.5
std::string describeMpeg2EsDescriptor(Bytes data);  // the same around MPEG-1 and 2 video
std::string describeAudioConfig(Bytes data);        // ISO/IEC 14496-3 1.6.2.1
std::string describeFlacStream(Bytes data);         // RFC 9639 8.2
std::string describeOpusHead(Bytes data);           // RFC 7845 5.1
std::string describeVorbisHeader(Bytes data);       // Vorbis I 4.2.2
std::string describeVorbisSetup(Bytes data);        // Vorbis I 4.2.4
std::string describeAdpcm(Bytes data);              // ADPCMWAVEFORMAT, IMAADPCMWAVEFORMAT
std::string describeCodecDelay(Bytes data);   // 64 bits of nanoseconds in the machine's byte order
std::string describeSeekPreRoll(Bytes data);  // the same
std::string describeNativeBitRate(Bytes data);  // 32 bits in the machine's byte order

}  // namespace inspect
