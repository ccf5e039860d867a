// The container parser's part: tells the library about a file and takes down what it makes of it.

#pragma once

#include <string>
#include <vector>

#include "inspect/callers/CodecData.h"
#include "inspect/callers/Format.h"
#include "inspect/callers/Hooks.h"
#include "inspect/callers/Tags.h"
#include "inspect/callers/Verdict.h"
#include "inspect/media/MediaFile.h"
#include "inspect/media/OpenFile.h"
#include "zrcodecparser/MediaExtractorHelper.h"

namespace inspect {

// What the library made of a track.
struct TrackFindings {
    Entries entries;
    std::vector<Record> records;  // of the codec data
    std::vector<CodecDatum> codecData;
    Verdict verdict;
    std::vector<std::string> notes;  // what went wrong beside the verdict
    std::vector<host::LogLine> log;
};

// Owns the platform's device, log sink and fatal handler while it lives: one at a time.
class Session {
public:
    explicit Session(host::Device device);
    ~Session();
    Session(const Session&) = delete;
    Session& operator=(const Session&) = delete;

    Entries describeFile(const MediaFile& file);
    // Nothing of a stream that is no track to the library.
    TrackFindings describeTrack(const Stream& stream, bool hasWholeFrames);
    Tags readTags(const OpenFile& open);

    // What the library has logged since the last call.
    std::vector<host::LogLine> takeLog();

private:
    host::Device mDevice;
    std::vector<host::LogLine> mLog;
    LogSink mSink;
    host::FatalHandler mFormerHandler;
    const android::sp<android::MediaExtractorHelper> mHelper = new android::MediaExtractorHelper;
};

}  // namespace inspect
