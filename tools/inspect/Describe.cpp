#include "inspect/Describe.h"

#include <algorithm>
#include <array>
#include <string_view>

#include "platform/MediaFormat.h"
#include "zrcodecparser/CodecType.h"
#include "zrcodecparser/FormatKeys.h"

namespace inspect {
namespace {

using namespace android;

constexpr uint32_t kAnyCodec = 0;

struct Row {
    std::string_view key;
    uint32_t codecType;
    std::string (*describe)(Bytes);
};

std::string vorbisSetup(Bytes) {
    return "Vorbis setup header";
}

// clang-format off
const auto kRows = std::to_array<Row>({
    {AMEDIAFORMAT_KEY_CSD_AVC,                     kAnyCodec,        describeAvcRecord},
    {AMEDIAFORMAT_KEY_CSD_HEVC,                    kAnyCodec,        describeHevcRecord},
    {AMEDIAFORMAT_KEY_ESDS,                        kAnyCodec,        describeEsDescriptor},
    {ZREAMEDIAFORMAT_KEY_FLACCOECSPECIFICDATA,     kAnyCodec,        describeFlacStream},
    {AMEDIAFORMAT_KEY_CSD_0,                       kCodecTypeOpus,   describeOpusHead},
    {AMEDIAFORMAT_KEY_CSD_1,                       kCodecTypeOpus,   describeCodecDelay},
    {AMEDIAFORMAT_KEY_CSD_2,                       kCodecTypeOpus,   describeSeekPreRoll},
    {AMEDIAFORMAT_KEY_CSD_0,                       kCodecTypeVorbis, describeVorbisHeader},
    {AMEDIAFORMAT_KEY_CSD_1,                       kCodecTypeVorbis, vorbisSetup},
    {AMEDIAFORMAT_KEY_CSD_0,                       kCodecTypeG726,   describeNativeBitRate},
});
// clang-format on

std::string describe(uint32_t codecType, std::string_view key, Bytes data) {
    const auto row = std::ranges::find_if(kRows, [&](const Row& each) {
        return each.key == key && (each.codecType == kAnyCodec || each.codecType == codecType);
    });
    return row != kRows.end() ? row->describe(data) : shortHex(data);
}

}  // namespace

std::vector<CodecDatum> describeCodecData(uint32_t codecType, const Entries& before,
                                          const Entries& after) {
    std::vector<CodecDatum> data;
    for (const auto& [key, value] : after) {
        if (const auto* bytes = std::get_if<ByteVector>(&value)) {
            data.push_back({key, bytes->size(), describe(codecType, key, *bytes)});
        }
    }
    std::ranges::sort(data, {}, &CodecDatum::key);
    if (!data.empty()) return data;
    for (const auto& [key, value] : after) {
        const auto* number = std::get_if<int32_t>(&value);
        if (number == nullptr || findValue<int32_t>(before, key) != nullptr) continue;
        data.push_back({key, {}, std::to_string(*number)});
    }
    return data;
}

}  // namespace inspect
