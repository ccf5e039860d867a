#include "inspect/callers/Tags.h"

#include <strings.h>

#include <algorithm>
#include <array>

#include "inspect/callers/Hooks.h"
#include "inspect/callers/Id3.h"
#include "inspect/media/Comments.h"
#include "platform/Log.h"

namespace inspect {
namespace {

constexpr const char* kPictureName = "METADATA_BLOCK_PICTURE";

void noteOnce(Tag& tag, const std::string& note) {
    constexpr size_t kMaxNotes = 16;
    if (tag.notes.size() >= kMaxNotes || std::ranges::count(tag.notes, note) > 0) return;
    tag.notes.push_back(note);
}

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

Tag readComments(const CommentHeader& comments, const TagLibrary& library) {
    Tag tag;
    tag.kind = "Vorbis comment";
    tag.place = comments.codec + " stream, " + comments.place;
    tag.notes = comments.notes;
    for (const std::string& each : comments.list) {
        tag.names.push_back(each.substr(0, each.find('=')));
        if (each.find('=') == std::string::npos) noteOnce(tag, "comments without \"=\" are lost");
        if (each.find('\0') != std::string::npos) noteOnce(tag, "what follows a NUL is lost");
    }
    library.read(tag, [&](AMediaFormat* format) {
        for (const std::string& each : comments.list) {
            const std::string text = each.c_str();
            library.helper.parseVorbisComment(format, text.c_str(), text.size());
        }
    });
    return tag;
}

void addComments(std::vector<Tag>& tags, const CommentHeaders& headers, const TagLibrary& library) {
    if (headers.list.empty() && headers.notes.empty() && headers.picture.empty()) return;
    for (const CommentHeader& each : headers.list) tags.push_back(readComments(each, library));
    if (headers.list.empty()) {
        tags.emplace_back().kind = "Vorbis comment";
        tags.back().place = "none found";
    }
    Tag& last = tags.back();
    last.notes.insert(last.notes.end(), headers.notes.begin(), headers.notes.end());
    notePictures(last, headers);
}

struct Row {
    std::string_view format;
    CommentHeaders (*find)(const InputFile&);  // null = it has ID3 tags, also at its end
};
constexpr auto kRows = std::to_array<Row>({
        {"mp3", nullptr},
        {"aac", nullptr},
        {"flac", findFlacComments},
        {"ogg", findOggComments},
});

}  // namespace

void TagLibrary::read(Tag& tag, const std::function<void(AMediaFormat*)>& fill) const {
    const Format format;
    try {
        fill(format.get());
    } catch (const LibraryFatal& fatal) {
        tag.notes.push_back(std::string("the library would end the process: ") + fatal.what());
    }
    tag.entries = format.entries();
    tag.log = takeLog();
    for (const host::LogLine& line : tag.log) {
        if (line.priority >= ANDROID_LOG_WARN) noteOnce(tag, "logged: " + line.text);
    }
}

Tags readTags(const OpenFile& open, const TagLibrary& library) {
    const auto row = std::ranges::find(kRows, open.format(), &Row::format);
    const bool isKnown = row != kRows.end();
    const bool hasComments = isKnown && row->find != nullptr;
    Tags tags;
    if (auto tag = readId3(open.input(), isKnown && !hasComments, library))
        tags.list.push_back(*tag);
    if (hasComments) addComments(tags.list, row->find(open.input()), library);
    tags.areLookedFor = isKnown || !tags.list.empty();
    return tags;
}

}  // namespace inspect
