// The numbers of profiles and levels: the platform's, the standards' and libavcodec's.

#pragma once

#include <array>

#include "inspect/devices/Profiles.h"
#include "inspect/media/LibAv.h"

namespace inspect {

// Profiles that libavcodec does not tell from another, or not at all.
inline constexpr int kOnlyListed = -1000;
inline constexpr int kConstrainedHigh = -1001;
inline constexpr int kAv1Main10 = -1002;

// The same of levels.
inline constexpr int kAvcLevel1b = 9;
inline constexpr int kMpeg4Level4a = 14;

// clang-format off
inline constexpr auto kAvcProfiles = std::to_array<ProfileRow>({
    {0x1,     "Baseline",             FF_PROFILE_H264_BASELINE,             8,  {0x10000}},
    {0x2,     "Main",                 FF_PROFILE_H264_MAIN,                 8,  {0x10000}},
    {0x4,     "Extended",             FF_PROFILE_H264_EXTENDED,             8},
    {0x8,     "High",                 FF_PROFILE_H264_HIGH,                 8,  {0x10000, 0x80000}},
    {0x10,    "High 10",              FF_PROFILE_H264_HIGH_10,              10},
    {0x10,    "High 10",              FF_PROFILE_H264_HIGH_10_INTRA,        10},
    {0x20,    "High 4:2:2",           FF_PROFILE_H264_HIGH_422,             10},
    {0x20,    "High 4:2:2",           FF_PROFILE_H264_HIGH_422_INTRA,       10},
    {0x40,    "High 4:4:4",           FF_PROFILE_H264_HIGH_444_PREDICTIVE,  14},
    {0x10000, "Constrained Baseline", FF_PROFILE_H264_CONSTRAINED_BASELINE, 8},
    {0x80000, "Constrained High",     kConstrainedHigh,                     8},
});
// ITU-T H.264 table A-1, in macroblocks.
inline constexpr auto kAvcLevels = std::to_array<LevelRow>({
    {0x1,     "1.0", 10,          99,     1485},
    {0x2,     "1b",  kAvcLevel1b, 99,     1485},
    {0x4,     "1.1", 11,          396,    3000},
    {0x8,     "1.2", 12,          396,    6000},
    {0x10,    "1.3", 13,          396,    11880},
    {0x20,    "2.0", 20,          396,    11880},
    {0x40,    "2.1", 21,          792,    19800},
    {0x80,    "2.2", 22,          1620,   20250},
    {0x100,   "3.0", 30,          1620,   40500},
    {0x200,   "3.1", 31,          3600,   108000},
    {0x400,   "3.2", 32,          5120,   216000},
    {0x800,   "4.0", 40,          8192,   245760},
    {0x1000,  "4.1", 41,          8192,   245760},
    {0x2000,  "4.2", 42,          8704,   522240},
    {0x4000,  "5.0", 50,          22080,  589824},
    {0x8000,  "5.1", 51,          36864,  983040},
    {0x10000, "5.2", 52,          36864,  2073600},
    {0x20000, "6.0", 60,          139264, 4177920},
    {0x40000, "6.1", 61,          139264, 8355840},
    {0x80000, "6.2", 62,          139264, 16711680},
});

inline constexpr auto kHevcProfiles = std::to_array<ProfileRow>({
    {0x1,    "Main",               FF_PROFILE_HEVC_MAIN,               8,  {0x4}},
    {0x2,    "Main 10",            FF_PROFILE_HEVC_MAIN_10,            10, {0x1, 0x4}},
    {0x4,    "Main Still Picture", FF_PROFILE_HEVC_MAIN_STILL_PICTURE, 8},
    {0x1000, "Main 10 HDR10",      kOnlyListed,                        10},
    {0x2000, "Main 10 HDR10+",     kOnlyListed,                        10},
});
// ITU-T H.265 tables A.8 and A.9, in luma samples; the Main tier.
inline constexpr auto kHevcLevels = std::to_array<LevelRow>({
    {0x1,       "1.0", 30,  36864,   552960,     128'000},
    {0x4,       "2.0", 60,  122880,  3686400,    1500'000},
    {0x10,      "2.1", 63,  245760,  7372800,    3000'000},
    {0x40,      "3.0", 90,  552960,  16588800,   6000'000},
    {0x100,     "3.1", 93,  983040,  33177600,   10000'000},
    {0x400,     "4.0", 120, 2228224, 66846720,   12000'000},
    {0x1000,    "4.1", 123, 2228224, 133693440,  20000'000},
    {0x4000,    "5.0", 150, 8912896, 267386880,  25000'000},
    {0x10000,   "5.1", 153, 8912896, 534773760,  40000'000},
    {0x40000,   "5.2", 156, 8912896, 1069547520, 60000'000},
    {0x100000,  "6.0", 180},
    {0x400000,  "6.1", 183},
    {0x1000000, "6.2", 186},
});

inline constexpr auto kMpeg4Profiles = std::to_array<ProfileRow>({
    {0x1,    "Simple",             FF_PROFILE_MPEG4_SIMPLE,             8},
    {0x4,    "Core",               FF_PROFILE_MPEG4_CORE,               8},
    {0x8,    "Main",               FF_PROFILE_MPEG4_MAIN,               8},
    {0x400,  "Advanced Real Time", FF_PROFILE_MPEG4_ADVANCED_REAL_TIME, 8},
    {0x1000, "Advanced Coding",    FF_PROFILE_MPEG4_ADVANCED_CODING,    8},
    {0x8000, "Advanced Simple",    FF_PROFILE_MPEG4_ADVANCED_SIMPLE,    8, {0x1}},
});
// ISO/IEC 14496-2 Table G.1: the lower four bits; N.1, in macroblocks: of the Simple profile
inline constexpr auto kMpeg4Levels = std::to_array<LevelRow>({
    {0x1,   "0",  0},
    {0x2,   "0b", 9},
    {0x4,   "1",  1, 99, 1485},
    {0x8,   "2",  2},
    {0x10,  "3",  3, 396, 11880},
    {0x18,  "3b", 7},
    {0x20,  "4",  4},
    {0x40,  "4a", kMpeg4Level4a},
    {0x80,  "5",  5, 1620, 40500},
    {0x100, "6",  6},
});

inline constexpr auto kH263Profiles = std::to_array<ProfileRow>({
    {0x1, "Baseline", 0, 8},
    {0x8, "ISWV2",    3, 8},
});
inline constexpr auto kH263Levels = std::to_array<LevelRow>({
    {0x1,  "10", 10}, {0x2,  "20", 20}, {0x4,  "30", 30}, {0x8,  "40", 40},
    {0x10, "45", 45}, {0x20, "50", 50}, {0x40, "60", 60}, {0x80, "70", 70},
});

inline constexpr auto kMpeg2Profiles = std::to_array<ProfileRow>({
    {0, "Simple",  FF_PROFILE_MPEG2_SIMPLE,       8},
    {1, "Main",    FF_PROFILE_MPEG2_MAIN,         8},
    {2, "4:2:2",   FF_PROFILE_MPEG2_422,          8},
    {3, "SNR",     FF_PROFILE_MPEG2_SNR_SCALABLE, 8},
    {4, "Spatial", FF_PROFILE_MPEG2_SS,           8},
    {5, "High",    FF_PROFILE_MPEG2_HIGH,         8},
});
// ITU-T H.262 Tables 8-3 and 8-4, where 4:2:2 has numbers of its own.
inline constexpr auto kMpeg2Levels = std::to_array<LevelRow>({
    {0, "Low", 10}, {1, "Main", 8}, {1, "Main", 5}, {2, "High 1440", 6}, {3, "High", 4},
    {3, "High", 2},
});

inline constexpr auto kVp9Profiles = std::to_array<ProfileRow>({
    {0x1,    "Profile 0",     FF_PROFILE_VP9_0, 8},
    {0x2,    "Profile 1",     FF_PROFILE_VP9_1, 8},
    {0x4,    "Profile 2",     FF_PROFILE_VP9_2, 12},
    {0x8,    "Profile 3",     FF_PROFILE_VP9_3, 12},
    {0x1000, "Profile 2 HDR", kOnlyListed,      12},
    {0x2000, "Profile 3 HDR", kOnlyListed,      12},
});
// VP9 Annex A, in luma samples.
inline constexpr auto kVp9Levels = std::to_array<LevelRow>({
    {0x1,    "1.0", 10, 36864,   829440},
    {0x2,    "1.1", 11, 73728,   2764800},
    {0x4,    "2.0", 20, 122880,  4608000},
    {0x8,    "2.1", 21, 245760,  9216000},
    {0x10,   "3.0", 30, 552960,  20736000},
    {0x20,   "3.1", 31, 983040,  36864000},
    {0x40,   "4.0", 40, 2228224, 83558400},
    {0x80,   "4.1", 41, 2228224, 160432128},
    {0x100,  "5.0", 50, 8912896, 311951360},
    {0x200,  "5.1", 51, 8912896, 588251136},
    {0x400,  "5.2", 52, 8912896, 1176502272},
    {0x800,  "6.0", 60},
    {0x1000, "6.1", 61},
    {0x2000, "6.2", 62},
});

inline constexpr auto kAv1Profiles = std::to_array<ProfileRow>({
    {0x1,    "Main 8 bits",  FF_PROFILE_AV1_MAIN, 8},
    {0x2,    "Main 10 bits", kAv1Main10,          10},
    {0x1000, "Main HDR10",   kOnlyListed,         10},
    {0x2000, "Main HDR10+",  kOnlyListed,         10},
});
// AV1 A.3: seq_level_idx
inline constexpr auto kAv1Levels = std::to_array<LevelRow>({
    {0x1,      "2.0", 0},  {0x2,      "2.1", 1},  {0x4,      "2.2", 2},  {0x8,      "2.3", 3},
    {0x10,     "3.0", 4},  {0x20,     "3.1", 5},  {0x40,     "3.2", 6},  {0x80,     "3.3", 7},
    {0x100,    "4.0", 8},  {0x200,    "4.1", 9},  {0x400,    "4.2", 10}, {0x800,    "4.3", 11},
    {0x1000,   "5.0", 12}, {0x2000,   "5.1", 13}, {0x4000,   "5.2", 14}, {0x8000,   "5.3", 15},
    {0x10000,  "6.0", 16}, {0x20000,  "6.1", 17}, {0x40000,  "6.2", 18}, {0x80000,  "6.3", 19},
    {0x100000, "7.0", 20}, {0x200000, "7.1", 21}, {0x400000, "7.2", 22}, {0x800000, "7.3", 23},
});

// ISO/IEC 14496-3 Table 1.17, one more than libavcodec's
inline constexpr auto kAacProfiles = std::to_array<ProfileRow>({
    {1,  "Main",        FF_PROFILE_AAC_MAIN,      0},
    {2,  "LC",          FF_PROFILE_AAC_LOW,       0},
    {2,  "LC",          FF_PROFILE_MPEG2_AAC_LOW, 0},
    {3,  "SSR",         FF_PROFILE_AAC_SSR,       0},
    {4,  "LTP",         FF_PROFILE_AAC_LTP,       0},
    {5,  "HE",          FF_PROFILE_AAC_HE,        0, {2}},
    {5,  "HE",          FF_PROFILE_MPEG2_AAC_HE,  0},
    {6,  "Scalable",    5,                        0},
    {17, "ER LC",       16,                       0},
    {20, "ER Scalable", 19,                       0},
    {23, "LD",          FF_PROFILE_AAC_LD,        0},
    {29, "HE v2",       FF_PROFILE_AAC_HE_V2,     0, {5, 2}},
    {39, "ELD",         FF_PROFILE_AAC_ELD,       0},
    {42, "xHE",         41,                       0},
});
// clang-format on

}  // namespace inspect
