// Input: a byte that picks the codec (200 and up), then the codec data of an audio track.

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
    } else if (code == 208) {  // for vorbis_headers to judge
        REQUIRE(keys.empty() || keys == "csd-0 " || keys == "csd-0 csd-1 ");
    } else {
        REQUIRE(keys == expectedKeys(code, size));
        if (code == 201) checkEsds(format.buffer("esds"), data, 0x40);
        if (code == 218) REQUIRE(fuzz::same(format.buffer("adpcm-codec-specific-data"), data));
        if (code == 228) REQUIRE(fuzz::same(format.buffer("csd-0"), data));
        if (keys.starts_with("wma-channel") && size < 18) {
            REQUIRE(format.int32("wma-channel-mask") == 0 && format.int32("wma-encode-opt") == 0);
        }
    }
    checkDescriptors(data);
    return 0;
}
