// Numbers of the standards in words.

#pragma once

#include <cstdint>
#include <span>
#include <string>

namespace inspect {

// Of the numbers from 0 on; empty ones are not there.
using NameList = std::span<const char* const>;
std::string nameOf(NameList names, uint64_t number, const std::string& otherwise);

std::string tenthsText(uint64_t tenths);  // "1.3"
std::string hexText(uint64_t flags);      // "0x1f"

// Of a number that is stored without its sign, when that is negative.
template <typename Signed>
std::string signedText(uint64_t value) {
    const auto number = static_cast<Signed>(value);
    return number < 0 ? std::to_string(number) : "";
}

std::string avcProfileName(uint64_t profileIdc);  // ITU-T H.264 Annex A.2
// ITU-T H.264 A.3.1: level 1b is level_idc 9, or 11 with constraint_set3_flag in old profiles.
std::string avcLevelText(uint64_t profileIdc, uint64_t constraints, uint64_t levelIdc);

std::string hevcProfileName(uint64_t profileIdc);  // ITU-T H.265 Annex A.3
std::string hevcLevelText(uint64_t levelIdc);      // ITU-T H.265 A.4.1: thirty times the level
std::string hevcUnitName(uint64_t unitType);  // ITU-T H.265 Table 7-1, of parameter sets and SEI

std::string chromaText(uint64_t chromaFormatIdc);       // ITU-T H.264 Table 6-1: "4:2:0"
std::string primariesText(uint64_t colourPrimaries);    // ITU-T H.273 8.1: "bt709"
std::string transferText(uint64_t characteristics);     // ITU-T H.273 8.2
std::string matrixText(uint64_t matrixCoefficients);    // ITU-T H.273 8.3
std::string luminanceText(uint64_t tenThousandths);     // ITU-T H.265 D.3.28: "1000 cd/m2"
std::string sizeText(uint64_t width, uint64_t height);  // "1920x1080"

std::string lengthsText(uint64_t lengthSizeMinusOne);  // of units in samples: "4-byte lengths"

std::string visualProfileName(uint64_t indication);  // ISO/IEC 14496-2 Table G.1
// ISO/IEC 14496-2 Table 6-3; in MPEG-1 and 2, ITU-T H.262 Table 6-1.
std::string visualStartCodeName(uint64_t code);
std::string mpeg2StartCodeName(uint64_t code);

std::string channelText(uint64_t channels);      // "2 channels"
std::string speakersText(uint64_t channelMask);  // dwChannelMask of WAVEFORMATEXTENSIBLE

}  // namespace inspect
