#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <new>
#include <string_view>

#include "Helper/base/Checked.h"
#include "Helper/base/Log.h"
#include "Helper/vorbis/Base64.h"
#include "Helper/vorbis/PictureBlock.h"
#include "zrcodecparser/FormatKeys.h"
#include "zrcodecparser/MediaExtractorHelper.h"

namespace android {
namespace {

enum class Storage { kText, kPicture, kLoop, kHaptic };

struct CommentRow {
    std::string_view name;
    const char* const* key;
    Storage storage;
};

// clang-format off
constexpr auto kCommentRows = std::to_array<CommentRow>({
        {"TITLE",                  &AMEDIAFORMAT_KEY_TITLE,                Storage::kText},
        {"ARTIST",                 &AMEDIAFORMAT_KEY_ARTIST,               Storage::kText},
        {"ALBUMARTIST",            &AMEDIAFORMAT_KEY_ALBUMARTIST,          Storage::kText},
        {"ALBUM ARTIST",           &AMEDIAFORMAT_KEY_ALBUMARTIST,          Storage::kText},
        {"COMPILATION",            &AMEDIAFORMAT_KEY_COMPILATION,          Storage::kText},
        {"ALBUM",                  &AMEDIAFORMAT_KEY_ALBUM,                Storage::kText},
        {"COMPOSER",               &AMEDIAFORMAT_KEY_COMPOSER,             Storage::kText},
        {"GENRE",                  &AMEDIAFORMAT_KEY_GENRE,                Storage::kText},
        {"AUTHOR",                 &AMEDIAFORMAT_KEY_AUTHOR,               Storage::kText},
        {"TRACKNUMBER",            &AMEDIAFORMAT_KEY_CDTRACKNUMBER,        Storage::kText},
        {"DISCNUMBER",             &AMEDIAFORMAT_KEY_DISCNUMBER,           Storage::kText},
        {"DATE",                   &AMEDIAFORMAT_KEY_DATE,                 Storage::kText},
        {"YEAR",                   &AMEDIAFORMAT_KEY_YEAR,                 Storage::kText},
        {"LYRICIST",               &AMEDIAFORMAT_KEY_LYRICIST,             Storage::kText},
        {"METADATA_BLOCK_PICTURE", &AMEDIAFORMAT_KEY_ALBUMART,             Storage::kPicture},
        {"ANDROID_LOOP",           &AMEDIAFORMAT_KEY_LOOP,                 Storage::kLoop},
        {"DESCRIPTION",            &ZREAMEDIAFORMAT_KEY_USERMESSAGE,       Storage::kText},
        {"UNSYNCEDLYRICS",         &ZREAMEDIAFORMAT_KEY_UNSYNCEDLYRICS,    Storage::kText},
        {"lvrm",                   &ZREAMEDIAFORMAT_KEY_RECMODE,           Storage::kText},
        {"ANDROID_HAPTIC",         &AMEDIAFORMAT_KEY_HAPTIC_CHANNEL_COUNT, Storage::kHaptic},
});
// clang-format on

constexpr char lowerCase(char character) {
    const bool isUpper = character >= 'A' && character <= 'Z';
    return isUpper ? static_cast<char>(character - 'A' + 'a') : character;
}

// Whether the text, which may be longer, begins with the word in any case.
bool startsWith(const char* text, std::string_view word) {
    for (const char character : word) {
        if (lowerCase(*text++) != lowerCase(character)) return false;
    }
    return true;
}

// The text after NAME=, or null for a comment of another name.
const char* valueOf(const char* comment, std::string_view name) {
    if (!startsWith(comment, name) || comment[name.size()] != '=') return nullptr;
    return comment + name.size() + 1;
}

void storePicture(AMediaFormat* fileMeta, const char* key, std::string_view value, size_t bound) {
    const auto size = vorbis::base64DecodedSize(value);
    const size_t room = std::min(value.size(), bound) / 4 * 3;
    if (!size || *size > room) {
        ZR_LOGE(base::kExtractorTag, "malformed base64 encoded data.");
        return;
    }
    const std::unique_ptr<uint8_t[]> block(new (std::nothrow) uint8_t[*size]);
    if (block == nullptr) return;
    if (!vorbis::base64Decode(value, block.get())) {
        ZR_LOGE(base::kExtractorTag, "malformed base64 encoded data.");
        return;
    }
    if (const auto picture = vorbis::frontCover({block.get(), *size})) {
        AMediaFormat_setBuffer(fileMeta, key, picture->data(), picture->size());
    }
}

void storeHapticCount(AMediaFormat* fileMeta, const char* key, const char* value) {
    errno = 0;
    const long count = std::strtol(value, nullptr, 10);
    if (errno != 0) {
        ZR_LOGE(base::kExtractorTag, "Error(%d) when parsing haptic channel count", errno);
        return;
    }
    AMediaFormat_setInt32(fileMeta, key, static_cast<int32_t>(count));
}

void store(AMediaFormat* fileMeta, const CommentRow& row, const char* value, size_t commentLength) {
    switch (row.storage) {
        case Storage::kText: AMediaFormat_setString(fileMeta, *row.key, value); break;
        case Storage::kPicture: {
            const size_t bound = base::checkedSub(commentLength, row.name.size() + 1);
            storePicture(fileMeta, *row.key, value, bound);
            break;
        }
        case Storage::kLoop:
            if (startsWith(value, "true") && value[4] == '\0') {
                AMediaFormat_setInt32(fileMeta, *row.key, 1);
            }
            break;
        case Storage::kHaptic: storeHapticCount(fileMeta, *row.key, value); break;
    }
}

}  // namespace

MediaExtractorHelper::MediaExtractorHelper() : mID3Wrapper(new ID3Wrapper) {}

MediaExtractorHelper::~MediaExtractorHelper() = default;

status_t MediaExtractorHelper::parseID3v2MetaData(const uint8_t* data, size_t size, bool ignoreV1,
                                                  AMediaFormat* meta) {
    return mID3Wrapper->parseID3v2MetaData(data, size, ignoreV1, meta);
}

status_t MediaExtractorHelper::parseID3v2MetaData(DataSourceHelper* source, bool ignoreV1,
                                                  off64_t offset, AMediaFormat* meta) {
    return mID3Wrapper->parseID3v2MetaData(source, ignoreV1, offset, meta);
}

status_t MediaExtractorHelper::parseID3GaplessInfo(DataSourceHelper* source, bool ignoreV1,
                                                   off64_t offset, AMediaFormat* meta) {
    return mID3Wrapper->parseID3GaplessInfo(source, ignoreV1, offset, meta);
}

void MediaExtractorHelper::parseVorbisComment(AMediaFormat* fileMeta, const char* comment,
                                              size_t commentLength) {
    const char initial = lowerCase(*comment);  // tells most rows apart
    for (const CommentRow& row : kCommentRows) {
        if (lowerCase(row.name.front()) != initial) continue;
        if (const char* value = valueOf(comment, row.name)) {
            store(fileMeta, row, value, commentLength);
        }
    }
    // These texts are UTF-8.
    AMediaFormat_setInt32(fileMeta, ZREAMEDIAFORMAT_KEY_MIXEDENCODINGTYPE, 0);
}

}  // namespace android
