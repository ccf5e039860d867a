// Input: a configuration record of an H.265 track (ISO/IEC 14496-15 8.3.3.1.2).
//
// Aims at Helper/csd/HevcConfig, Helper/MediaCodecHelper/MetaConversion.

#include "Fuzz.h"
#include "platform/MetaData.h"
#include "zrcodecparser/MediaCodecHelper.h"

using android::MetaData;
using android::sp;
using fuzz::Bytes;

namespace {

constexpr uint32_t kKey = 0x68637364;   // 'hcsd'
constexpr uint32_t kType = 0x68766363;  // 'hvcc'
constexpr size_t kCapacity = 1024;

using Data = std::vector<uint8_t>;

// The stream of the record's parameter sets, or more of it than there is room for.
Data streamOf(Bytes record) {
    Bytes rest = record.subspan(21);
    Data prefix(fuzz::take(rest, 1) % 4 + 1, 0);
    if (prefix.size() >= 3) prefix.back() = 1;

    Data stream;
    for (uint32_t arrays = fuzz::take(rest, 1); arrays > 0; --arrays) {
        const uint32_t type = fuzz::take(rest, 1) % 64;
        const bool wanted = type == 32 || type == 33 || type == 34;
        for (uint32_t units = fuzz::take(rest, 2); units > 0; --units) {
            if (!wanted && rest.empty()) break;  // what is counted may be more than there is
            uint32_t size = fuzz::take(rest, 2);
            if (!wanted) {
                rest = rest.subspan(std::min<size_t>(size, rest.size()));
                continue;
            }
            stream.insert(stream.end(), prefix.begin(), prefix.end());
            for (; size > 0; --size) stream.push_back(static_cast<uint8_t>(fuzz::take(rest, 1)));
            if (stream.size() > kCapacity) return stream;
        }
    }
    return stream;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    const Bytes record(data, size);
    const sp<MetaData> meta = new MetaData;
    const auto status = android::MediaCodecHelper::parseHEVCCodecSpecificData(meta, data, size);

    const bool isRecord = size >= 23 && record[0] == 1;
    const Data stream = isRecord ? streamOf(record) : Data();
    int32_t expected = stream.empty() ? -1 : 0;
    if (!isRecord || stream.size() > kCapacity) expected = -1007;
    REQUIRE(status == expected);

    uint32_t type = 0;
    const void* stored = nullptr;
    size_t storedSize = 0;
    const bool isStored = meta->findData(kKey, &type, &stored, &storedSize);
    REQUIRE(isStored == (status == 0));
    if (!isStored) return 0;
    REQUIRE(type == kType);
    REQUIRE(fuzz::same({static_cast<const uint8_t*>(stored), storedSize}, stream));
    return 0;
}
