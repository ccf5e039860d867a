// AVC configuration records for streams of x264, judged by FFmpeg: the size that it sees, and
// whether its decoder finds in the record all that it needs.

#include <gtest/gtest.h>

#include <algorithm>
#include <map>

#include "referee/AvcReferee.h"
#include "referee/Media.h"
#include "zrcodecparser/MediaExtractorHelper.h"

namespace {

using android::MediaExtractorHelper;
using android::sp;
using test::Bytes;
using test::Format;
using test::avc::Reading;
using test::avc::se;
using test::avc::Sps;
using test::avc::ue;
using test::media::Stream;

const sp<MediaExtractorHelper> helper = new MediaExtractorHelper;

constexpr uint8_t kNalSps = 7;
constexpr uint8_t kNalPps = 8;
constexpr size_t kFrames = 3;

// What x264 does not write is put into the bits of its SPS.
using Edit = std::string (*)(std::string bits, const Sps& sps);

struct Row {
    const char* name;
    const char* size;
    const char* options;  // of ffmpeg
    Edit edit = nullptr;
    bool departs = false;  // the library is meant to give another size than FFmpeg
};

void PrintTo(const Row& row, std::ostream* out) {
    *out << row.name;
}

// Scaling lists, each a present flag and delta_scale codes.
std::string lists(std::string bits, const Sps& sps, const std::string& lists) {
    return bits.replace(sps.seq_scaling_matrix_present_flag, 1, '1' + lists);
}

// x264 without B frames writes pic_order_cnt_type 2. Type 1 with delta_pic_order_always_zero_flag
// has the same slices.
std::string orderCycle(std::string bits, const Sps& sps, int32_t offset_for_non_ref_pic) {
    return bits.replace(sps.pic_order_cnt_type, ue(2).size(),
                        ue(1) + '1' + se(offset_for_non_ref_pic) + se(0) + ue(2) + se(2) + se(2));
}

std::string repeated(size_t count, char bit) {
    return std::string(count, bit);
}

// clang-format off
const Row kRows[] = {
    {"Baseline",        "320x240",   "-pix_fmt yuv420p -profile:v baseline"},
    {"Main",            "854x480",   "-pix_fmt yuv420p -profile:v main"},
    {"High",            "1920x1080", "-pix_fmt yuv420p"},
    {"Tiny",            "2x2",       "-pix_fmt yuv420p"},
    {"High10",          "176x98",    "-pix_fmt yuv420p10le"},
    {"High422",         "34x18",     "-pix_fmt yuv422p"},
    {"High422Odd",      "34x17",     "-pix_fmt yuv422p10le"},
    {"High444",         "35x17",     "-pix_fmt yuv444p"},
    {"Lossless",        "35x17",     "-pix_fmt yuv444p -qp 0"},
    {"Rgb",             "67x51",     "-pix_fmt rgb24 -c:v libx264rgb"},
    {"Gray",            "101x51",    "-pix_fmt gray"},
    {"GrayFields",      "101x54",    "-pix_fmt gray -flags +ildct"},
    {"Mbaff",           "720x484",   "-pix_fmt yuv420p -flags +ildct"},
    {"Mbaff422",        "720x486",   "-pix_fmt yuv422p -flags +ildct"},
    {"Mbaff444",        "35x50",     "-pix_fmt yuv444p -flags +ildct"},
    {"FieldCoding",     "1920x1080", "-pix_fmt yuv420p -x264-params fake-interlaced=1"},
    {"Slices",          "640x360",   "-pix_fmt yuv420p -x264-params slices=4"},
    {"AllCropEdges",    "352x288",   "-pix_fmt yuv420p -x264-params crop-rect=2,4,6,8:sps-id=5:aud=1"},
    {"PpsMatrices",     "320x180",   "-pix_fmt yuv420p -x264-params cqm=jvt"},
    {"PpsMatrices444",  "320x180",   "-pix_fmt yuv444p -x264-params cqm=jvt"},
    {"PpsCustomLists",  "98x50",     "-pix_fmt yuv420p -x264-params cqm4=6,13,13,20,20,20,28,28,28,28,32,32,32,37,37,42"},
    {"OrderCountCycle", "98x50",     "-pix_fmt yuv420p -bf 0",
     [](std::string bits, const Sps& sps) { return orderCycle(bits, sps, -1000); }},
    {"SpsNoLists",      "98x50",     "-pix_fmt yuv420p",
     [](std::string bits, const Sps& sps) { return lists(bits, sps, repeated(8, '0')); }},
    // All entries 16. +8 reads as 15, but no entry becomes 0 either way.
    {"SpsFlatList",     "98x50",     "-pix_fmt yuv420p",
     [](std::string bits, const Sps& sps) { return lists(bits, sps, '1' + se(8) + repeated(15, '1') + repeated(7, '0')); }},
    // The default list. -8 reads as 16, so the list does not end there.
    {"SpsDefaultList",  "98x50",     "-pix_fmt yuv420p",
     [](std::string bits, const Sps& sps) { return lists(bits, sps, '1' + se(-8) + repeated(7, '0')); }, true},
    // -124 reads as 248, so the list does end there. The next entry then gives seven flags of 0.
    {"SpsListCutShort", "98x50",     "-pix_fmt yuv420p",
     [](std::string bits, const Sps& sps) { return lists(bits, sps, '1' + se(-124) + se(-64) + repeated(12, '1') + se(1) + '1' + repeated(7, '0')); }, true},
    // 4:4:4 has twelve lists, of which eight are stepped over.
    {"SpsTwelveLists",  "99x51",     "-pix_fmt yuv444p",
     [](std::string bits, const Sps& sps) { return lists(bits, sps, repeated(12, '0')); }, true},
    // Profile 118 counts as one without chroma fields.
    {"MultiviewHigh",   "98x50",     "-pix_fmt yuv420p",
     [](std::string bits, const Sps&) { return bits.replace(0, 8, "01110110"); }, true},
    // Emulation prevention bytes before the size count as bits of the fields.
    {"Emulation",       "98x50",     "-pix_fmt yuv420p -bf 0",
     [](std::string bits, const Sps& sps) { return orderCycle(bits, sps, 1 << 24); }, true},
};
// clang-format on

unsigned nalType(const Bytes& unit) {
    return unit.at(0) & 0x1Fu;
}

// The row's NAL units, encoded once.
const std::vector<Bytes>& encodedUnits(const Row& row) {
    static std::map<std::string, std::vector<Bytes>> cache;
    std::vector<Bytes>& units = cache[row.name];
    if (!units.empty()) return units;
    const std::string path = test::media::encode(
            std::string("-f lavfi -i testsrc=rate=25:size=") + row.size + " -frames:v " +
                    std::to_string(kFrames) + " -c:v libx264 -preset veryfast -qp 36 -threads 1 " +
                    row.options + " -f h264",
            "encoded.h264");
    units = test::avc::units(test::media::readFile(path));
    if (row.edit == nullptr) return units;
    Bytes& sps = *std::ranges::find(units, kNalSps, nalType);
    sps = test::avc::unit(sps[0], row.edit(test::avc::bits(sps, Reading::kStandard),
                                           test::avc::readSps(sps, Reading::kStandard)));
    return units;
}

// An access unit with the 2-byte lengths that the record declares, parameter sets left out.
Bytes lengthPrefixed(const Bytes& packet) {
    Bytes data;
    for (const Bytes& unit : test::avc::units(packet)) {
        if (nalType(unit) == kNalSps || nalType(unit) == kNalPps) continue;
        EXPECT_LE(unit.size(), 0xFFFFu) << "raise -qp";
        data.push_back(static_cast<uint8_t>(unit.size() >> 8));
        data.push_back(static_cast<uint8_t>(unit.size()));
        data.insert(data.end(), unit.begin(), unit.end());
    }
    return data;
}

// A row, and the size of the start codes.
class AvcReferee : public testing::TestWithParam<std::tuple<Row, size_t>> {
protected:
    void SetUp() override {
        const std::string path = test::media::temporaryPath("stream.h264");
        test::media::writeFile(path, data);
        stream = test::media::demux(path);
        size_t size = data.size();
        ASSERT_EQ(helper->setAVCCSeqHeader(data.data(), size, nullptr, format.get()), 0);
    }

    const Row row = std::get<0>(GetParam());
    const Bytes data = test::avc::annexB(encodedUnits(row), std::get<1>(GetParam()));
    Stream stream;
    Format format;
    const test::LogCapture quiet;
};

TEST_P(AvcReferee, SizeIsThatOfFfmpeg) {
    const Bytes& sps = *std::ranges::find(encodedUnits(row), kNalSps, nalType);
    const auto standard = test::avc::readSps(sps, Reading::kStandard).size;
    ASSERT_EQ(standard, std::pair(int64_t{stream.width}, int64_t{stream.height}))
            << "the test's own reader is wrong";
    const auto size = test::avc::readSps(sps, Reading::kLibrary).size;
    ASSERT_EQ(size != standard, row.departs) << size.first << " x " << size.second;

    EXPECT_EQ(format.int32(AMEDIAFORMAT_KEY_WIDTH), size.first);
    EXPECT_EQ(format.int32(AMEDIAFORMAT_KEY_HEIGHT), size.second);

    const auto found = helper->FindNAL(data.data(), data.size(), kNalSps, nullptr);
    ASSERT_NE(found, nullptr);
    ASSERT_EQ(Bytes(found->data(), found->data() + found->size()), sps);
    int32_t width = 0;
    int32_t height = 0;
    helper->FindAVCDimensions(found, &width, &height);
    EXPECT_EQ(std::pair(int64_t{width}, int64_t{height}), size);
}

TEST_P(AvcReferee, RecordIsAllThatTheDecoderNeeds) {
    const auto direct = test::media::decode(stream.codec, {}, stream.packets);
    ASSERT_EQ(direct.size(), kFrames);
    for (auto& packet : stream.packets) packet.data = lengthPrefixed(packet.data);
    const auto record = format.buffer(AMEDIAFORMAT_KEY_CSD_AVC);
    EXPECT_EQ(test::media::decode(AV_CODEC_ID_H264, record.value(), stream.packets), direct);
}

INSTANTIATE_TEST_SUITE_P(X264, AvcReferee,
                         testing::Combine(testing::ValuesIn(kRows), testing::Values(3u, 4u)),
                         [](const auto& test) {
                             return std::get<0>(test.param).name + std::string("StartCode") +
                                    std::to_string(std::get<1>(test.param));
                         });

}  // namespace
