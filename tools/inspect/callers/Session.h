// The container parser's part: tells the library about a file and takes down what it makes of it.

#pragma once

#include <string>
#include <vector>

#include "inspect/callers/CodecData.h"
#include "inspect/callers/Format.h"
#include "inspect/callers/Hooks.h"
#include "inspect/media/MediaFile.h"
#include "zrcodecparser/MediaExtractorHelper.h"
#include "zrcodecparser/TrackInfo.h"

namespace inspect {

// What the library made of a track.
struct TrackFindings {
    Entries entries;
    std::vector<Record> records;  // of the codec data
    std::vector<CodecDatum> codecData;
    std::vector<std::string> notes;  // what else is to be known
    std::string fatal;               // the assertion that its codec data fail; empty = none
    std::vector<host::LogLine> log;
};

// Owns the platform's device, log sink and fatal handler while it lives: one at a time.
class Session {
public:
    // Detail: of the records in the findings.
    explicit Session(host::Device device, Detail detail = Detail::kFacts);
    Session(const Session&) = delete;
    Session& operator=(const Session&) = delete;

    Entries describeFile(const MediaFile& file);
    // Nothing of a stream that is no track to the library.
    TrackFindings describeTrack(const Stream& stream, bool hasWholeFrames);

    // What the library has logged since the last call.
    std::vector<host::LogLine> takeLog();

private:
    void takeCodecData(const Stream& stream, android::TrackInfo& info, const Format& format,
                       TrackFindings& found);

    OnDevice mDevice;
    const Detail mDetail;
    std::vector<host::LogLine> mLog;
    LogSink mSink;
    const android::sp<android::MediaExtractorHelper> mHelper = new android::MediaExtractorHelper;
};

}  // namespace inspect
