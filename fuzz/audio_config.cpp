// Input: a byte that picks the codec (200 and up), then the codec data of an audio track.
//
// Aims at Helper/MediaExtractorHelper/AudioCodecData, Helper/csd/EsDescriptor,
// Helper/csd/FlacStreamInfo, Helper/csd/WmaExtraData.

#include "Esds.h"
#include "Helper/csd/EsDescriptor.h"

using fuzz::Bytes;
using fuzz::checkEsds;
using fuzz::Format;
using fuzz::helper;

namespace {

constexpr const char* kWmaPro =
        "wma-channel-mask wma-adv-enc-opt1 wma-adv-enc-opt2 wma-encode-opt ";
constexpr const char* kWmaVoice =
        "wma-channel-mask wma-encode-opt wma-adv-enc-opt1 wma-voice-enc-opt1 wma-voice-enc-opt2_0 "
        "wma-voice-enc-opt2_1 ";
constexpr const char* kFlacBlob = "flac-codec-specific-data ";
constexpr const char* kFlacSizes = "min-block-size max-block-size min-frame-size max-frame-size ";

void checkDescriptors(Bytes data) {
    using namespace android::csd;
    checkEsds(makeEsDescriptor(data, ObjectType::kVisual14496_2), data, 0x20);
    const auto fixed = makeEsDescriptor(data, ObjectType::kVisual14496_2, SizeFields::kOneByte);
    REQUIRE(fixed.size() == data.size() + 22);
    if (data.size() < 108) checkEsds(fixed, data, 0x20);
}

// A number at a place, zeros behind the end.
uint32_t numberAt(Bytes data, size_t at, size_t bytes, bool bigEndian) {
    Bytes rest = data.subspan(std::min(at, data.size()));
    const uint32_t number = fuzz::take(rest, bytes);
    return bigEndian ? number : __builtin_bswap32(number) >> (32 - 8 * bytes);
}

// Keys, places and sizes of numbers, as the header lists them.
struct Number {
    const char* key;
    size_t at, bytes;
};
constexpr Number kFlacNumbers[] = {{"min-block-size", 8, 2},
                                   {"max-block-size", 10, 2},
                                   {"min-frame-size", 12, 3},
                                   {"max-frame-size", 15, 3}};
constexpr Number kWmaNumbers[] = {{"wma-channel-mask", 2, 4},
                                  {"wma-adv-enc-opt1", 6, 4},
                                  {"wma-adv-enc-opt2", 10, 4},
                                  {"wma-encode-opt", 14, 2}};
constexpr Number kVoiceNumbers[] = {
        {"wma-channel-mask", 2, 4},      {"wma-encode-opt", 14, 2},
        {"wma-adv-enc-opt1", 16, 2},     {"wma-voice-enc-opt1", 18, 4},
        {"wma-voice-enc-opt2_0", 22, 4}, {"wma-voice-enc-opt2_1", 26, 4}};

void checkNumbers(const Format& format, std::span<const Number> numbers, Bytes data,
                  bool bigEndian = false) {
    for (const auto& [key, at, bytes] : numbers) {
        REQUIRE(format.int32(key) == static_cast<int32_t>(numberAt(data, at, bytes, bigEndian)));
    }
}

void checkWma(const Format& format, uint32_t code, Bytes data) {
    const Number option{"wma-encode-opt", code == 210 ? 2u : 4u, 2};
    if (code < 212) return checkNumbers(format, {&option, 1}, data);
    if (data.size() < 18) data = {};
    checkNumbers(format, code == 214 ? std::span<const Number>(kVoiceNumbers) : kWmaNumbers, data);
}

// What writes to memory of the caller's, or moves an offset on: the same bytes as the stored ones.
void checkWriters(Bytes data) {
    size_t size = data.size(), outSize = 0;
    const std::unique_ptr<uint8_t[]> out(new uint8_t[size + 22]);
    helper->makeESDS(data.data(), &size, out.get());
    REQUIRE(size == data.size());
    REQUIRE(fuzz::same(
            {out.get(), size + 22},
            android::csd::makeEsDescriptor(data, android::csd::ObjectType::kVisual14496_2,
                                           android::csd::SizeFields::kOneByte)));
    if (size < 2) return;
    const std::unique_ptr<uint8_t[]> config(new uint8_t[24]);
    REQUIRE(helper->MakeAACCodecSpecificData(data.data(), &outSize, config.get()) && outSize == 24);
    checkEsds({config.get(), 24}, data.first(2), 0x40);
    const Format format;
    REQUIRE(helper->setAACCodecSpecificData(data.data(), &outSize, format.get()) == 0);
    REQUIRE(fuzz::same(format.buffer("csd-0"), {config.get(), 24}));
}

// ISO/IEC 14496-1 8.3.3: seven bits a byte, as few bytes as do, and the top bit where one follows.
void checkSizeField(size_t value) {
    value &= 0xFFFFFFF;
    uint8_t field[4];
    size_t at = 0, read = 0, bytes = 0;
    helper->storeSize(field, at, value);
    do read = read << 7 | (field[bytes] & 0x7f);
    while (field[bytes++] & 0x80);
    REQUIRE(read == value && bytes == at && at == helper->bytesForSize(value));
    REQUIRE(at == 1 || field[0] != 0x80);
}

// The keys that a code stores from data of this size; Vorbis aside.
std::string expectedKeys(uint32_t code, size_t size) {
    switch (code) {
        case 201: return "esds ";
        case 210: return size < 4 ? "" : "wma-encode-opt ";
        case 211: return size < 6 ? "" : "wma-encode-opt ";
        case 212:
        case 213: return kWmaPro;
        case 214: return kWmaVoice;
        case 218: return "adpcm-codec-specific-data ";
        case 228: return "csd-0 ";
        default: return "";
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* bytes, size_t byteCount) {
    Bytes data(bytes, byteCount);
    const uint32_t code = 200 + fuzz::take(data, 1) % 32;
    const Format format;
    size_t size = data.size();
    const auto status = helper->setAudioConfig(code, data.data(), &size, format.get());
    const std::string keys = format.keys();
    REQUIRE(size == data.size());
    REQUIRE(status == ((code == 210 || code == 211) && keys.empty() ? -1 : 0));
    if (code == 207) {
        REQUIRE(keys == kFlacBlob || (size >= 26 && keys == kFlacBlob + std::string(kFlacSizes)));
        REQUIRE(fuzz::same(format.buffer("flac-codec-specific-data"), data));
        if (keys != kFlacBlob) checkNumbers(format, kFlacNumbers, data, true);
    } else if (code == 208) {  // for vorbis_headers to judge
        REQUIRE(keys.empty() || keys == "csd-0 " || keys == "csd-0 csd-1 ");
    } else {
        REQUIRE(keys == expectedKeys(code, size));
        if (code == 201) checkEsds(format.buffer("esds"), data, 0x40);
        if (code == 218) REQUIRE(fuzz::same(format.buffer("adpcm-codec-specific-data"), data));
        if (code == 228) REQUIRE(fuzz::same(format.buffer("csd-0"), data));
        if (keys.starts_with("wma")) checkWma(format, code, data);
    }
    checkWriters(data);
    checkSizeField(numberAt(data, 0, 4, true));
    checkDescriptors(data);
    return 0;
}
