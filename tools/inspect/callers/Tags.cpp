#include "inspect/callers/Tags.h"

#include <strings.h>

#include <algorithm>
#include <array>
#include <functional>

#include "inspect/callers/Hooks.h"
#include "inspect/media/Comments.h"
#include "inspect/media/Id3Header.h"
#include "platform/Log.h"
#include "zrcodecparser/ID3.h"
#include "zrcodecparser/MediaExtractorHelper.h"

namespace inspect {
namespace {

using namespace android;

void noteOnce(Tag& tag, const std::string& note) {
    constexpr size_t kMaxNotes = 16;
    if (tag.notes.size() >= kMaxNotes || std::ranges::count(tag.notes, note) > 0) return;
    tag.notes.push_back(note);
}

// Lets the library fill the tag's format, and takes down what goes wrong.
void read(Tag& tag, const std::function<void(MediaExtractorHelper&, AMediaFormat*)>& fill) {
    const LogSink sink([&tag](const host::LogLine& line) { tag.log.push_back(line); });
    const sp<MediaExtractorHelper> helper = new MediaExtractorHelper;
    const Format format;
    try {
        fill(*helper, format.get());
    } catch (const LibraryFatal& fatal) {
        tag.notes.push_back(std::string("the library would end the process: ") + fatal.what());
    }
    tag.entries = format.entries();
    for (const host::LogLine& line : tag.log) {
        if (line.priority >= ANDROID_LOG_WARN) noteOnce(tag, "logged: " + line.text);
    }
}

// The platform's record of a source of bytes, over a file.
class FileSource {
public:
    explicit FileSource(const InputFile& file)
        : mFile(file), mRecord{readAt, getSize, flags, getUri, this} {}
    FileSource(const FileSource&) = delete;
    FileSource& operator=(const FileSource&) = delete;

    CDataSource* record() { return &mRecord; }

private:
    static const InputFile& fileOf(void* self) { return static_cast<FileSource*>(self)->mFile; }
    static ssize_t readAt(void* self, off64_t offset, void* data, size_t size) {
        return fileOf(self).readAt(offset, std::span(static_cast<uint8_t*>(data), size));
    }
    static int32_t getSize(void* self, off64_t* size) {
        *size = fileOf(self).size();
        return OK;
    }
    static uint32_t flags(void*) { return 0; }
    static bool getUri(void*, char*, size_t) { return false; }

    const InputFile& mFile;
    CDataSource mRecord;
};

const char* nameOf(ID3::Version version) {
    switch (version) {
        case ID3::ID3_V1: return "ID3v1";
        case ID3::ID3_V1_1: return "ID3v1.1";
        case ID3::ID3_V2_2: return "ID3v2.2";
        case ID3::ID3_V2_3: return "ID3v2.3";
        case ID3::ID3_V2_4: return "ID3v2.4";
        default: return "ID3v2";
    }
}

// What the format does not tell: which tag it is and what else it holds.
void identify(Tag& tag, const ID3& id3, const InputFile& file, Bytes header) {
    constexpr int64_t kTrailerSize = 128;
    tag.kind = nameOf(id3.version());
    if (!id3.isValid()) {
        tag.place = "at offset 0, refused by the library";
        return;
    }
    const bool isTrailer = id3.version() < ID3::ID3_V2_2;
    const int64_t sizeBytes =
            isTrailer ? kTrailerSize : kId3HeaderSize + syncsafe(header.subspan(6)).value_or(0);
    tag.place = std::to_string(sizeBytes) + " bytes at offset " +
                std::to_string(isTrailer ? file.size() - sizeBytes : 0);
    for (ID3::Iterator frame(id3, nullptr); !frame.done(); frame.next()) {
        String8 id;
        frame.getID(&id);
        tag.names.emplace_back(id.c_str());
    }
}

// The tag at the start of the file, or else, where files of its kind may have one, at its end.
std::optional<Tag> readId3(const InputFile& file, bool mayBeAtTheEnd) {
    FileSource source(file);
    DataSourceHelper bytes(source.record());
    const auto id3 = [&] {
        const LogSink silence(LogSink::drop);  // it is all said again below
        return ID3(&bytes, !mayBeAtTheEnd, 0);
    }();
    const auto header = readId3Header(file, 0);
    if (!id3.isValid() && !header) return {};
    Tag tag;
    identify(tag, id3, file, header.value_or(ByteVector()));
    if (header && id3.version() < ID3::ID3_V2_2) {
        const std::string fault = id3Fault(file, *header);
        tag.notes.push_back("malformed ID3v2 tag at offset 0" +
                            (fault.empty() ? std::string() : ": " + fault));
    }
    read(tag, [&](MediaExtractorHelper& helper, AMediaFormat* format) {
        if (helper.parseID3v2MetaData(&bytes, !mayBeAtTheEnd, 0, format) == OK) {
            helper.parseID3GaplessInfo(&bytes, !mayBeAtTheEnd, 0, format);
        }
    });
    return tag;
}

constexpr const char* kPictureName = "METADATA_BLOCK_PICTURE";

// The library passes over pictures in silence.
void notePictures(Tag& tag, const CommentHeaders& headers) {
    if (tag.picture() != nullptr) return;
    if (std::ranges::any_of(tag.names, [](const std::string& name) {
            return strcasecmp(name.c_str(), kPictureName) == 0;
        })) {
        tag.notes.push_back(std::string("no picture taken from ") + kPictureName +
                            ": only a whole front cover (type 3) counts, and no link");
    }
    if (!headers.picture.empty()) {
        tag.notes.push_back(headers.picture + ", which the library does not read");
    }
}

Tag readComments(const CommentHeader& comments) {
    Tag tag;
    tag.kind = "Vorbis comment";
    tag.place = comments.codec + " stream, " + comments.place;
    tag.notes = comments.notes;
    for (const std::string& each : comments.list) {
        tag.names.push_back(each.substr(0, each.find('=')));
        if (each.find('=') == std::string::npos) noteOnce(tag, "comments without \"=\" are lost");
        if (each.find('\0') != std::string::npos) noteOnce(tag, "what follows a NUL is lost");
    }
    read(tag, [&](MediaExtractorHelper& helper, AMediaFormat* format) {
        for (const std::string& each : comments.list) {
            const std::string text(each, 0, each.find('\0'));
            helper.parseVorbisComment(format, text.c_str(), text.size());
        }
    });
    return tag;
}

void addComments(std::vector<Tag>& tags, const CommentHeaders& headers) {
    if (headers.list.empty() && headers.notes.empty() && headers.picture.empty()) return;
    for (const CommentHeader& each : headers.list) tags.push_back(readComments(each));
    if (headers.list.empty()) {
        tags.emplace_back().kind = "Vorbis comment";
        tags.back().place = "none found";
    }
    Tag& last = tags.back();
    last.notes.insert(last.notes.end(), headers.notes.begin(), headers.notes.end());
    notePictures(last, headers);
}

struct TagFormat {
    std::string_view format;
    CommentHeaders (*find)(const InputFile&);  // null = it has ID3 tags, also at its end
};
constexpr auto kTagFormats = std::to_array<TagFormat>({
        {"mp3", nullptr},
        {"aac", nullptr},
        {"flac", findFlacComments},
        {"ogg", findOggComments},
});

}  // namespace

Tags readTags(const OpenFile& open) {
    const auto row = std::ranges::find(kTagFormats, open.format(), &TagFormat::format);
    const bool isKnown = row != kTagFormats.end();
    const bool hasComments = isKnown && row->find != nullptr;
    Tags tags;
    if (auto tag = readId3(open.input(), isKnown && !hasComments)) tags.list.push_back(*tag);
    if (hasComments) addComments(tags.list, row->find(open.input()));
    tags.areLookedFor = isKnown || !tags.list.empty();
    return tags;
}

}  // namespace inspect
