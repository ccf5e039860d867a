#include "inspect/callers/Session.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <iterator>
#include <utility>

#include "inspect/callers/PcmFormat.h"
#include "inspect/records/Record.h"
#include "platform/Log.h"
#include "zrcodecparser/CodecType.h"
#include "zrcodecparser/FormatKeys.h"
#include "zrcodecparser/TrackInfo.h"

namespace inspect {
namespace {

using namespace android;

[[noreturn]] void throwFatal(const char* text) {
    throw LibraryFatal(text);
}

const char* orNull(const std::string& text) {
    return text.empty() ? nullptr : text.c_str();
}

TrackInfo::Video videoInfo(const Stream& stream, bool hasWholeFrames) {
    return {.width = stream.video.width,
            .height = stream.video.height,
            .bitRate = stream.bitRate,
            .frameRate = stream.video.frameRate,
            .hasSyncFrame = hasWholeFrames};
}

TrackInfo::Audio audioInfo(const Stream& stream) {
    TrackInfo::Audio info{};
    info.channelCount = stream.audio.channelCount;
    info.sampleRate = stream.audio.sampleRate;
    info.bitsPerSample = stream.audio.bitsPerSample;
    info.bitRate = stream.bitRate;
    info.blockAlign = stream.audio.blockAlign;
    info.language = orNull(stream.language);
    std::memcpy(info.codecDelay, &stream.audio.codecDelayNs, sizeof info.codecDelay);
    std::memcpy(info.seekPreRoll, &stream.audio.seekPreRollNs, sizeof info.seekPreRoll);
    return info;
}

TrackInfo::Text textInfo(const Stream& stream) {
    return {.isBitmapSubtitle = stream.text.isBitmap,
            .isUnsupportedBitmap = stream.text.isUnsupportedBitmap,
            .bitmapLanguage = orNull(stream.language),
            .textLanguage = stream.language.empty() ? "und" : stream.language.c_str()};
}

// The record points into the stream.
TrackInfo trackInfo(const Stream& stream, bool hasWholeFrames) {
    TrackInfo info{};
    info.codecType = stream.codecType;
    switch (stream.kind) {
        case Kind::kVideo:
            info.trackType = kTrackTypeVideo;
            info.video = videoInfo(stream, hasWholeFrames);
            break;
        case Kind::kAudio:
            info.trackType = kTrackTypeAudio;
            info.audio = audioInfo(stream);
            break;
        default:
            info.trackType = kTrackTypeText;
            info.text = textInfo(stream);
            break;
    }
    return info;
}

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
constexpr const char* kNoCodecData =
        "codec data: missing in the file, and no decoder starts without";

bool isFinishedHevcRecord(uint32_t codecType, const std::vector<Record>& records) {
    return codecType == kCodecTypeHevc && !records.empty() && records.front().isConfiguration();
}

bool lacksCodecData(const Stream& stream, bool hasWholeFrames) {
    static constexpr auto kWanting = std::to_array<uint32_t>(
            {kCodecTypeAvc, kCodecTypeHevc, kCodecTypeAac, kCodecTypeVorbis, kCodecTypeAlac});
    return hasWholeFrames && stream.privateData.empty() &&
           std::ranges::count(kWanting, stream.codecType) > 0;
}

}  // namespace

Session::Session(host::Device device)
    : mDevice(std::move(device)),
      mSink([this](const host::LogLine& line) { mLog.push_back(line); }),
      mFormerHandler(host::setFatalHandler(throwFatal)) {
    host::setDevice(mDevice);
}

Session::~Session() {
    host::setFatalHandler(mFormerHandler);
    host::setDevice(host::typicalPhone());
}

std::vector<host::LogLine> Session::takeLog() {
    return std::exchange(mLog, {});
}

Tags Session::readTags(const OpenFile& open) {
    return inspect::readTags(open, {*mHelper, [this] { return takeLog(); }});
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
        found.verdict = judge(stream, format.mime(), mLog, mDevice);
        if (stream.durationUs) mHelper->setDuration(*stream.durationUs, format.get());
        if (stream.codecType == kCodecTypeAacAdts) {
            AMediaFormat_setInt32(format.get(), ZREAMEDIAFORMAT_KEY_ISADTS, 1);
        }
        const Entries before = format.entries();
        const size_t logged = mLog.size();
        const status_t status = storeCodecData(*mHelper, stream, info, format.get());
        const FormatChange change = {before, format.entries()};
        found.records = readCodecData(stream, change);
        std::string note = failureNote(status, mLog, logged);
        if (status != OK && holdsUnchanged(change.after, stream.privateData)) {
            const bool isMeant = isFinishedHevcRecord(stream.codecType, found.records);
            note = isMeant ? kPassedOn : note + "; stored unchanged all the same";
        }
        if (!note.empty()) found.notes.push_back(note);
        if (lacksCodecData(stream, hasWholeFrames)) found.notes.emplace_back(kNoCodecData);
        found.codecData = describeCodecData(found.records, change);
        std::ranges::move(contradictions(stream, found.records), std::back_inserter(found.notes));
    } catch (const LibraryFatal& fatal) {
        found.verdict = {Play::kEndsProcess, fatal.what()};
    }
    if (isPcm(stream) && findPcmFormat(stream) == nullptr) {
        found.notes.push_back(whyNotTo16(stream, *mHelper));
    }
    found.entries = format.entries();
    found.log = takeLog();
    return found;
}

}  // namespace inspect
