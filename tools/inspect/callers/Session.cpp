#include "inspect/callers/Session.h"

#include <algorithm>
#include <iterator>
#include <utility>

#include "inspect/callers/Offer.h"
#include "inspect/callers/PcmFormat.h"
#include "inspect/records/Record.h"
#include "platform/Log.h"
#include "zrcodecparser/CodecType.h"
#include "zrcodecparser/FormatKeys.h"
#include "zrcodecparser/MediaDefs.h"
#include "zrcodecparser/TrackInfo.h"

namespace inspect {
namespace {

using namespace android;

status_t storeCodecData(MediaExtractorHelper& helper, const Stream& stream, TrackInfo& info,
                        AMediaFormat* format) {
    const uint8_t* data = stream.privateData.data();
    size_t size = stream.privateData.size();
    if (size == 0) return OK;
    if (stream.kind == Kind::kAudio) {
        return helper.setAudioConfig(info.codecType, data, &size, format);
    }
    if (stream.kind == Kind::kVideo) return helper.setVideoConfig(&info, data, size, format);
    return OK;
}

bool holdsUnchanged(const Entries& entries, const ByteVector& privateData) {
    return std::ranges::any_of(entries, [&](const host::FormatEntry& entry) {
        const auto* bytes = std::get_if<ByteVector>(&entry.value);
        return bytes != nullptr && *bytes == privateData;
    });
}

// What the codec data operation wrote to the log, in one line.
std::string failureNote(status_t status, const std::vector<host::LogLine>& log, size_t first) {
    std::string texts;
    for (size_t i = first; i < log.size(); i++) {
        if (log[i].priority >= ANDROID_LOG_WARN) texts += (texts.empty() ? "" : "; ") + log[i].text;
    }
    if (status == OK) return texts.empty() ? texts : "codec data: " + texts;
    return "codec data: status " + std::to_string(status) + (texts.empty() ? "" : ": ") + texts;
}

constexpr const char* kPassedOn =
        "codec data: a finished HEVC record, which is passed on as it is; that is meant";

bool isFinishedHevcRecord(uint32_t codecType, const std::vector<Record>& records) {
    return codecType == kCodecTypeHevc && !records.empty() && records.front().isConfiguration();
}

// A container parser's own part: the library has the types, and no code for what is behind them.
void storeScrambled(const Stream& stream, const Format& format) {
    const bool isVideo = stream.kind == Kind::kVideo;
    if (!isVideo && stream.kind != Kind::kAudio) return;
    AMediaFormat_setString(
            format.get(), AMEDIAFORMAT_KEY_MIME,
            isVideo ? ZRE_MEDIA_MIMETYPE_VIDEO_SCRAMBLED : ZRE_MEDIA_MIMETYPE_AUDIO_SCRAMBLED);
}

}  // namespace

Session::Session(host::Device device, Detail detail)
    : mDevice(std::move(device)),
      mDetail(detail),
      mSink([this](const host::LogLine& line) { mLog.push_back(line); }) {}

std::vector<host::LogLine> Session::takeLog() {
    return std::exchange(mLog, {});
}

Entries Session::describeFile(const MediaFile& file) {
    const Format format;
    const Container& container = file.container;
    if (container.fileKind != 0) mHelper->setFileMeta(container.fileKind, format.get());
    if (container.mime != nullptr) {
        AMediaFormat_setString(format.get(), AMEDIAFORMAT_KEY_MIME, container.mime);
    }
    if (file.durationUs) mHelper->setDuration(*file.durationUs, format.get());
    return format.entries();
}

TrackFindings Session::describeTrack(const Stream& stream, bool hasWholeFrames) {
    TrackFindings found;
    if (stream.kind == Kind::kOther) return found;

    const Format format;
    TrackInfo info = trackInfo(stream, hasWholeFrames);
    try {
        mHelper->setTrackMeta(&info, format.get(), !hasWholeFrames);
    } catch (const LibraryFatal&) {
        // Depends on the device; the verdict tells.
    }
    if (stream.protection) storeScrambled(stream, format);
    if (stream.durationUs) mHelper->setDuration(*stream.durationUs, format.get());
    if (stream.codecType == kCodecTypeAacAdts) {
        AMediaFormat_setInt32(format.get(), ZREAMEDIAFORMAT_KEY_ISADTS, 1);
    }
    try {
        takeCodecData(stream, info, format, found);
    } catch (const LibraryFatal& fatal) {
        found.fatal = fatal.what();
    }
    if (isPcm(stream) && findPcmFormat(stream) == nullptr) {
        found.notes.push_back(whyNotTo16(stream, *mHelper));
    }
    found.entries = format.entries();
    found.log = takeLog();
    return found;
}

void Session::takeCodecData(const Stream& stream, TrackInfo& info, const Format& format,
                            TrackFindings& found) {
    const Entries before = format.entries();
    const size_t logged = mLog.size();
    const status_t status = storeCodecData(*mHelper, stream, info, format.get());
    const FormatChange change = {before, format.entries()};
    found.records = readCodecData(stream, change, mDetail);
    std::string note = failureNote(status, mLog, logged);
    if (status != OK && holdsUnchanged(change.after, stream.privateData)) {
        const bool isMeant = isFinishedHevcRecord(stream.codecType, found.records);
        note = isMeant ? kPassedOn : note + "; stored unchanged all the same";
    }
    if (!note.empty()) found.notes.push_back(note);
    found.codecData = describeCodecData(found.records, change);
    std::ranges::move(contradictions(stream, found.records), std::back_inserter(found.notes));
}

}  // namespace inspect
