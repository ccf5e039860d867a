#include "inspect/callers/Calls.h"

#include <array>

#include "inspect/callers/Hooks.h"
#include "platform/Host.h"
#include "zrcodecparser/MediaExtractorHelper.h"
#include "zrcodecparser/MetaKeys.h"

namespace inspect {
namespace {

using namespace android;

const char* statusWords(int32_t status) {
    switch (status) {
        case OK: return ", ok";
        case -1: return kDoesNotApply;
        case BAD_VALUE: return ", bad value";
        case INVALID_OPERATION: return ", invalid operation";
        case -1010: return ", unsupported";
        case UNKNOWN_ERROR: return ", unknown error";
        default: return "";
    }
}

// All that the library writes for them.
constexpr auto kCodes = std::to_array<uint32_t>({kZreKeyMime,           kZreKeyWidth,
                                                 kZreKeyHeight,         kZreKeyUseArbitraryMode,
                                                 kZreKeyHEVCConfig,     kZreKeyAlbum,
                                                 kZreKeyArtist,         kZreKeyAlbumArtist,
                                                 kZreKeyComposer,       kZreKeyGenre,
                                                 kZreKeyTitle,          kZreKeyYear,
                                                 kZreKeyAuthor,         kZreKeyCDTrackNumber,
                                                 kZreKeyDiscNumber,     kZreKeyCompilation,
                                                 kZreKeyUnsyncedLyrics, kZreKeyMixedEncodingType,
                                                 kZreKeyDSDSampleRate,  kZreKeyAlbumArt});

std::string charactersOf(uint32_t code) {
    std::string characters;
    for (int shift = 24; shift >= 0; shift -= 8) characters += static_cast<char>(code >> shift);
    return characters;
}

std::optional<host::FormatValue> findEntry(const MetaDataBase& meta, uint32_t code) {
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
    for (const uint32_t code : kCodes) {
        if (auto value = findEntry(meta, code)) {
            entries.push_back({charactersOf(code), std::move(*value)});
        }
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

Call callLibrary(const char* name, const std::function<std::optional<int32_t>()>& operation) {
    try {
        const auto status = operation();
        return {name, status ? std::to_string(*status) + statusWords(*status) : "", {}, {}};
    } catch (const LibraryFatal& fatal) {
        return {name, std::string("the library would end the process: ") + fatal.what(), {}, {}};
    }
}

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
