#include "inspect/callers/CodecData.h"

#include <algorithm>

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

std::vector<CodecDatum> addedNumbers(const FormatChange& change) {
    std::vector<CodecDatum> data;
    for (const auto& [key, value] : change.after) {
        const auto* number = std::get_if<int32_t>(&value);
        if (number == nullptr || findValue<int32_t>(change.before, key) != nullptr) continue;
        data.push_back({key, {}, describeNumber(key, *number)});
    }
    return data;
}

}  // namespace

std::vector<Record> readCodecData(const Stream& stream, const FormatChange& change, Detail detail) {
    std::vector<Record> records;
    for (const auto& [key, value] : change.after) {
        if (const auto* bytes = std::get_if<ByteVector>(&value)) {
            records.push_back(readRecord(stream.codecType, key, *bytes, detail));
        }
    }
    std::ranges::sort(records, {}, &Record::key);
    if (!records.empty()) return records;
    if (stream.privateData.empty()) {
        if (stream.firstHeader.empty()) return {};
        return {readRecord(stream.codecType, kFirstFrame, stream.firstHeader)};
    }
    if (hasReader(stream.codecType, kPrivateData) || !addedNumbers(change).empty()) {
        records.push_back(readRecord(stream.codecType, kPrivateData, stream.privateData, detail));
    }
    return records;
}

std::vector<CodecDatum> describeCodecData(const std::vector<Record>& records,
                                          const FormatChange& change) {
    std::vector<CodecDatum> data;
    for (const Record& each : records) {
        if (each.key == kPrivateData || each.key == kFirstFrame) return addedNumbers(change);
        data.push_back({each.key, each.sizeBytes, each.summary});
    }
    return data.empty() ? addedNumbers(change) : data;
}

}  // namespace inspect
