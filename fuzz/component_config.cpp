// Input: operation, form, port and flags; entries of the format, each its row, type and value,
// behind their number; then what the component answers.
//
// Aims at Helper/MediaCodecHelper/*, Helper/omx/*, Helper/vocabulary/MetaKeyTable.

#include <map>
#include <optional>

#include "Fuzz.h"
#include "Helper/vocabulary/MetaKeyTable.h"
#include "platform/Message.h"
#include "platform/MetaData.h"
#include "platform/OmxNode.h"
#include "zrcodecparser/MediaCodecHelper.h"

using namespace android;
using Helper = MediaCodecHelper;

namespace {

constexpr uint32_t kExtension = 0x7F0000EE, kPresentation = 0x6F400003;

const std::map<uint32_t, uint32_t> kSizes{{0x02000001, 112},   {0x04000002, 104}, {0x04000003, 52},
                                          {0x04000004, 44},    {0x0400000A, 64},  {0x0400000F, 20},
                                          {kPresentation, 36}, {0x7FA30C07, 44},  {0x7F00000B, 20},
                                          {0x7F000002, 24},    {0x7F00001B, 16},  {0x7F000020, 4},
                                          {kExtension, 4}};

struct Component : IOMXNode {
    fuzz::Bytes answers;
    bool goesOn = false;  // after a failure
    uint32_t calls = 0, last = 0;
    status_t status = 0;

    status_t answer(uint32_t index) {
        REQUIRE(status == 0 || goesOn);
        ++calls, last = index;
        const uint32_t next = fuzz::take(answers, 1);
        return status = next < 0xC0 ? 0 : -static_cast<status_t>(next);
    }
    status_t getParameter(OMX_INDEXTYPE index, void* params, size_t size) override {
        auto* bytes = static_cast<uint8_t*>(params);
        const uint32_t header[] = {kSizes.at(index), 1};
        REQUIRE(size == header[0] && std::memcmp(bytes, header, 8) == 0);
        REQUIRE(std::all_of(bytes + 12, bytes + size, [](uint8_t byte) { return byte == 0; }));
        for (size_t i = 0; i < size; ++i) bytes[i] = static_cast<uint8_t>(fuzz::take(answers, 1));
        return answer(index);
    }
    status_t setParameter(OMX_INDEXTYPE index, const void* params, size_t size) override {
        const bool isTold = last == index && size != 4;  // else it has a header, none, or is a 1
        const bool hasHeader = index == 0x7F00000B || index == 0x7F00001B;
        const uint32_t header[] = {hasHeader ? kSizes.at(index) : size == 4, hasHeader};
        REQUIRE(kSizes.at(index) == size);
        REQUIRE(isTold || std::memcmp(params, header, std::min<size_t>(size, 8)) == 0);
        return answer(index);
    }
    status_t getExtensionIndex(const char*, OMX_INDEXTYPE* index) override {
        return answer(*index = static_cast<OMX_INDEXTYPE>(kExtension));
    }
};

template <typename Form>
status_t perform(uint32_t operation, const Form& format, const sp<AMessage>& message,
                 const sp<Component>& node, uint32_t flags, bool encoder) {
    using Operation = status_t (*)(const Form&, uint32_t, const sp<IOMXNode>&, bool);
    using Portless = status_t (*)(const Form&, const sp<IOMXNode>&, bool);
    constexpr Operation kFirst[] = {Helper::setRawAudioFormat, Helper::setG711Format,
                                    Helper::setAACFormat, Helper::setAlacFormat,
                                    Helper::setRAFormat};
    constexpr Portless kNext[] = {Helper::setWMAFormat, Helper::setG726Format,
                                  Helper::setDivxFormat};
    const char* name = flags & 1 ? "OMX.qcom.video.decoder.vc1" : "c";
    const uint32_t port = flags & 3;
    if (operation < 5) return kFirst[operation](format, port, node, encoder);
    if (operation < 8) return kNext[operation - 5](format, node, encoder);
    if (operation == 8) return Helper::setDolbyFormat(message, port, node, encoder);
    if (operation == 9) return Helper::setVOCodecFormat(format, name, node, encoder);
    if (operation == 10) Helper::configureFramePackingFormat(format, node);
    if (operation == 11) Helper::configureQCOMVideoDecoder(message, node, flags << 3, name);
    return node->status;
}

using Stored = std::optional<std::string>;

std::string bytesOf(const void* data, size_t size) {
    return {static_cast<const char*>(data), size};
}

// A row's value, if it is of the row's type.
Stored valueOf(const MetaDataBase& meta, const MetaKeyRow& row) {
    int32_t number = 0;
    int64_t wide = 0;
    const char* text = nullptr;
    const void* data = nullptr;
    uint32_t type = 0;
    size_t size = 0;
    if (row.value == MetaValue::kInt32) {
        if (meta.findInt32(row.metaKey, &number)) return std::to_string(number);
        return {};
    }
    if (row.value == MetaValue::kInt64) {
        if (meta.findInt64(row.metaKey, &wide)) return std::to_string(wide);
        return {};
    }
    if (row.value == MetaValue::kText)
        return meta.findCString(row.metaKey, &text) ? Stored(text) : Stored();
    if (!meta.findData(row.metaKey, &type, &data, &size) || !isMetaData(type)) return {};
    return bytesOf(data, size);
}

Stored valueOf(const sp<AMessage>& message, const char* key, MetaValue kind) {
    int32_t number = 0;
    int64_t wide = 0;
    AString text;
    sp<ABuffer> data;
    if (kind == MetaValue::kInt32 && message->findInt32(key, &number))
        return std::to_string(number);
    if (kind == MetaValue::kInt64 && message->findInt64(key, &wide)) return std::to_string(wide);
    if (kind == MetaValue::kText && message->findString(key, &text)) return text.c_str();
    if (kind >= MetaValue::kData && message->findBuffer(key, &data))
        return bytesOf(data->data(), data->size());
    return {};
}

const MetaKeyRow& rowOf(std::string_view key) {
    return *std::ranges::find(metaKeyRows(), key, [](const MetaKeyRow& row) {
        return std::string_view(row.messageKey);
    });
}

// The first of these is what a decoder gets.
void checkCodecData(const sp<MetaData>& meta) {
    static const MetaKeyRow kRows[] = {
            rowOf("vc1-sequence-header"),       rowOf("flac-codec-specific-data"),
            rowOf("adpcm-codec-specific-data"), rowOf("theora-codec-specific-data"),
            rowOf("rm-codec-specific-data"),    rowOf("rv-codec-specific-data"),
            rowOf("alac-codec-specific-data")};
    Stored expected;
    for (const MetaKeyRow& row : kRows) {
        if (!expected) expected = valueOf(*meta, row);
    }
    const void* data = nullptr;
    size_t size = 0;
    REQUIRE(Helper::ZRgetCodecSpecificData(meta, data, size) == (expected ? 0 : -1));
    REQUIRE(!expected || bytesOf(data, size) == expected);
}

sp<AMessage> convertThereAndBack(const sp<MetaData>& meta) {
    const sp<MetaData> back = new MetaData;
    sp<AMessage> message = new AMessage, again = new AMessage;
    REQUIRE(Helper::ZRCodeConvertMetaDataToMessage(meta, &message) == 0);
    REQUIRE(Helper::ZRCodeConvertMessageToMetaData(message, back) == 0);
    REQUIRE(Helper::ZRCodeConvertMetaDataToMessage(back, &again) == 0);
    Stored codecData;
    for (const MetaKeyRow& row : metaKeyRows()) {
        const Stored held = valueOf(*meta, row);
        if (row.value == MetaValue::kCodecData && held) codecData = held;
        if (row.value == MetaValue::kCodecData) continue;
        REQUIRE(valueOf(message, row.messageKey, row.value) == held);
        REQUIRE(valueOf(again, row.messageKey, row.value) == held);
    }
    REQUIRE(valueOf(message, "csd-0", MetaValue::kCodecData) == codecData);
    checkCodecData(meta);
    return message;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    fuzz::Bytes input(data, size);
    const uint32_t operation = fuzz::take(input, 1) % 12, form = fuzz::take(input, 1);
    const uint32_t flags = fuzz::take(input, 1);
    const bool isMessage = form & 1, encoder = form & 2;
    const sp<MetaData> meta = new MetaData;
    for (uint32_t count = fuzz::take(input, 1); count > 0 && !input.empty(); --count) {
        const uint32_t code = metaKeyRows()[fuzz::take(input, 1) % 96].metaKey;
        const uint32_t type = fuzz::take(input, 1) % 4, value = fuzz::take(input, 4);
        if (type == 0) meta->setInt32(code, static_cast<int32_t>(value));
        if (type == 1) meta->setInt64(code, value);
        if (type == 2) meta->setCString(code, value & 1 ? "video/avi" : "video/mp4");
        if (type == 3) meta->setData(code, 0, "data", value % 4);
    }
    const sp<AMessage> message = convertThereAndBack(meta);
    message->setInt32("enable-extradata-user", form >> 2 & 1);

    const sp<Component> node = new Component;
    node->answers = input;
    int32_t version = 0;
    message->findInt32("wma-version", &version);
    node->goesOn = operation == 11 || (operation == 5 && version == 3);
    host::setFatalHandler([](const char* text) {
        throw std::string_view(text).starts_with("Helper/MediaCodecHelper CHECK");
    });
    try {
        const auto status = isMessage ? perform(operation, message, message, node, flags, encoder)
                                      : perform(operation, meta, message, node, flags, encoder);
        const bool ignoresEncoder = operation > 9 || (operation == 7 && isMessage);
        const auto refusals = {-1, -38, -1010, 0};
        if (encoder && !ignoresEncoder) REQUIRE(status == -1 && node->calls == 0);
        REQUIRE(node->calls != 0 || std::ranges::find(refusals, status) != refusals.end());
        REQUIRE(node->calls == 0 || status == (node->last == kPresentation ? 0 : node->status));
    } catch (bool isKnown) {
        REQUIRE(isKnown && operation < 7 && !encoder);
    }
    return 0;
}
