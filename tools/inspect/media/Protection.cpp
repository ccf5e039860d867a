#include "inspect/media/Protection.h"

extern "C" {
#include <libavutil/base64.h>
}

#include <array>

#include "inspect/media/Boxes.h"
#include "inspect/media/Scrambling.h"

namespace inspect {
namespace {

constexpr size_t kKeyIdBytes = 16;

struct Entry {
    std::string_view type;
    uint64_t fields;  // bytes before the boxes inside
};

// ISO/IEC 14496-12 8.12 and 12; then what others write in the same way.
constexpr auto kEntries = std::to_array<Entry>({
        {"encv", 78},
        {"enca", 28},
        {"enct", 8},
        {"encs", 8},
        {"drmi", 78},
        {"drms", 28},
        {"drmt", 8},
        {"aavd", 28},
});

// QuickTime's versions 1 and 2 have more fields.
BoxContent insideEntry(const InputFile& file, const Entry& entry, BoxContent content) {
    constexpr uint64_t kAudioFields = 28;
    constexpr auto kFurther = std::to_array<uint64_t>({0, 16, 36});
    const BoxContent boxes = content.behind(entry.fields);
    std::array<uint8_t, 2> version{};
    const bool isAudio = entry.fields == kAudioFields;
    if (isAudio) file.readAt(static_cast<int64_t>(content.behind(8).begin), version);
    const bool isKnown = version[0] == 0 && version[1] < kFurther.size();
    return isKnown ? boxes.behind(kFurther[version[1]]) : boxes;
}

// ISO/IEC 14496-12 8.12.5: the four characters of the scheme, behind version and flags.
std::string readScheme(const InputFile& file, BoxContent info) {
    const auto box = findBox(file, info, "schm");
    const ByteVector bytes = box ? readContent(file, box->behind(4)) : ByteVector();
    return bytes.size() < 4 ? std::string() : std::string(bytes.begin(), bytes.begin() + 4);
}

// ISO/IEC 23001-7 8.2: version, flags, pattern; whether and how the samples are encrypted; the key.
std::string readDefaultKey(const InputFile& file, BoxContent info) {
    const auto scheme = findBox(file, info, "schi");
    const auto box = scheme ? findBox(file, *scheme, "tenc") : std::nullopt;
    const ByteVector bytes = box ? readContent(file, *box) : ByteVector();
    ByteCursor cursor(bytes);
    cursor.skip(6);
    const bool isProtected = cursor.u8() == 1;
    cursor.skip(1);
    const Bytes key = cursor.take(kKeyIdBytes);
    return isProtected && cursor.ok() ? hex(key, "") : std::string();
}

std::optional<Protection> readEntries(const InputFile& file, int track) {
    const auto entries = findSampleEntries(file, track);
    if (!entries) return {};
    for (const Entry& each : kEntries) {
        const auto entry = findBox(file, *entries, each.type);
        if (!entry) continue;
        Protection found{std::string(each.type), {}};
        if (const auto info = findBox(file, insideEntry(file, each, *entry), "sinf")) {
            const std::string scheme = readScheme(file, *info);
            if (!scheme.empty()) found.scheme = scheme;
            found.keyId = readDefaultKey(file, *info);
        }
        return found;
    }
    return {};
}

const char* metadataOf(const AVDictionary* dictionary, const char* key) {
    const AVDictionaryEntry* entry = av_dict_get(dictionary, key, nullptr, 0);
    return entry != nullptr ? entry->value : nullptr;
}

// Of a key in base 64.
std::string keyIdOf(const char* text) {
    std::array<uint8_t, 256> key{};
    const int size = text != nullptr ? av_base64_decode(key.data(), text, key.size()) : 0;
    return size > 0 ? hex(Bytes(key).first(static_cast<size_t>(size)), "") : std::string();
}

std::optional<Protection> readMatroskaTags(const AVStream& stream) {
    const char* key = metadataOf(stream.metadata, "enc_key_id");
    if (key == nullptr) return {};
    return Protection{"Matroska ContentEncryption", keyIdOf(key)};
}

// Of the file as a whole.
std::optional<Protection> readAsfTags(const AVFormatContext& context) {
    const char* type = metadataOf(context.metadata, "ASF_Protection_Type");
    if (type == nullptr) type = metadataOf(context.metadata, "encryption");
    if (type == nullptr) return {};
    return Protection{type, keyIdOf(metadataOf(context.metadata, "ASF_Key_ID"))};
}

}  // namespace

void findProtection(const OpenFile& open, const AVFormatContext& context,
                    std::span<Stream> streams) {
    const std::set<int> scrambled = scrambledStreams(open);
    for (Stream& each : streams) {
        const AVStream& stream = *context.streams[each.index];
        if (open.format() == "mov") each.protection = readEntries(open.input(), each.index);
        if (open.format() == "matroska") each.protection = readMatroskaTags(stream);
        if (open.format() == "asf") each.protection = readAsfTags(context);
        if (scrambled.contains(stream.id))
            each.protection = {open.formatName() + " scrambling", {}};
    }
}

}  // namespace inspect
