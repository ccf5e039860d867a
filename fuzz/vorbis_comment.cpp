// Input: by how much the given length falls short of the comment's, then a comment up to its NUL.
//
// Aims at Helper/MediaExtractorHelper/Tags.

#include <cerrno>

#include "Picture.h"

using fuzz::Bytes;
using fuzz::take;

namespace {

// Names in upper case, each with its key.
const std::string kKeys =
        ",TITLE=title,ARTIST=artist,ALBUMARTIST=albumartist,ALBUM ARTIST=albumartist,"
        "COMPILATION=compilation,ALBUM=album,COMPOSER=composer,GENRE=genre,AUTHOR=author,"
        "TRACKNUMBER=cdtracknum,DISCNUMBER=discnum,DATE=date,YEAR=year,LYRICIST=lyricist,"
        "METADATA_BLOCK_PICTURE=albumart,ANDROID_LOOP=loop,DESCRIPTION=user-message,"
        "UNSYNCEDLYRICS=unsynced-lyrics,LVRM=key-rec-mode,ANDROID_HAPTIC=haptic-channel-count,";

std::string upper(std::string text) {
    for (char& c : text) c = c >= 'a' && c <= 'z' ? static_cast<char>(c - 32) : c;
    return text;
}

// What a format prints for the front cover in a picture block.
std::string cover(Bytes block) {
    const auto picture = fuzz::frontCover(block);
    if (!picture) return "";
    const fuzz::Format format;
    AMediaFormat_setBuffer(format.get(), "albumart", picture->data(), picture->size());
    return AMediaFormat_toString(format.get());
}

// What the call logs, and what the format prints for the comment.
struct Result {
    std::string log, entry;
};

Result resultOf(const std::string& name, const std::string& value, size_t length) {
    const size_t row = kKeys.find("," + name + "=") + name.size() + 2;
    const std::string key = kKeys.substr(row, kKeys.find(',', row) - row) + ": ";
    if (name == "METADATA_BLOCK_PICTURE") {
        const auto block = fuzz::base64Decoded(value);
        const size_t room = std::min(value.size(), length - 23) / 4 * 3;
        if (!block || block->size() > room) return {"malformed base64 encoded data.", ""};
        return {"", cover(*block)};
    }
    if (name == "ANDROID_LOOP") return {"", upper(value) == "TRUE" ? key + "int32(1)" : ""};
    if (name != "ANDROID_HAPTIC") return {"", key + "string(" + value + ")"};
    errno = 0;
    const long count = std::strtol(value.c_str(), nullptr, 10);
    if (errno != 0) return {"Error(34) when parsing haptic channel count", ""};
    return {"", key + "int32(" + std::to_string(static_cast<int32_t>(count)) + ")"};
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    Bytes input(data, size);
    const size_t missing = take(input, 1);
    const std::string comment = std::string(input.begin(), input.end()).c_str();
    const size_t length = comment.size() - std::min(missing, comment.size());
    static std::string log;
    log.clear();
    android::host::setLogSink([](const android::host::LogLine& line) { log += line.text; });
    const fuzz::Format format;
    const bool fatal = fuzz::endsFatally(
            [&] { fuzz::helper->parseVorbisComment(format.get(), comment.c_str(), length); });

    const size_t nameSize = std::min(comment.find('='), comment.size());
    const std::string name = upper(comment.substr(0, nameSize));
    const bool known =
            nameSize < comment.size() && kKeys.find("," + name + "=") != std::string::npos;
    REQUIRE(fatal == (known && name == "METADATA_BLOCK_PICTURE" && length <= nameSize));
    if (fatal) return 0;
    const Result result = known ? resultOf(name, comment.substr(nameSize + 1), length) : Result();
    const std::string mixed =
            (result.entry.empty() ? "" : ", ") + std::string("mixed-encoding-type: int32(0)");
    REQUIRE(log == result.log && AMediaFormat_toString(format.get()) == result.entry + mixed);
    return 0;
}
