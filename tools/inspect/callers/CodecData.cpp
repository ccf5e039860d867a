#include "inspect/callers/CodecData.h"

#include <algorithm>

#include "inspect/records/Records.h"
#include "inspect/records/StandardNames.h"
#include "zrcodecparser/FormatKeys.h"

namespace inspect {
namespace {

using namespace android;

std::string hexNumber(int32_t value) {
    const auto bits = static_cast<uint32_t>(value);
    ByteVector bytes;
    for (int shift = 24; shift >= 0; shift -= 8)
        bytes.push_back(static_cast<uint8_t>(bits >> shift));
    return "0x" + hex(bytes, "");
}

// Flags in hexadecimal, numbers in decimal.
std::string describeNumber(std::string_view key, int32_t value) {
    if (key == ZREAMEDIAFORMAT_KEY_WMACHANNELMASK) {
        return hexNumber(value) + ": " + speakersText(static_cast<uint32_t>(value));
    }
    return key.starts_with("wma-") ? hexNumber(value) : std::to_string(value);
}

}  // namespace

std::vector<CodecDatum> describeCodecData(uint32_t codecType, const Entries& before,
                                          const Entries& after) {
    std::vector<CodecDatum> data;
    for (const auto& [key, value] : after) {
        if (const auto* bytes = std::get_if<ByteVector>(&value)) {
            data.push_back(
                    {key, bytes->size(), summarise(codecType, readRecord(codecType, key, *bytes))});
        }
    }
    std::ranges::sort(data, {}, &CodecDatum::key);
    if (!data.empty()) return data;
    for (const auto& [key, value] : after) {
        const auto* number = std::get_if<int32_t>(&value);
        if (number == nullptr || findValue<int32_t>(before, key) != nullptr) continue;
        data.push_back({key, {}, describeNumber(key, *number)});
    }
    return data;
}

std::vector<Record> explainCodecData(const Stream& stream, const Entries& entries,
                                     const std::vector<CodecDatum>& codecData) {
    std::vector<Record> explanations;
    for (const auto& [key, value] : entries) {
        if (const auto* bytes = std::get_if<ByteVector>(&value)) {
            explanations.push_back(readRecord(stream.codecType, key, *bytes));
        }
    }
    std::ranges::sort(explanations, {}, &Record::key);
    const bool hasNumbers = explanations.empty() && !codecData.empty();
    if (hasNumbers && !stream.privateData.empty()) {
        explanations.push_back(readRecord(stream.codecType, kPrivateData, stream.privateData));
    }
    return explanations;
}

}  // namespace inspect
