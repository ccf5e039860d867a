/// @file
/// What the desktop stand-in of the platform lets a program say and see. Not there on a device.

#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <variant>
#include <vector>

#include "platform/MediaFormat.h"
#include "platform/SampleBuffer.h"

/// The desktop stand-in of the platform.
namespace android::host {

/// The pretended device.
struct Device {
    std::vector<std::string> decoders{};    ///< MIME types that have a decoder, in codec-list order
    bool mediaServerAlive = true;           ///< "media.player" answers
    bool serverHasCodecList = true;         ///< the service's codec-list getter is non-null
    bool codecListAvailable = true;         ///< MediaCodecList::getInstance() is non-null
    bool codecInfoAvailable = true;         ///< the list's info getter is non-null
    std::optional<bool> divxAlternative{};  ///< the device feature flag
    /// Told every MIME type for which a decoder is looked up; null = nobody.
    std::function<void(const std::string& mime)> onLookUp{};
};

/// The device that is there before the first setDevice: the decoders of a typical phone.
Device typicalPhone();

/// Replaces the device and returns the former one. May be called from any thread, also while others
/// use the library.
Device setDevice(Device device);

/// A line of the system log.
struct LogLine {
    int priority;      ///< an ANDROID_LOG_ number of platform/Log.h
    std::string tag;   ///< who says it
    std::string text;  ///< without an end of line
};
/// Receives log lines, from any thread that logs.
using LogSink = std::function<void(const LogLine&)>;

/// Sends log lines to the sink and returns the former one. With a null sink, lines of priority
/// warning and above go to standard error.
LogSink setLogSink(LogSink sink);

/// Receives the text of a fatal assertion, in the thread that made the call, and must not return:
/// it ends the process, throws or jumps.
using FatalHandler = void (*)(const char* text);

/// Takes the handler for fatal assertions and returns the former one. With a null handler the text
/// goes to standard error and the process aborts.
FatalHandler setFatalHandler(FatalHandler handler);

/// A value of a format.
using FormatValue = std::variant<int32_t, int64_t, std::string, std::vector<uint8_t>>;
/// An entry of a format.
struct FormatEntry {
    std::string key;    ///< as it was set
    FormatValue value;  ///< bytes for a buffer
};
/// A walk over a format: every entry in the order in which its key was first set. Stored in an
/// AMessage one by one, under their keys, they are what decoder glue gets of a track.
std::vector<FormatEntry> formatEntries(const AMediaFormat* format);

/// A sample buffer over memory of the caller's, which must outlive it. Keeps any offset, length and
/// capacity as given, and whatever set_range says, unchecked.
class SampleBuffer : public MediaBufferHelper {
public:
    /// Over these bytes, with a first range.
    SampleBuffer(void* data, size_t capacity, size_t offset, size_t length);
    ~SampleBuffer() override;  ///< leaves the bytes as they are

    /// @{
    /// What the constructor or set_range was told.
    void* data() override;
    size_t size() override;
    size_t range_offset() override;
    size_t range_length() override;
    /// @}
    /// Takes a new range as given.
    void set_range(size_t offset, size_t length) override;

private:
    void* mData;
    size_t mCapacity;
    size_t mOffset;
    size_t mLength;
};

}  // namespace android::host

/// As programs write it.
namespace host = android::host;
