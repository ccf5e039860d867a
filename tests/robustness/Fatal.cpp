// Every fatal check of the library, reached by some input while the handler throws: nothing is held
// where it fires, and the objects are as good as before.

#include <gtest/gtest.h>

#include "robustness/Allocations.h"
#include "robustness/Operations.h"
#include "support/BitWriter.h"
#include "support/Tag.h"
#include "zrcodecparser/ID3.h"
#include "zrcodecparser/MediaCodecHelper.h"
#include "zrcodecparser/TrackInfo.h"
#include "zrcodecparser/WavDump.h"

namespace {

using namespace android;
using sweeps::Trial;
using sweeps::Unwatched;
using test::operator+;
using Codec = MediaCodecHelper;

template <typename Make>
auto made(Make make) {
    const Unwatched own;
    return make();
}

sp<ABuffer> bufferOf(const test::Bytes& bytes) {
    const sp<ABuffer> buffer = new ABuffer(bytes.size());
    std::copy(bytes.begin(), bytes.end(), buffer->data());
    return buffer;
}

struct Sps {
    uint32_t width = 9, height = 9;  // less one, in macroblocks; HEVC: in samples
    uint32_t left = 0, right = 0, top = 0, bottom = 0;
};

test::BitWriter& crop(test::BitWriter& bits, const Sps& sps) {
    return bits.u(1, 1).ue(sps.left).ue(sps.right).ue(sps.top).ue(sps.bottom);
}

// ITU-T H.264 7.3.2.1.1, baseline profile.
void avc(Trial& trial, const Sps& sps) {
    const auto buffer = made([&] {
        test::BitWriter bits;
        bits.u(32, 0x6742000A).ue(0).ue(0).ue(2).ue(1).u(1, 0).ue(sps.width).ue(sps.height);
        return bufferOf(crop(bits.u(1, 1).u(1, 0), sps).finish());
    });
    int32_t width = 0, height = 0;
    trial.helper->FindAVCDimensions(buffer, &width, &height);
}

// ITU-T H.265 7.3.2.2.1, with two bytes more that are not read.
void hevc(Trial& trial, const Sps& sps) {
    const auto buffer = made([&] {
        test::BitWriter bits;
        bits.u(8, 1).u(48, ~uint64_t{0} >> 16).u(48, ~uint64_t{0} >> 16).ue(0).ue(1);
        const auto fields = crop(bits.ue(sps.width).ue(sps.height), sps).finish();
        return bufferOf(test::withEmulationPrevention({0x42, 1}, fields) + test::Bytes{1, 1});
    });
    int32_t width = 0, height = 0;
    trial.helper->FindHEVCDimensions(buffer, &width, &height);
}

// On a buffer of 16 bytes that says of itself what it likes.
template <typename Convert>
auto range(size_t capacity, size_t offset, size_t length, Convert convert) {
    return [=](Trial& trial) {
        uint8_t bytes[16] = {};
        host::SampleBuffer buffer(bytes, capacity, offset, length);
        convert(*trial.helper, buffer);
    };
}
constexpr auto to16 = [](int bits) {
    return [bits](MediaExtractorHelper& h, auto& b) { h.ConvertXto16(&b, bits, false); };
};
constexpr auto to24 = [](MediaExtractorHelper& h, auto& b) {
    h.ConvertXto24packed(&b, 32, true, false);
};
constexpr auto toFloat = [](int bits) {
    return [bits](MediaExtractorHelper& h, auto& b) { h.ConvertXtoFloat(&b, bits, true); };
};
constexpr auto to32 = [](MediaExtractorHelper& h, auto& b) {
    h.ConvertXto32(&b, 24, false, false);
};
constexpr auto swap = [](MediaExtractorHelper& h, auto& b) { h.ConvertEndian(&b, 16); };

void esds(Trial& trial, size_t size) {
    trial.helper->setESDS(trial.data(), &size, trial.format.get(), true);
}

// A list that finds decoders and has no information about them.
struct BlindDevice {
    BlindDevice() {
        const Unwatched own;
        host::Device device = host::typicalPhone();
        device.codecInfoAvailable = false;
        host::setDevice(device);
    }
    ~BlindDevice() {
        const Unwatched own;
        host::setDevice(host::typicalPhone());
    }
};

struct Check {
    std::string site;  // how the check begins in the source
    std::function<void(Trial&)> reach = nullptr;
    const char* reason = nullptr;  // why it is not reached here
    int count = 1;                 // such checks
};

constexpr uint32_t kTop = 0x80000000;
constexpr auto kComponents = "reached by components that refuse calls, in Sweeps.cpp",
               kMissingKeys = "reached in ComponentTest.cpp, one key after the other",
               kTooLarge = "unreachable: wants 2^64 / 255 bytes of data",
               kNoOtherVersion = "unreachable: readTagHeader gives no other version",
               kVoidIterator = "unreachable: only by an iterator that has outlived its tag";

// clang-format off
const Check kChecks[] = {
        {R"(checkedSub(data.size(), 2 * kLengthSize))", [](Trial& t) { size_t size = 3; t.helper->setAVCCSeqHeader(t.data(), size, nullptr, t.format.get()); }},
        {R"(checkedMul(checkedAdd(sps.pic_width_in_mbs_minus1)", [](Trial& t) { avc(t, {kTop, 9}); }},
        {R"(checkedAdd(sps.pic_width_in_mbs_minus1)", [](Trial& t) { avc(t, {~0u, 9}); }},
        {R"(checkedMul(checkedAdd(sps.pic_height_in_map)", [](Trial& t) { avc(t, {9, kTop}); }},
        {R"(checkedAdd(sps.pic_height_in_map)", [](Trial& t) { avc(t, {9, ~0u}); }},
        {R"(checkedCast<int32_t>(width))", [](Trial& t) { avc(t, {kTop / 16, 9}); }},
        {R"(checkedCast<int32_t>(height))", [](Trial& t) { avc(t, {9, kTop / 16}); }},
        {R"(checkedMul(checkedAdd(sps.frame_crop_left)", [](Trial& t) { avc(t, {9, 9, kTop, 0}); }},
        {R"(checkedAdd(sps.frame_crop_left)", [](Trial& t) { avc(t, {9, 9, kTop, kTop}); }},
        {R"(checkedMul(checkedAdd(sps.frame_crop_top)", [](Trial& t) { avc(t, {9, 9, 0, 0, kTop, 0}); }},
        {R"(checkedAdd(sps.frame_crop_top)", [](Trial& t) { avc(t, {9, 9, 0, 0, kTop, kTop}); }},
        {R"(checkedSub(static_cast<uint32_t>(width))", [](Trial& t) { avc(t, {9, 9, 0, 81}); }},
        {R"(checkedSub(static_cast<uint32_t>(height))", [](Trial& t) { avc(t, {9, 9, 0, 0, 0, 81}); }},
        {R"(checkedSub(unit.size(), kHevcNalHeaderSize))", [](Trial& t) { int32_t w = 0, h = 0; t.helper->FindHEVCDimensions(made([] { return bufferOf({0x42}); }), &w, &h); }},
        {R"(checkedCast<int32_t>(sps.pic_width)", [](Trial& t) { hevc(t, {kTop, 9}); }},
        {R"(checkedCast<int32_t>(sps.pic_height)", [](Trial& t) { hevc(t, {9, kTop}); }},
        {R"(checkedAdd(sps.conf_win_left)", [](Trial& t) { hevc(t, {9, 9, kTop, kTop}); }},
        {R"(checkedAdd(sps.conf_win_top)", [](Trial& t) { hevc(t, {9, 9, 0, 0, kTop, kTop}); }},
        {R"(checkedAdd(header.size(), 9))", [](Trial& t) { TrackInfo info; info.codecType = 108; size_t size = SIZE_MAX; t.helper->setVC1SeqHeader(t.data(), &size, &info, t.format.get()); }},
        {R"(checkedAdd(size, data[i]))", nullptr, kTooLarge},
        {R"(checkedAdd(size, kTagSize)", [](Trial& t) { esds(t, SIZE_MAX); }},
        {R"(checkedAdd(withHead(infoSize))", [](Trial& t) { esds(t, SIZE_MAX - 10); }},
        {R"(checkedAdd(withHead(configSize))", [](Trial& t) { esds(t, SIZE_MAX - 24); }},
        {R"(checkedAdd(offset, csd::expandable)", [](Trial& t) { size_t at = SIZE_MAX; t.helper->storeSize(t.out(), at, 1); }},
        {R"(checkedSub(commentLength)", [](Trial& t) { t.helper->parseVorbisComment(t.format.get(), "METADATA_BLOCK_PICTURE=AAAA", 22); }},
        {R"(checkedAdd(mDataSize, size))", [](Trial& t) { WavDump dump("/dev/null"); dump.open(8000, 8, 1); dump.dump(t.data(), UINT32_MAX); }},
        {R"(ZR_CHECK(base::kAtMediaExtractorHelper, info)", [](Trial& t) { const BlindDevice device; t.helper->SupportCodecEx(104, t.format.get(), false); }},

        {R"(fatalOverflow();  // 8 bits)", [](Trial& t) { t.helper->ConvertXto16(t.data(), t.out(), 8, kTop, false); }},
        {R"(checkedMul(samples, 3);)", [](Trial& t) { t.helper->ConvertXto24packed(reinterpret_cast<const float*>(t.out()), t.out(), INT32_MAX, false); }},
        {R"(checkedMul(samples, 4);  // 32 bits)", [](Trial& t) { t.helper->ConvertXto32(t.data(), nullptr, 32, SIZE_MAX / 4 + 1, false); }},
        {R"(fatalOverflow();  // 32 bits)", [](Trial& t) { t.helper->ConvertXto32(reinterpret_cast<const uint8_t*>("\0\0\0\x80"), t.out(), 32, 1, false); }},
        {R"(checkedMul(samples, 2))", range(16, 0, SIZE_MAX, to16(8))},
        {R"(checkedSub(buffer->size(), range.offset) < bytes)", range(16, 17, 4, to16(8))},
        {R"(checkedAdd(range.offset, bytes))", range(16, SIZE_MAX - 1, 6, to16(24))},
        {R"(checkedAdd(range.offset, checkedCast<size_t>)", range(16, SIZE_MAX, 4, to24)},
        {R"(checkedCast<size_t>(checkedMul)", range(16, 0, size_t{UINT32_MAX} * 4, to24)},
        {R"(checkedMul(samples, 3))))", range(16, 0, size_t{INT32_MAX} * 4, to24)},
        {R"(checkedMul(offset, factor))", range(16, SIZE_MAX / 2, 4, to24)},
        {R"(checkedSub(buffer->size(), range.offset) < 2 * samples) return OK)", range(16, 17, 4, toFloat(32))},
        {R"(checkedAdd(range.offset, checkedMul(samples, 4)))", range(16, SIZE_MAX, 3, toFloat(24))},
        {R"(checkedMul(samples, 4)))", range(16, 0, SIZE_MAX, toFloat(24))},
        {R"(checkedMul(samples, 4);)", range(16, 0, SIZE_MAX, to32)},
        {R"(checkedAdd(range.offset, bytes);)", range(16, SIZE_MAX, 3, to32)},
        {R"(checkedSub(buffer->size(), range.offset) < 2 * samples) return ERROR)", range(16, 17, 4, swap)},
        {R"(checkedMul(samples, std::max)", [](Trial& t) { t.helper->ConvertXtoFloat(t.data(), t.out(), 24, SIZE_MAX, false); }},

        {R"(checkOk()", nullptr, kComponents, 7},
        {R"(fatalNotEqual(base::kAtMediaCodecHelper)", nullptr, kComponents},
        {R"(require()", nullptr, kMissingKeys, 4},
        {R"(fatal(base::kAtMediaCodecHelper, key.missing)", nullptr, kMissingKeys},
        {R"(fatal(base::kAtMediaCodecHelper, "CHECK((format)", [](Trial& t) { Codec::ZRCodeConvertMessageToMetaData(nullptr, t.metadata); }},

        {R"(checkedAdd(offset, off64_t{kTagHeaderSize}))", [](Trial& t) { made([&] { t.source.file = test::tag(3, 0, "x"); t.source.origin = INT64_MAX - 9; return 0; }); const ID3 id3(&t.recordSource, true, INT64_MAX - 9); }},
        {R"(ZR_CHECK(base::kAtId3, mParent)", [](Trial&) { const ID3 id3(nullptr, 0, true); const ID3::Iterator at(id3, nullptr); }},
        {R"(fatalNotEqual(base::kAtId3, "header.version)", nullptr, kNoOtherVersion},
        {R"(fatal(base::kAtId3, "CHECK(!\"should not)", nullptr, kVoidIterator},
        {R"(fatal(base::kAtId3, "CHECK(!\"Should not)", nullptr, kVoidIterator},
};
// clang-format on

TEST(Fatal, EveryCheckThrowsThrough) {
    const auto probe = std::ranges::find(sweeps::operations(),
                                         std::string("MediaExtractorHelper::setTrackMeta audio"),
                                         &sweeps::Operation::name);
    const std::string input(64, 'x');
    Trial truth(input);
    truth.perform(*probe);
    for (const Check& check : kChecks) {
        if (check.reach == nullptr) continue;
        {
            Trial trial(input);
            const std::string text = test::fatalText([&] {
                const Unwatched former;
                sweeps::watched = true;
                check.reach(trial);
            });
            EXPECT_TRUE(text.find("CHECK") != text.npos || text.find("overflow") != text.npos)
                    << check.site << ": " << text;
            trial.perform(*probe);
            EXPECT_EQ(trial.notes + trial.log, truth.notes + truth.log) << check.site;
            EXPECT_EQ(trial.format.text(), truth.format.text()) << check.site;
        }
        EXPECT_EQ(sweeps::releaseLost(), 0u) << check.site;
    }
}

}  // namespace
