// Numbers of the standards in words.

#pragma once

#include <cstdint>
#include <string>

namespace inspect {

std::string avcProfileName(unsigned profileIdc);  // ITU-T H.264 Annex A.2
// ITU-T H.264 A.3.1: level 1b is level_idc 9, or 11 with constraint_set3_flag in old profiles.
std::string avcLevelText(unsigned profileIdc, unsigned constraints, unsigned levelIdc);

std::string hevcProfileName(unsigned profileIdc);  // ITU-T H.265 Annex A.3
std::string hevcLevelText(unsigned levelIdc);      // ITU-T H.265 A.4.1: thirty times the level
std::string hevcUnitName(unsigned unitType);  // ITU-T H.265 Table 7-1, of parameter sets and SEI

std::string chromaText(unsigned chromaFormatIdc);       // ITU-T H.264 Table 6-1: "4:2:0"
std::string primariesText(unsigned colourPrimaries);    // ITU-T H.273 8.1: "bt709"
std::string transferText(unsigned characteristics);     // ITU-T H.273 8.2
std::string matrixText(unsigned matrixCoefficients);    // ITU-T H.273 8.3
std::string luminanceText(unsigned tenThousandths);     // ITU-T H.265 D.3.28: "1000 cd/m2"
std::string sizeText(uint64_t width, uint64_t height);  // "1920x1080"

std::string lengthsText(unsigned lengthSizeMinusOne);  // of units in samples: "4-byte lengths"

std::string visualProfileName(unsigned indication);  // ISO/IEC 14496-2 Table G.1
// ISO/IEC 14496-2 Table 6-3; in MPEG-1 and 2, ITU-T H.262 Table 6-1.
std::string visualStartCodeName(unsigned code);
std::string mpeg2StartCodeName(unsigned code);

std::string aacObjectTypeName(unsigned type);  // ISO/IEC 14496-3 Table 1.17
uint32_t aacSampleRate(unsigned index);  // ISO/IEC 14496-3 Table 1.18; 0 = reserved or explicit
std::string aacSampleRateText(unsigned index);
std::string aacChannelsText(unsigned configuration);  // ISO/IEC 14496-3 Table 1.19

std::string channelText(uint64_t channels);      // "2 channels"
std::string speakersText(uint32_t channelMask);  // dwChannelMask of WAVEFORMATEXTENSIBLE

}  // namespace inspect
