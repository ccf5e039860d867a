// Input: a byte for the key, a byte for the codec and how much is checked, then the codec data.
// Beyond the keys: the index of a component's parameter in four bytes, then the parameter.

#include <array>

#include "Inspect.h"
#include "inspect/records/Record.h"
#include "inspect/verdict/BrokenData.h"
#include "inspect/verdict/TrackFacts.h"
#include "zrcodecparser/CodecType.h"
#include "zrcodecparser/FormatKeys.h"

namespace {

using namespace android;
using namespace inspect;

struct Codec {
    uint32_t type;
    const char* name;
    const char* box;
};
constexpr auto kCodecs = std::to_array<Codec>({
        {kCodecTypeAvc, "h264", "hvc1"},
        {kCodecTypeHevc, "hevc", ""},
        {kCodecTypeMpeg2, "mpeg2video", ""},
        {kCodecTypeMpeg4, "mpeg4", ""},
        {kCodecTypeAac, "aac", ""},
        {kCodecTypeWmv7, "wmv1", ""},
        {kCodecTypeVc1Advanced, "vc1", ""},
        {kCodecTypeOpus, "opus", ""},
        {kCodecTypeVorbis, "vorbis", ""},
        {kCodecTypeG726, "g726", ""},
        {kCodecTypeVp9, "vp9", "vp09"},
        {kCodecTypeAv1, "av1", "av01"},
        {kCodecTypeWmaV1, "wmav1", ""},
        {kCodecTypeWmaV2, "wmav2", ""},
        {kCodecTypeWmaPro, "wmapro", ""},
        {kCodecTypeWmaVoice, "wmavoice", ""},
});
const auto kKeys = std::to_array<std::string_view>({
        AMEDIAFORMAT_KEY_CSD_AVC,
        AMEDIAFORMAT_KEY_CSD_HEVC,
        kFirstFrame,
        kPrivateData,
        AMEDIAFORMAT_KEY_ESDS,
        ZREAMEDIAFORMAT_KEY_VC1SEQUENCEHEADER,
        ZREAMEDIAFORMAT_KEY_THEORASPECIFICDATA,
        ZREAMEDIAFORMAT_KEY_FLACCOECSPECIFICDATA,
        ZREAMEDIAFORMAT_KEY_ADPCMWAVEFORMAT,
        AMEDIAFORMAT_KEY_CSD_0,
        AMEDIAFORMAT_KEY_CSD_1,
        AMEDIAFORMAT_KEY_CSD_2,
});

// Of bits as they stand in the record.
uint64_t numberAt(fuzz::Bytes data, size_t bit, size_t bits) {
    uint64_t value = 0;
    for (; bits > 0; bits--, bit++) value = value * 2 + (data[bit / 8] >> (7 - bit % 8) & 1u);
    return value;
}

bool isNumberAt(uint64_t number, fuzz::Bytes data, size_t bit, size_t bits) {
    if (numberAt(data, bit, bits) == number) return true;
    ByteVector turned(data.begin(), data.end());
    if (bit % 8 != 0 || bits % 8 != 0) return false;
    std::ranges::reverse(std::span(turned).subspan(bit / 8, bits / 8));
    return numberAt(turned, bit, bits) == number;
}

// isPlain: each number stands there as it is.
void checkRows(const Record& record, fuzz::Bytes data, bool isPlain) {
    size_t end = 0;  // of the rows that have bytes
    size_t bit = 0;
    unsigned depth = 0;
    for (const Row& row : record.rows) {
        REQUIRE(!row.name.empty() && row.depth <= depth + 1);
        depth = row.depth;
        if (!row.bytes.empty()) {
            REQUIRE(row.offset == end && row.bytes.size() <= data.size() - end);
            REQUIRE(fuzz::same(row.bytes, data.subspan(end, row.bytes.size())));
            REQUIRE(bit == end * 8);
            end += row.bytes.size();
        }
        const size_t bits = row.bits != 0 ? row.bits : row.bytes.size() * 8;
        REQUIRE(bits <= end * 8 - bit);
        const bool isNumber = row.number && bits > 0 && isPlain;
        REQUIRE(!isNumber || bits > 64 || isNumberAt(*row.number, data, bit, bits));
        bit += bits;
    }
    REQUIRE(end == data.size() && bit == data.size() * 8 && record.sizeBytes == data.size());
}

void checkStream(const Codec& codec, const Record& record, fuzz::Bytes data) {
    Stream stream;
    stream.kind = codec.type < kCodecTypeNoAudio ? Kind::kVideo : Kind::kAudio;
    stream.codec = codec.name;
    stream.codecType = codec.type;
    stream.boxName = codec.box;
    stream.privateData.assign(data.begin(), data.end());
    stream.video = {.width = 1920, .height = 1080, .storedWidth = 640, .storedHeight = 480};
    for (const std::string& each : contradictions(stream, {record})) REQUIRE(!each.empty());
    const TrackFacts facts = factsOf(stream, {record});
    REQUIRE(!facts.codec.empty() && (!facts.level || !facts.level->name.empty()));
    whyNoDecoderStarts(stream, {record}, true);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* bytes, size_t size) {
    fuzz::Bytes data(bytes, size);
    const uint32_t choice = fuzz::take(data, 1);
    if (choice >= kKeys.size()) {
        checkRows(readParameter(fuzz::take(data, 4), "name", data), data, true);
        return 0;
    }
    const uint32_t options = fuzz::take(data, 1);
    const Codec& codec = kCodecs[options % kCodecs.size()];
    const std::string_view key = kKeys[choice];
    const bool isPlain = choice > 3 || (key == kPrivateData && codec.type != kCodecTypeAv1);
    const Record record = readRecord(codec.type, key, data, Detail::kAll);
    checkRows(record, data, isPlain);
    if ((options & 0x40) != 0) checkStream(codec, record, data);
    if ((options & 0x80) == 0) return 0;
    const Record brief = readRecord(codec.type, key, data, Detail::kFacts);
    checkRows(brief, data, isPlain);
    REQUIRE(brief.summary == record.summary && brief.facts == record.facts);
    return 0;
}
