// The container parser's part: tells the library about a file and takes down what it makes of it.

#pragma once

#include "inspect/report/Report.h"
#include "platform/Host.h"
#include "zrcodecparser/MediaExtractorHelper.h"

namespace inspect {

// Owns the platform's device, log sink and fatal handler while it lives: one at a time.
class Session {
public:
    explicit Session(host::Device device);
    ~Session();
    Session(const Session&) = delete;
    Session& operator=(const Session&) = delete;

    FileReport describe(const MediaFile& file);

    // What the library has logged since the last call.
    std::vector<host::LogLine> takeLog();

private:
    TrackReport describeTrack(android::MediaExtractorHelper& helper, const Stream& stream,
                              bool hasWholeFrames);

    host::Device mDevice;
    std::vector<host::LogLine> mLog;
    host::LogSink mFormerSink;
    host::FatalHandler mFormerHandler;
};

}  // namespace inspect
