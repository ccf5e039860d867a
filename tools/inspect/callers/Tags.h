// The tags of a file, as the library reads them: what people see of it.

#pragma once

#include <functional>
#include <stdexcept>
#include <string>
#include <vector>

#include "inspect/base/Bytes.h"
#include "inspect/callers/Format.h"
#include "zrcodecparser/MediaExtractorHelper.h"

namespace inspect {

struct Tag {
    std::string kind;                // "ID3v2.4", "Vorbis comment"
    std::string place;               // where it stands, in words
    std::vector<std::string> names;  // of all frames or comments, known to the library or not
    Entries entries;
    std::vector<std::string> notes;  // what is wrong with it
    std::vector<host::LogLine> log;
    std::string pictureFile;  // where its picture was written

    const ByteVector* picture() const {
        return findValue<ByteVector>(entries, AMEDIAFORMAT_KEY_ALBUMART);
    }
};

struct Tags {
    bool areLookedFor = false;  // in files of this kind
    std::vector<Tag> list;
};

// A fatal assertion of the library: on a device the process would have ended.
struct LibraryFatal : std::runtime_error {
    using std::runtime_error::runtime_error;
};

struct TagLibrary {
    android::MediaExtractorHelper& helper;
    std::function<std::vector<host::LogLine>()> takeLog;

    // Lets the library fill the tag's format, and takes down what goes wrong.
    void read(Tag& tag, const std::function<void(AMediaFormat*)>& fill) const;
};

// Finds the tags as a container parser does and lets the library read them: ID3 at the start of any
// file, and at the end of MP3 and ADTS; the Vorbis comments of Ogg and FLAC. format is the
// demuxer's name of the file's kind. Throws a FileError for a file that can no longer be read.
Tags readTags(const std::string& path, std::string_view format, const TagLibrary& library);

// What is wrong at the beginning of a file whose kind its first bytes tell; empty when nothing is.
std::string faultBeforeMedia(const std::string& path);

}  // namespace inspect
