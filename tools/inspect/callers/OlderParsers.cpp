#include "inspect/callers/OlderParsers.h"

#include <array>

#include "zrcodecparser/MediaExtractorHelper.h"

namespace inspect {
namespace {

using namespace android;

// All that the library writes for them.
constexpr auto kCodes = std::to_array<const char*>(
        {"mime", "widt", "heig", "ArbM", "hvcc", "albu", "arti", "aart", "comp", "genr",
         "titl", "year", "auth", "cdtr", "dnum", "cpil", "uSlY", "mxet", "Dsrt", "albA"});

std::optional<host::FormatValue> findEntry(const MetaDataBase& meta, const char* characters) {
    uint32_t code = 0;
    for (const char* c = characters; *c != '\0'; c++) code = code << 8 | static_cast<uint8_t>(*c);
    int32_t number = 0;
    const char* text = nullptr;
    uint32_t type = 0;
    const void* data = nullptr;
    size_t size = 0;
    if (meta.findInt32(code, &number)) return number;
    if (meta.findCString(code, &text)) return text;
    if (!meta.findData(code, &type, &data, &size)) return {};
    const auto* bytes = static_cast<const uint8_t*>(data);
    return ByteVector(bytes, bytes + size);
}

Entries entriesOf(const MetaDataBase& meta) {
    Entries entries;
    for (const char* code : kCodes) {
        if (auto value = findEntry(meta, code)) entries.push_back({code, std::move(*value)});
    }
    return entries;
}

struct ToFormat {
    AMediaFormat* format;
    const char* key;
    void operator()(int32_t value) const { AMediaFormat_setInt32(format, key, value); }
    void operator()(int64_t value) const { AMediaFormat_setInt64(format, key, value); }
    void operator()(const std::string& value) const {
        AMediaFormat_setString(format, key, value.c_str());
    }
    void operator()(const ByteVector& value) const {
        AMediaFormat_setBuffer(format, key, value.data(), value.size());
    }
};

}  // namespace

std::vector<Call> describeToOlderParsers(const Stream& stream, const Entries& entries) {
    const sp<MediaExtractorHelper> helper = new MediaExtractorHelper;
    const Format format;
    for (const auto& [key, value] : entries) {
        std::visit(ToFormat{format.get(), key.c_str()}, value);
    }
    const sp<MetaData> selected = new MetaData;
    sp<MetaData> converted = new MetaData;
    std::vector<Call> calls;
    calls.push_back(callLibrary("SupportCodecEx", [&] {
        return helper->SupportCodecEx(static_cast<int>(stream.codecType), *selected);
    }));
    calls.back().entries = entriesOf(*selected);
    calls.push_back(callLibrary("convertZRAMediaFormatToMeta", [&] {
        return helper->convertZRAMediaFormatToMeta(format.get(), converted);
    }));
    calls.back().entries = entriesOf(*converted);
    return calls;
}

}  // namespace inspect
