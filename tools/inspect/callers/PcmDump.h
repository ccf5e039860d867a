// A track's samples as the library converts them, in a WAV file.

#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "inspect/base/OutputFile.h"
#include "inspect/media/MediaFile.h"
#include "inspect/media/OpenFile.h"
#include "platform/Host.h"

namespace inspect {

struct PcmDump {
    std::string path;
    uint64_t frames;
    uint64_t cutBytes;  // of frames that are not whole, and not in it
};

// The index in the file's streams. Throws a FileError, which names the file, when there is none.
size_t firstPcmStream(const MediaFile& file);

// Writes the stream's samples and adds to the log what the library says, each line once. Shows on a
// terminal how far it is. Throws a FileError, which names the file at fault, and leaves nothing
// of what was written.
PcmDump dumpPcm(const std::string& path, const OutputRules& rules, const OpenFile& open,
                const Stream& stream, std::vector<host::LogLine>& log);

}  // namespace inspect
