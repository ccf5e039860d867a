#include <array>
#include <map>

#include "inspect/records/Describe.h"
#include "inspect/records/StandardNames.h"
#include "inspect/records/StartCodes.h"

namespace inspect {
namespace {

// Steps over the parameter sets, each behind a 16-bit length.
void skipSets(ByteCursor& cursor, unsigned count) {
    for (unsigned i = 0; i < count; i++) cursor.skip(cursor.be16());
}

// "VPS+2 SPS+PPS"
std::string unitsText(const std::map<unsigned, unsigned>& countOfType) {
    std::string text;
    for (const auto& [type, count] : countOfType) {
        text += text.empty() ? "" : "+";
        if (count > 1) text += std::to_string(count) + " ";
        text += hevcUnitName(type);
    }
    return text.empty() ? "no parameter sets" : text;
}

std::string sizeText(uint64_t width, uint64_t height) {
    return std::to_string(width) + "x" + std::to_string(height);
}

std::string sequenceHeaderText(Bytes header) {
    return "sequence header of " + std::to_string(header.size()) + " bytes: " + shortHex(header);
}

std::string profileByteText(uint8_t profile) {
    const char* words = profile == 0 ? " (simple)" : profile == 1 ? " (main)" : "";
    return "profile byte " + std::to_string(profile) + words;
}

// The three headers: each behind its 16-bit size, or all behind Xiph lacing.
std::array<Bytes, 3> splitTheoraHeaders(Bytes data) {
    constexpr uint8_t kThreePackets = 2;
    constexpr uint8_t kContinued = 255;
    ByteCursor cursor(data);
    std::array<Bytes, 3> headers;
    if (data.empty() || data[0] != kThreePackets) {
        for (Bytes& header : headers) header = cursor.take(cursor.be16());
        return headers;
    }
    cursor.u8();
    std::array<size_t, 2> sizes{};
    for (size_t& size : sizes) {
        uint8_t part = kContinued;
        while (part == kContinued) size += part = cursor.u8();
    }
    headers[0] = cursor.take(sizes[0]);
    headers[1] = cursor.take(sizes[1]);
    headers[2] = cursor.take(cursor.remaining());
    return headers;
}

// What the SPS itself says where the record says something else: its bytes are those of the SPS as
// they stand, in which emulation prevention bytes move the level.
std::string otherLevel(Bytes sps, uint8_t level) {
    constexpr size_t kLevelOffset = 14;  // general_level_idc, in the payload of the unit
    const Payload payload = payloadOf(sps, kLevelOffset + 1);
    if (payload.bytes.size() <= kLevelOffset || payload.bytes[kLevelOffset] == level) return {};
    const uint8_t own = payload.bytes[kLevelOffset];
    return "; its SPS says level " + hevcLevelText(own) + " (raw " + std::to_string(own) + ")";
}

}  // namespace

std::string describeAvcRecord(Bytes data) {
    ByteCursor cursor(data);
    const uint8_t version = cursor.u8();      // configurationVersion
    const uint8_t profile = cursor.u8();      // AVCProfileIndication
    const uint8_t constraints = cursor.u8();  // profile_compatibility
    const uint8_t level = cursor.u8();        // AVCLevelIndication
    const unsigned lengthSizeMinusOne = cursor.u8() & 3u;
    const unsigned spsCount = cursor.u8() & 0x1Fu;
    skipSets(cursor, spsCount);
    const unsigned ppsCount = cursor.u8();
    skipSets(cursor, ppsCount);
    if (version != 1 || !cursor.ok()) return "not a complete AVC configuration record";
    return "AVC " + avcProfileName(profile) + " " + avcLevelText(profile, constraints, level) +
           ", " + std::to_string(spsCount) + " SPS, " + std::to_string(ppsCount) + " PPS, " +
           lengthsText(lengthSizeMinusOne);
}

std::string describeHevcRecord(Bytes data) {
    constexpr size_t kCompatibilityAndConstraintBytes = 10;
    constexpr size_t kFromSegmentationToFrameRate = 8;
    ByteCursor cursor(data);
    const uint8_t version = cursor.u8();          // configurationVersion
    const uint8_t profile = cursor.u8() & 0x1Fu;  // general_profile_idc
    cursor.skip(kCompatibilityAndConstraintBytes);
    const uint8_t level = cursor.u8();  // general_level_idc
    cursor.skip(kFromSegmentationToFrameRate);
    const unsigned lengthSizeMinusOne = cursor.u8() & 3u;
    const unsigned arrays = cursor.u8();  // numOfArrays
    constexpr unsigned kSps = 33;
    std::map<unsigned, unsigned> countOfType;
    std::string remark;
    for (unsigned i = 0; i < arrays && cursor.ok(); i++) {
        const unsigned type = cursor.u8() & 0x3Fu;  // NAL_unit_type
        const unsigned count = cursor.be16();
        if (count > 0) countOfType[type] += count;
        for (unsigned k = 0; k < count && cursor.ok(); k++) {
            const Bytes unit = cursor.take(cursor.be16());
            if (type == kSps && remark.empty()) remark = otherLevel(unit, level);
        }
    }
    if (version != 1 || !cursor.ok()) return "not a complete HEVC configuration record";
    return "HEVC " + hevcProfileName(profile) + ", level " + hevcLevelText(level) + " (raw " +
           std::to_string(level) + "), " + unitsText(countOfType) + ", " +
           lengthsText(lengthSizeMinusOne) + remark;
}

std::string describeVc1Header(Bytes data) {
    constexpr size_t kSizeAndProfile = 4 + 4 + 1;
    if (data.size() < kSizeAndProfile) return "not a complete sequence header";
    const Bytes header = data.first(data.size() - kSizeAndProfile);
    ByteCursor cursor(data.subspan(header.size()));
    const uint32_t width = cursor.le32();
    const uint32_t height = cursor.le32();
    return sequenceHeaderText(header) + ", " + sizeText(width, height) + ", " +
           profileByteText(cursor.u8());
}

std::string describeWmv7Header(Bytes data) {
    if (data.empty()) return "not a complete sequence header";
    return sequenceHeaderText(data.first(data.size() - 1)) + ", " + profileByteText(data.back());
}

std::string describeTheoraHeaders(Bytes data) {
    constexpr uint8_t kIdentification = 0x80;
    const auto headers = splitTheoraHeaders(data);
    ByteCursor cursor(headers[0]);
    const bool isIdentification = cursor.u8() == kIdentification;
    cursor.skip(6);  // "theora"
    const Bytes version = cursor.take(3);
    cursor.skip(4);  // size in macroblocks
    const unsigned width = cursor.be24();
    const unsigned height = cursor.be24();
    cursor.skip(2);  // offset of the picture
    const uint32_t rate = cursor.be32();
    const uint32_t scale = cursor.be32();
    if (!isIdentification || !cursor.ok()) return "no Theora identification header";
    return "Theora " + std::to_string(version[0]) + "." + std::to_string(version[1]) + "." +
           std::to_string(version[2]) + ", " + sizeText(width, height) + ", " +
           std::to_string(rate) + "/" + std::to_string(scale) + " fps, headers of " +
           std::to_string(headers[0].size()) + ", " + std::to_string(headers[1].size()) + " and " +
           std::to_string(headers[2].size()) + " bytes";
}

}  // namespace inspect
