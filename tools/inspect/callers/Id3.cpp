#include "inspect/callers/Id3.h"

#include "inspect/media/Id3Header.h"
#include "zrcodecparser/ID3.h"

namespace inspect {
namespace {

using namespace android;

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

}  // namespace

std::optional<Tag> readId3(const InputFile& file, bool mayBeAtTheEnd, const TagLibrary& library) {
    FileSource source(file);
    DataSourceHelper bytes(source.record());
    const ID3 id3(&bytes, !mayBeAtTheEnd, 0);
    library.takeLog();  // it is all said again below
    const auto header = readId3Header(file, 0);
    if (!id3.isValid() && !header) return {};
    Tag tag;
    identify(tag, id3, file, header.value_or(ByteVector()));
    if (header && id3.version() < ID3::ID3_V2_2) {
        const std::string fault = id3Fault(file, *header);
        tag.notes.push_back("malformed ID3v2 tag at offset 0" +
                            (fault.empty() ? std::string() : ": " + fault));
    }
    library.read(tag, [&](AMediaFormat* format) {
        if (library.helper.parseID3v2MetaData(&bytes, !mayBeAtTheEnd, 0, format) == OK) {
            library.helper.parseID3GaplessInfo(&bytes, !mayBeAtTheEnd, 0, format);
        }
    });
    return tag;
}

}  // namespace inspect
