// What tests need of the platform's stand-in: formats that clean up, log lines and fatal texts
// caught.

#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <ostream>
#include <stdexcept>
#include <string>
#include <vector>

#include "platform/Host.h"
#include "platform/Log.h"
#include "platform/MediaFormat.h"

namespace test {

using Bytes = std::vector<uint8_t>;

// Bytes as pairs of digits, blanks wherever they help.
Bytes fromHex(const std::string& text);

// Bytes as a format prints them.
std::string dataText(const Bytes& data);

// A format of its own. The getters are empty when no value of that type stands under the key.
class Format {
public:
    AMediaFormat* get() const { return mFormat.get(); }
    std::optional<int32_t> int32(const char* key) const { return find(AMediaFormat_getInt32, key); }
    std::optional<int64_t> int64(const char* key) const { return find(AMediaFormat_getInt64, key); }
    std::optional<std::string> string(const char* key) const {
        return find(AMediaFormat_getString, key);
    }
    std::optional<Bytes> buffer(const char* key) const;
    // Every entry as the platform prints it, in the order in which the keys were first set.
    std::string text() const { return AMediaFormat_toString(get()); }
    std::optional<std::string> mime() const { return string(AMEDIAFORMAT_KEY_MIME); }

private:
    template <typename T>
    std::optional<T> find(bool (*getter)(AMediaFormat*, const char*, T*), const char* key) const {
        T value;
        return getter(get(), key, &value) ? std::optional(value) : std::nullopt;
    }
    struct Delete {
        void operator()(AMediaFormat* format) const { AMediaFormat_delete(format); }
    };
    std::unique_ptr<AMediaFormat, Delete> mFormat{AMediaFormat_new()};
};

struct Line {
    int priority;
    std::string text;
    bool operator==(const Line&) const = default;
};
std::ostream& operator<<(std::ostream& out, const Line& line);

// Collects the log lines of one tag while it lives.
class LogCapture {
public:
    explicit LogCapture(std::string tag = "MediaExtractorHelper");
    ~LogCapture();
    const std::vector<Line>& lines() const { return mLines; }

private:
    std::vector<Line> mLines;
    host::LogSink mFormer;
};

// What a call stores in a format, which is empty before, and logs: an entry's text for each line
// and for the stores between two lines, in the order in which they happen, separated by line ends.
std::string trace(const Format& format, const std::function<void()>& call,
                  const std::string& tag = "MediaExtractorHelper");

// The text of the fatal assertion that the call ends in, or empty when it returns.
std::string fatalText(const std::function<void()>& call);

// Puts the typical phone back when it goes.
class DeviceScope {
public:
    explicit DeviceScope(host::Device device) { host::setDevice(std::move(device)); }
    ~DeviceScope() { host::setDevice(host::typicalPhone()); }
};

}  // namespace test
