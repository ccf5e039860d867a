// Input: the codec data of an H.264 track, in any of its forms.
//
// Aims at Helper/MediaExtractorHelper/AvcCodecData, Helper/csd/AvcConfig, Helper/csd/AvcSps,
// Helper/base/BitReader, Helper/base/Check.

#include "Fuzz.h"
#include "model/AvcPicture.h"

using android::ABuffer;
using android::sp;
using fuzz::Bytes;
using fuzz::Format;
using fuzz::helper;

namespace {

using Data = std::vector<uint8_t>;

void configure(Bytes data, const Format& format) {
    size_t size = data.size();
    int32_t status = 0;
    const bool fatal = fuzz::endsFatally(
            [&] { status = helper->setAVCCSeqHeader(data.data(), size, nullptr, format.get()); });
    REQUIRE(size == data.size() && (status == 0 || status == -1));
    REQUIRE(format.keys().empty() == (fatal || status != 0));
}

uint8_t at(Bytes bytes, size_t i) {
    return i < bytes.size() ? bytes[i] : uint8_t{0};
}

void checkPassedOn(Bytes data) {
    const Format again;
    configure(data, again);
    REQUIRE(again.keys() == "csd-avc " && fuzz::same(again.buffer("csd-avc"), data));
}

// The tests' model reads the same size of an SPS, none where the process ends.
std::optional<std::pair<int64_t, int64_t>> checkPicture(Bytes sps) {
    const sp<ABuffer> buffer = new ABuffer(sps.size());
    std::ranges::copy(sps, buffer->data());
    int32_t width = -1, height = -1;
    std::string unused;
    const auto picture = test::modelPicture(sps, unused);
    const bool fatal =
            fuzz::endsFatally([&] { helper->FindAVCDimensions(buffer, &width, &height); });
    REQUIRE(fatal == !picture && (fatal || picture == std::pair<int64_t, int64_t>(width, height)));
    return picture;
}

void checkSizes(Bytes sps, const Format& format) {
    const auto [width, height] = checkPicture(sps).value();
    REQUIRE(width == format.int32("width") && width == format.int32("stride"));
    REQUIRE(height == format.int32("height") && height == format.int32("slice-height"));
}

void append(Data& out, Bytes bytes) {
    out.insert(out.end(), bytes.begin(), bytes.end());
}

// The record holds what the input held: brought back to that form it makes the same record.
void checkRecord(const Format& format, bool annexB) {
    const Bytes record = format.buffer("csd-avc");
    REQUIRE(record.size() >= 11 && record[0] == 1 && record[4] == 0xfd && record[5] == 0xe1);
    const size_t spsSize = record[6] * 256u + record[7];
    REQUIRE(record.size() >= spsSize + 11 && record[8 + spsSize] == 1);
    const size_t ppsSize = record[9 + spsSize] * 256u + record[10 + spsSize];
    REQUIRE(record.size() == spsSize + ppsSize + 11);
    const Bytes sps = record.subspan(8, spsSize), pps = record.subspan(11 + spsSize);
    for (size_t i = 1; i < 4; ++i) REQUIRE(record[i] == at(sps, i));
    checkSizes(sps, format);

    const Data startCode{0, 0, 0, 1};
    Data data;
    append(data, annexB ? Bytes(startCode) : record.subspan(6, 2));
    append(data, sps);
    append(data, annexB ? Bytes(startCode) : record.subspan(9 + spsSize, 2));
    append(data, pps);
    if (annexB) data.insert(data.end(), 2, 0);  // a last unit of one byte would not count
    const Format again;
    configure(data, again);
    REQUIRE(again.keys() == format.keys() && fuzz::same(again.buffer("csd-avc"), record));
    checkSizes(sps, again);

    if (record[2] != 0x67) checkPassedOn(record);  // else it may pass for the form with lengths
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    const Bytes input(data, size);
    const Format format;
    configure(input, format);
    const std::string keys = format.keys();
    if (keys == "csd-avc ") {
        REQUIRE(fuzz::same(format.buffer("csd-avc"), input));
    } else if (!keys.empty()) {
        REQUIRE(keys == "csd-avc width height stride slice-height ");
        checkRecord(format, helper->FindNAL(data, size, 7, nullptr) != nullptr);
    }

    checkPicture(input);
    return 0;
}
