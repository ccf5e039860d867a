// The tags of a file, as the library reads them: what people see of it.

#pragma once

#include <string>
#include <vector>

#include "inspect/base/Bytes.h"
#include "inspect/callers/Format.h"
#include "inspect/media/OpenFile.h"

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

// Finds the tags as a container parser does and lets the library read them: ID3 at the start of any
// file, and at the end of MP3 and ADTS; the Vorbis comments of Ogg and FLAC. Belongs into a
// Session's life.
Tags readTags(const OpenFile& open);

}  // namespace inspect
