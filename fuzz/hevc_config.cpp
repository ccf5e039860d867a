// Input: the codec data of an H.265 track, an Annex B stream; also taken for an SPS.
//
// Aims at Helper/MediaExtractorHelper/HevcCodecData, Helper/csd/HevcConfig, Helper/csd/HevcSps.

#include "HevcSize.h"
#include "platform/MetaData.h"
#include "zrcodecparser/MediaCodecHelper.h"

using android::ABuffer;
using android::MetaData;
using android::sp;
using fuzz::Bytes;
using fuzz::Format;
using fuzz::helper;
using fuzz::Size;
using fuzz::sizeOf;

namespace {

using Data = std::vector<uint8_t>;

void checkDimensions(Bytes sps) {
    const sp<ABuffer> buffer = new ABuffer(sps.size());
    std::ranges::copy(sps, buffer->data());
    int32_t width = 0, height = 0;
    const bool fatal =
            fuzz::endsFatally([&] { helper->FindHEVCDimensions(buffer, &width, &height); });
    const auto expected = sizeOf(sps);
    REQUIRE(fatal == !expected && width >= 0 && height >= 0);
    const Size found{static_cast<uint64_t>(width), static_cast<uint64_t>(height)};
    REQUIRE(fatal || found == *expected);
}

void append(Data& out, Bytes bytes) {
    out.insert(out.end(), bytes.begin(), bytes.end());
}

// The units of the input, each behind a start code, are what the record brings back.
void checkRoundTrip(Bytes record, const Data& stream) {
    const sp<MetaData> meta = new MetaData;
    const auto status = android::MediaCodecHelper::parseHEVCCodecSpecificData(meta, record.data(),
                                                                              record.size());
    REQUIRE(status == (stream.size() <= 1024 ? 0 : -1007));
    uint32_t type = 0;
    const void* data = nullptr;
    size_t size = 0;
    REQUIRE(meta->findData(0x68637364, &type, &data, &size) == (status == 0));
    if (status == 0) REQUIRE(fuzz::same({static_cast<const uint8_t*>(data), size}, stream));
}

void checkRecord(Bytes record, Bytes vps, Bytes sps, Bytes pps, bool hasVps) {
    Data expected{1}, stream;
    for (size_t i = 3; i < 15; ++i) expected.push_back(i < sps.size() ? sps[i] : uint8_t{0});
    append(expected, Data{0xf0, 0, 0xfc, 0xfd, 0xf8, 0xf8, 0, 0, 3});
    expected.push_back(hasVps ? 3 : 2);
    uint8_t type = 32;
    for (const Bytes unit : {vps, sps, pps}) {
        const uint8_t head = type++;
        if (head == 32 && !hasVps) continue;
        append(expected, Data{head, 0, 1, static_cast<uint8_t>(unit.size() >> 8),
                              static_cast<uint8_t>(unit.size())});
        append(expected, unit);
        append(stream, Data{0, 0, 0, 1});
        append(stream, unit);
    }
    REQUIRE(fuzz::same(record, expected));
    checkRoundTrip(record, stream);
}

Bytes bytesOf(const sp<ABuffer>& unit) {
    return unit == nullptr ? Bytes() : Bytes(unit->data(), unit->size());
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    const Bytes input(data, size);
    const Format format;
    int32_t status = 1;
    const bool fatal = fuzz::endsFatally(
            [&] { status = helper->MakeHEVCCodecSpecificData(data, size, format.get()); });

    const auto vps = helper->FindHEVCNAL(data, size, 32, nullptr);
    const auto sps = helper->FindHEVCNAL(data, size, 33, nullptr);
    const auto pps = helper->FindHEVCNAL(data, size, 34, nullptr);
    const auto dimensions = sps == nullptr ? Size() : sizeOf(bytesOf(sps));
    REQUIRE(fatal == !dimensions);
    if (fatal) {
        REQUIRE(format.keys().empty());
    } else if (sps == nullptr || pps == nullptr) {
        REQUIRE(status == -1);
        REQUIRE(format.keys() == (sps == nullptr && size > 0 ? "csd-hevc " : ""));
        if (sps == nullptr && size > 0) REQUIRE(fuzz::same(format.buffer("csd-hevc"), input));
    } else {
        REQUIRE(status == 0 && format.keys() == "mime csd-hevc width height ");
        REQUIRE(format.string("mime") == "video/hevc");
        REQUIRE(static_cast<uint64_t>(format.int32("width")) == dimensions->width);
        REQUIRE(static_cast<uint64_t>(format.int32("height")) == dimensions->height);
        checkRecord(format.buffer("csd-hevc"), bytesOf(vps), bytesOf(sps), bytesOf(pps),
                    vps != nullptr);
    }
    checkDimensions(input);
    return 0;
}
