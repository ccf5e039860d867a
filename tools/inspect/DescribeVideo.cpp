#include <algorithm>
#include <array>
#include <string_view>

#include "inspect/Describe.h"

namespace inspect {
namespace {

struct ProfileName {
    uint8_t idc;
    std::string_view name;
};

// ITU-T H.264 Annex A.2, G.10.1 and H.10.1
constexpr auto kAvcProfiles = std::to_array<ProfileName>({
        {44, "CAVLC 4:4:4 Intra"},
        {66, "Baseline"},
        {77, "Main"},
        {83, "Scalable Baseline"},
        {86, "Scalable High"},
        {88, "Extended"},
        {100, "High"},
        {110, "High 10"},
        {118, "Multiview High"},
        {122, "High 4:2:2"},
        {128, "Stereo High"},
        {244, "High 4:4:4 Predictive"},
});

// ITU-T H.265 Annex A.3
constexpr auto kHevcProfiles = std::to_array<ProfileName>({
        {1, "Main"},
        {2, "Main 10"},
        {3, "Main Still Picture"},
        {4, "Range Extensions"},
});

std::string profileName(std::span<const ProfileName> names, uint8_t idc) {
    const auto found = std::ranges::find(names, idc, &ProfileName::idc);
    return found != names.end() ? std::string(found->name) : "profile " + std::to_string(idc);
}

std::string decimal(unsigned tenths) {
    return std::to_string(tenths / 10) + "." + std::to_string(tenths % 10);
}

// ITU-T H.264 A.3.1: level 1b is level_idc 9, or 11 with constraint_set3_flag in old profiles.
std::string avcLevel(uint8_t profileIdc, uint8_t constraints, uint8_t levelIdc) {
    const bool isOld = profileIdc == 66 || profileIdc == 77 || profileIdc == 88;
    if (levelIdc == 9 || (isOld && levelIdc == 11 && (constraints & 0x10) != 0)) return "1b";
    return decimal(levelIdc);
}

// Steps over the parameter sets, each behind a 16-bit length.
void skipSets(ByteCursor& cursor, unsigned count) {
    for (unsigned i = 0; i < count; i++) cursor.skip(cursor.be16());
}

}  // namespace

std::string describeAvcRecord(Bytes data) {
    ByteCursor cursor(data);
    const uint8_t version = cursor.u8();      // configurationVersion
    const uint8_t profile = cursor.u8();      // AVCProfileIndication
    const uint8_t constraints = cursor.u8();  // profile_compatibility
    const uint8_t level = cursor.u8();        // AVCLevelIndication
    const unsigned lengthSize = (cursor.u8() & 3u) + 1;
    const unsigned spsCount = cursor.u8() & 0x1Fu;
    skipSets(cursor, spsCount);
    const unsigned ppsCount = cursor.u8();
    skipSets(cursor, ppsCount);
    if (version != 1 || !cursor.ok()) return "not a complete AVC configuration record";
    return "AVC " + profileName(kAvcProfiles, profile) + " " +
           avcLevel(profile, constraints, level) + ", " + std::to_string(spsCount) + " SPS, " +
           std::to_string(ppsCount) + " PPS, " + std::to_string(lengthSize) + "-byte lengths";
}

std::string describeHevcRecord(Bytes data) {
    constexpr size_t kCompatibilityAndConstraintBytes = 10;
    constexpr size_t kFromSegmentationToFrameRate = 8;
    ByteCursor cursor(data);
    const uint8_t version = cursor.u8();          // configurationVersion
    const uint8_t profile = cursor.u8() & 0x1Fu;  // general_profile_idc
    cursor.skip(kCompatibilityAndConstraintBytes);
    const uint8_t level = cursor.u8();  // general_level_idc, in thirtieths
    cursor.skip(kFromSegmentationToFrameRate);
    const unsigned lengthSize = (cursor.u8() & 3u) + 1;
    const unsigned arrays = cursor.u8();  // numOfArrays
    unsigned units = 0;
    for (unsigned i = 0; i < arrays && cursor.ok(); i++) {
        cursor.u8();  // array_completeness, NAL_unit_type
        const unsigned count = cursor.be16();
        units += count;
        for (unsigned k = 0; k < count && cursor.ok(); k++) cursor.skip(cursor.be16());
    }
    if (version != 1 || !cursor.ok()) return "not a complete HEVC configuration record";
    return "HEVC " + profileName(kHevcProfiles, profile) + " " + decimal(level / 3u) + ", " +
           std::to_string(units) + " parameter sets, " + std::to_string(lengthSize) +
           "-byte lengths";
}

}  // namespace inspect
