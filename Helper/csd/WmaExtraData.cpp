#include "Helper/csd/WmaExtraData.h"

#include <algorithm>
#include <array>

#include "zrcodecparser/CodecType.h"
#include "zrcodecparser/FormatKeys.h"

namespace android::csd {
namespace {

// clang-format off
constexpr auto kV1Fields = std::to_array<WmaField>({
    // key                                    offset  size
    {ZREAMEDIAFORMAT_KEY_WMAENCODEOPT,             2,    2},
});

constexpr auto kV2Fields = std::to_array<WmaField>({
    {ZREAMEDIAFORMAT_KEY_WMAENCODEOPT,             4,    2},
});

constexpr auto kProFields = std::to_array<WmaField>({
    {ZREAMEDIAFORMAT_KEY_WMACHANNELMASK,           2,    4},
    {ZREAMEDIAFORMAT_KEY_WMAADBENCOPT1,            6,    4},
    {ZREAMEDIAFORMAT_KEY_WMAADBENCOPT2,           10,    4},
    {ZREAMEDIAFORMAT_KEY_WMAENCODEOPT,            14,    2},
});

constexpr auto kVoiceFields = std::to_array<WmaField>({
    {ZREAMEDIAFORMAT_KEY_WMACHANNELMASK,           2,    4},
    {ZREAMEDIAFORMAT_KEY_WMAENCODEOPT,            14,    2},
    {ZREAMEDIAFORMAT_KEY_WMAADBENCOPT1,           16,    2},
    {ZREAMEDIAFORMAT_KEY_WMAVOICEENCOPT1,         18,    4},
    {ZREAMEDIAFORMAT_KEY_WMAVOICEENCOPT20,        22,    4},
    {ZREAMEDIAFORMAT_KEY_WMAVOICEENCOPT21,        26,    4},
});

// Voice data need 18 bytes only, although their fields reach to byte 29. That is meant: what a block
// in between lacks counts as zero.
constexpr auto kLayouts = std::to_array<WmaLayout>({
    // minSize  error  fields
    {        4, true,  kV1Fields   },  // kCodecTypeWmaV1
    {        6, true,  kV2Fields   },  // kCodecTypeWmaV2
    {       18, false, kProFields  },  // kCodecTypeWmaPro
    {       18, false, kProFields  },  // kCodecTypeWmaLossless
    {       18, false, kVoiceFields},  // kCodecTypeWmaVoice
});
// clang-format on

static_assert(kLayouts.size() == kCodecTypeWmaVoice - kCodecTypeWmaV1 + 1);
static_assert(std::ranges::all_of(kLayouts, [](const WmaLayout& layout) {
    return std::ranges::all_of(
            layout.fields, [](size_t size) { return size == 2 || size == 4; }, &WmaField::size);
}));

}  // namespace

const WmaLayout* wmaLayout(uint32_t codecType) {
    if (codecType < kCodecTypeWmaV1 || codecType > kCodecTypeWmaVoice) return nullptr;
    return &kLayouts[codecType - kCodecTypeWmaV1];
}

std::vector<WmaValue> readWmaFields(base::Bytes data, const WmaLayout& layout) {
    std::vector<WmaValue> values;
    for (const auto& [key, offset, size] : layout.fields) {
        values.push_back({key, static_cast<int32_t>(base::littleEndianAt(data, offset, size))});
    }
    return values;
}

}  // namespace android::csd
