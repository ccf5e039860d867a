// Input: a device's dump, which is read as a list of MIME types too.
//
// Aims at tools/inspect/devices/MediaPlayerDump, tools/inspect/devices/MimeList.

#include "Devices.h"
#include "inspect/devices/MediaPlayerDump.h"
#include "inspect/devices/MimeList.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    const std::string text(data, data + size);
    fuzz::checkDevice([&] { return inspect::readMediaPlayerDump(text, "dump"); });
    fuzz::checkDevice([&] { return inspect::readMimeList(text, "list"); });
    return 0;
}
