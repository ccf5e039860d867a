// Input: a byte that picks the codec (96 and up), width and height of the picture as four bytes
// each, then the codec data of a video track.
//
// Aims at Helper/MediaExtractorHelper/VideoCodecData, Helper/csd/Vc1Header.

#include "Esds.h"
#include "zrcodecparser/TrackInfo.h"

using android::TrackInfo;
using fuzz::Bytes;
using fuzz::Format;
using fuzz::helper;

namespace {

constexpr const char* kVc1Keys = "vc1-sequence-header use-arbitrary-mode ";

// How the call on the codec's data ended, and what it stored.
struct Result {
    Format format;
    int32_t status = 1;  // of a fatal end
};

template <typename Call>
Result resultOf(Call call) {
    Result result;
    fuzz::endsFatally([&] { result.status = call(result.format.get()); });
    return result;
}

void requireSame(const Format& left, const Format& right) {
    const auto entries = android::host::formatEntries(left.get());
    REQUIRE(left.keys() == right.keys());
    for (size_t i = 0; const auto& entry : android::host::formatEntries(right.get())) {
        REQUIRE(entries[i++].value == entry.value);
    }
}

// The bytes that stand behind the sequence header; none for another codec.
std::vector<uint8_t> vc1Tail(const TrackInfo& track) {
    const uint32_t code = track.codecType;
    if (code < 105 || code > 110) return {};
    std::vector<uint8_t> tail;
    if (code != 106 && code != 107) {
        for (const uint32_t side : {track.video.width, track.video.height}) {
            for (int i = 0; i < 4; ++i) tail.push_back(static_cast<uint8_t>(side >> 8 * i));
        }
    }
    tail.push_back(code == 108 ? 0 : code == 109 ? 1 : 2);
    return tail;
}

void checkVc1(const Format& format, const TrackInfo& track, Bytes data) {
    const auto tail = vc1Tail(track);
    REQUIRE(format.keys() == (tail.empty() ? "" : kVc1Keys));
    if (tail.empty()) return;
    std::vector<uint8_t> header(data.begin(), data.end());
    header.insert(header.end(), tail.begin(), tail.end());
    REQUIRE(fuzz::same(format.buffer("vc1-sequence-header"), header));
    REQUIRE(format.int32("use-arbitrary-mode") == 0);
}

bool hasEsds(uint32_t code) {
    return code == 101 || code == 102 || code == 119 || code == 120 || (code >= 123 && code <= 126);
}

void check(const Result& result, const TrackInfo& track, Bytes data) {
    const uint32_t code = track.codecType;
    const std::string keys = result.format.keys();
    if (code == 104 || code == 129) {
        size_t size = data.size();
        const Result plain = resultOf([&](AMediaFormat* format) {
            return code == 104 ? helper->setAVCCSeqHeader(data.data(), size, nullptr, format)
                               : helper->MakeHEVCCodecSpecificData(data.data(), size, format);
        });
        REQUIRE(result.status == plain.status);
        requireSame(result.format, plain.format);
        return;
    }
    REQUIRE(result.status == 0);
    if (hasEsds(code)) {
        REQUIRE(keys == "esds ");
        fuzz::checkEsds(result.format.buffer("esds"), data, 0x20);
    } else if (code == 121) {
        REQUIRE(keys == "theora-codec-specific-data ");
        REQUIRE(fuzz::same(result.format.buffer("theora-codec-specific-data"), data));
    } else {
        checkVc1(result.format, track, data);
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* bytes, size_t byteCount) {
    Bytes data(bytes, byteCount);
    TrackInfo track{};
    track.trackType = android::kTrackTypeVideo;
    track.codecType = 96 + fuzz::take(data, 1) % 40;
    track.video.width = fuzz::take(data, 4);
    track.video.height = fuzz::take(data, 4);

    size_t size = data.size();
    check(resultOf([&](AMediaFormat* format) {
              return helper->setVideoConfig(&track, data.data(), size, format);
          }),
          track, data);
    const Format direct;
    REQUIRE(helper->setVC1SeqHeader(data.data(), &size, &track, direct.get()) == 0);
    REQUIRE(size == data.size());
    checkVc1(direct, track, data);
    return 0;
}
