#include "zrcodecparser/ID3Wrapper.h"

#include <strings.h>

#include <array>
#include <cstdio>
#include <cstring>
#include <optional>

#include "Helper/base/Log.h"
#include "ParserLibrary/id3/FrameString.h"
#include "ParserLibrary/id3/Frames.h"
#include "platform/MediaFormat.h"
#include "platform/Strings.h"
#include "zrcodecparser/FormatKeys.h"

namespace android {
namespace {

constexpr const char* kTag = "ID3Wrapper";

struct TextRow {
    const char* const* key;
    id3::FrameId firstId;
    id3::FrameId secondId;
};

constexpr auto idOf = id3::frameId;

// clang-format off
constexpr auto kTextRows = std::to_array<TextRow>({
        {&AMEDIAFORMAT_KEY_ALBUM,         idOf("TALB"), idOf("TAL")},
        {&AMEDIAFORMAT_KEY_ARTIST,        idOf("TPE1"), idOf("TP1")},
        {&AMEDIAFORMAT_KEY_ALBUMARTIST,   idOf("TPE2"), idOf("TP2")},
        {&AMEDIAFORMAT_KEY_COMPOSER,      idOf("TCOM"), idOf("TCM")},
        {&AMEDIAFORMAT_KEY_GENRE,         idOf("TCON"), idOf("TCO")},
        {&AMEDIAFORMAT_KEY_TITLE,         idOf("TIT2"), idOf("TT2")},
        {&AMEDIAFORMAT_KEY_YEAR,          idOf("TYE"),  idOf("TYER")},
        {&AMEDIAFORMAT_KEY_AUTHOR,        idOf("TXT"),  idOf("TEXT")},
        {&AMEDIAFORMAT_KEY_CDTRACKNUMBER, idOf("TRK"),  idOf("TRCK")},
        {&AMEDIAFORMAT_KEY_DISCNUMBER,    idOf("TPA"),  idOf("TPOS")},
        {&AMEDIAFORMAT_KEY_COMPILATION,   idOf("TCP"),  idOf("TCMP")},
});
// clang-format on

// What the flag stands for is the source's own affair.
constexpr uint32_t kNotReadFlag = 0x40;

bool isWebAddress(const CDataSource& source) {
    char uri[10] = {};
    if (!source.getUri(source.handle, uri, sizeof(uri))) return false;
    return strncasecmp(uri, "http://", 7) == 0 || strncasecmp(uri, "https://", 8) == 0;
}

bool isStreamed(DataSourceHelper* source, const CDataSource& record) {
    return isWebAddress(record) && (source->flags() & kNotReadFlag) != 0;
}

struct Gapless {
    unsigned delay;
    unsigned padding;
};

// Four hexadecimal numbers: 0, encoder delay, padding, length; all in samples. The numbers are not
// bounded: a width would change which texts are accepted.
std::optional<Gapless> readGapless(const String8& text) {
    Gapless gapless;
    // NOLINTNEXTLINE(cert-err34-c): what is too large is taken as sscanf leaves it
    if (std::sscanf(text.c_str(), " %*x %x %x %*x", &gapless.delay, &gapless.padding) != 2) {
        return std::nullopt;
    }
    return gapless;
}

// A comment's text begins with its language and description.
bool isGaplessComment(const String8& comment) {
    constexpr size_t kLanguageSize = 3;
    return comment.size() > kLanguageSize &&
           std::strcmp(comment.c_str() + kLanguageSize, "iTunSMPB") == 0;
}

void storeGapless(ID3::Iterator& comment, AMediaFormat* meta) {
    for (; !comment.done(); comment.next()) {
        String8 id;
        String8 text;
        comment.getString(&id, &text);
        if (!isGaplessComment(id)) continue;
        if (const auto gapless = readGapless(text)) {
            AMediaFormat_setInt32(meta, AMEDIAFORMAT_KEY_ENCODER_DELAY,
                                  static_cast<int32_t>(gapless->delay));
            AMediaFormat_setInt32(meta, AMEDIAFORMAT_KEY_ENCODER_PADDING,
                                  static_cast<int32_t>(gapless->padding));
        }
        return;
    }
}

}  // namespace

ID3Wrapper::ID3Wrapper() = default;

ID3Wrapper::~ID3Wrapper() = default;

status_t ID3Wrapper::parseID3(AMediaFormat* meta, ID3& id3) {
    if (!id3.isValid()) return AMEDIA_ERROR_MALFORMED;
    AMediaFormat_setInt32(meta, ZREAMEDIAFORMAT_KEY_MIXEDENCODINGTYPE,
                          static_cast<int32_t>(id3.isMixedEncodingtype()));
    const id3::TagView tag = id3.view();
    const auto frames = id3::chooseFrames(tag, kTextRows);
    String8 text;
    for (size_t i = 0; i < frames.size(); ++i) {
        if (frames[i].size == 0) continue;
        id3::setFrameText(&text, tag, frames[i].offset, frames[i].size, {});
        AMediaFormat_setString(meta, *kTextRows[i].key, text.c_str());
    }
    size_t size = 0;
    String8 mime;
    if (const void* picture = id3.getAlbumArt(&size, &mime)) {
        AMediaFormat_setBuffer(meta, AMEDIAFORMAT_KEY_ALBUMART, picture, size);
    }
    return OK;
}

status_t ID3Wrapper::parseID3v2MetaData(const uint8_t* data, size_t size, bool ignoreV1,
                                        AMediaFormat* meta) {
    ID3 id3(data, size, ignoreV1);
    return parseID3(meta, id3);
}

status_t ID3Wrapper::parseID3v2MetaData(DataSourceHelper* source, bool ignoreV1, off64_t offset,
                                        AMediaFormat* meta) {
    if (isStreamed(source, *source->mSource)) return AMEDIA_ERROR_MALFORMED;
    DataSourceHelper helper(source->mSource);
    ID3 id3(&helper, ignoreV1, offset);
    return parseID3(meta, id3);
}

status_t ID3Wrapper::parseID3GaplessInfo(DataSourceHelper* source, bool ignoreV1, off64_t,
                                         AMediaFormat* meta) {
    if (isStreamed(source, *source->mSource)) return AMEDIA_ERROR_MALFORMED;
    DataSourceHelper helper(source->mSource);
    const ID3 id3(&helper, ignoreV1, 0);
    if (!id3.isValid()) return AMEDIA_ERROR_MALFORMED;

    ID3::Iterator comment(id3, "COM");
    if (!comment.done()) {
        storeGapless(comment, meta);
        return OK;
    }
    ID3::Iterator commentV2_3(id3, "COMM");
    ZR_LOGI(kTag, "ID3Wrapper com->done() : id3 is COMM");
    storeGapless(commentV2_3, meta);
    return OK;
}

}  // namespace android
