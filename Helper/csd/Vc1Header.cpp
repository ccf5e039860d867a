#include "Helper/csd/Vc1Header.h"

#include <array>

#include "Helper/base/ByteWriter.h"
#include "Helper/base/Checked.h"
#include "zrcodecparser/CodecType.h"

namespace android::csd {
namespace {

struct Vc1Form {
    bool hasSize;
    uint8_t profile;
};

constexpr auto kForms = std::to_array<Vc1Form>({
        {true, 2},   // kCodecTypeWmv
        {false, 2},  // kCodecTypeWmv7
        {false, 2},  // kCodecTypeWmv8
        {true, 0},   // kCodecTypeVc1Simple
        {true, 1},   // kCodecTypeVc1Main
        {true, 2},   // kCodecTypeVc1Advanced
});
static_assert(kForms.size() == kCodecTypeVc1Advanced - kCodecTypeWmv + 1);

}  // namespace

std::optional<std::vector<uint8_t>> makeVc1SequenceHeader(uint32_t codecType, base::Bytes header,
                                                          uint32_t width, uint32_t height) {
    if (codecType < kCodecTypeWmv || codecType > kCodecTypeVc1Advanced) return std::nullopt;
    const Vc1Form form = kForms[codecType - kCodecTypeWmv];

    base::ByteWriter writer(base::checkedAdd(header.size(), 9));
    writer.bytes(header);
    if (form.hasSize) {
        writer.u32LittleEndian(width);
        writer.u32LittleEndian(height);
    }
    writer.u8(form.profile);
    return writer.take();
}

}  // namespace android::csd
