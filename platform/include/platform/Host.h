// What the desktop stand-in of the platform lets a program say and see. Not there on a device.

#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <variant>
#include <vector>

#include "platform/MediaFormat.h"
#include "platform/SampleBuffer.h"

namespace android::host {

// The pretended device.
struct Device {
    std::vector<std::string> decoders{};    // MIME types that have a decoder, in codec-list order
    bool mediaServerAlive = true;           // "media.player" answers
    bool serverHasCodecList = true;         // the service's codec-list getter is non-null
    bool codecListAvailable = true;         // MediaCodecList::getInstance() is non-null
    bool codecInfoAvailable = true;         // the list's info getter is non-null
    std::optional<bool> divxAlternative{};  // the device feature flag
    // Told every MIME type for which a decoder is looked up; null = nobody.
    std::function<void(const std::string& mime)> onLookUp{};
};

// The device that is there before the first setDevice: the decoders of a typical phone.
Device typicalPhone();

// Replaces the device and returns the former one. May be called from any thread, also while others
// use the library.
Device setDevice(Device device);

struct LogLine {
    int priority;
    std::string tag;
    std::string text;
};
using LogSink = std::function<void(const LogLine&)>;

// Sends log lines to the sink and returns the former one. With a null sink, lines of priority
// warning and above go to standard error.
LogSink setLogSink(LogSink sink);

// Receives the text of a fatal assertion. It must not return normally: it aborts, throws or jumps.
using FatalHandler = void (*)(const char* text);

// Returns the former handler. With a null handler the text goes to standard error and the process
// aborts.
FatalHandler setFatalHandler(FatalHandler handler);

// A walk over a format: every entry in the order in which its key was first set.
using FormatValue = std::variant<int32_t, int64_t, std::string, std::vector<uint8_t>>;
struct FormatEntry {
    std::string key;
    FormatValue value;
};
std::vector<FormatEntry> formatEntries(const AMediaFormat* format);

// A sample buffer over memory of the caller's, which must outlive it. Keeps any offset, length and
// capacity as given, and whatever set_range says, unchecked.
class SampleBuffer : public MediaBufferHelper {
public:
    SampleBuffer(void* data, size_t capacity, size_t offset, size_t length);
    ~SampleBuffer() override;

    void* data() override;
    size_t size() override;
    size_t range_offset() override;
    size_t range_length() override;
    void set_range(size_t offset, size_t length) override;

private:
    void* mData;
    size_t mCapacity;
    size_t mOffset;
    size_t mLength;
};

}  // namespace android::host

namespace host = android::host;
