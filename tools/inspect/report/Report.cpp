#include "inspect/report/Report.h"

#include <exception>
#include <map>

#include "inspect/callers/PcmFormat.h"
#include "inspect/verdict/BrokenData.h"
#include "inspect/verdict/TrackFacts.h"

namespace inspect {
namespace {

constexpr size_t kMaxWaveforms = 4;  // each reads the file

void writePictures(FileReport& report, PictureFiles& files) {
    for (Tag& tag : report.tags.list) {
        const ByteVector* picture = tag.picture();
        if (picture == nullptr || picture->empty()) continue;
        try {
            tag.pictureFile = files.write(report.path, *picture);
        } catch (const FileError& error) {
            report.outputErrors.emplace_back(error.what());
        }
    }
}

void writeWav(FileReport& report, const Scope& scope, const OpenFile& open, const MediaFile& file) {
    try {
        TrackReport& track = report.tracks[firstPcmStream(file)];
        track.dump = dumpPcm(scope.dumpWav, scope.outputs, open, track.stream, track.found.log);
        const uint64_t bytes = track.dump->cutBytes;
        if (bytes == 0) return;
        track.found.notes.push_back("not dumped: " + std::to_string(bytes) +
                                    (bytes == 1 ? " byte" : " bytes") +
                                    " of frames that are cut off");
    } catch (const std::runtime_error& error) {
        report.outputErrors.emplace_back(error.what());
    }
}

TrackReport reportTrack(const Stream& stream, const MediaFile& file, Session& session,
                        const Scope& scope) {
    TrackReport track;
    track.stream = stream;
    track.found = session.describeTrack(stream, file.container.hasWholeFrames);
    track.facts = factsOf(stream, track.found.records);
    track.faults = {.brokenData = whyNoDecoderStarts(stream, track.found.records,
                                                     file.container.hasWholeFrames),
                    .endsProcess = track.found.fatal};
    if (scope.explain) track.explanations = track.found.records;
    return track;
}

// Further calls on the library about a track.
void callGlue(TrackReport& track, Session& session, const Scope& scope) {
    const Stream& stream = track.stream;
    if (stream.kind == Kind::kOther) return;
    std::vector<host::LogLine>& log = track.found.log;
    const auto takeLog = [&] {
        for (host::LogLine& line : session.takeLog()) log.push_back(std::move(line));
    };
    takeLog();
    track.componentLog.first = log.size();
    if (scope.component) {
        track.component = setUpComponent(stream, track.found, scope.componentOptions);
    }
    takeLog();
    track.componentLog.second = log.size();
    if (scope.legacy) track.legacy = describeToOlderParsers(stream, track.found.entries);
    takeLog();
}

void judgeFor(const PretendedDevice& device, FileReport& report, const MediaFile& file,
              bool isFixed) {
    std::vector<JudgedTrack> tracks;
    for (TrackReport& track : report.tracks) {
        track.verdicts.push_back(judge(track.stream, file.container.hasWholeFrames, track.facts,
                                       track.faults, device));
        tracks.push_back({&track.stream, &track.facts, &track.verdicts.back()});
    }
    const FileVerdict verdict = judge(file.container, tracks);
    report.verdicts.push_back(verdict);
    if (!isFixed) return;
    const bool isGood = verdict.play == FilePlay::kPlays;
    report.fixes.push_back(isGood ? std::nullopt : std::optional(proposeFix(file, tracks, device)));
}

void fill(FileReport& report, const OpenFile& open, const Scope& scope, PictureFiles* pictures) {
    const MediaFile file = readMediaFile(open);
    Session session(scope.devices.front().host, scope.explain ? Detail::kAll : Detail::kFacts);
    report.truncation = file.truncation;
    report.junk = file.junk;
    report.format = file.format;
    report.formatName = file.formatName;
    report.durationUs = file.durationUs;
    report.entries = session.describeFile(file);
    for (const Stream& stream : file.streams) {
        report.tracks.push_back(reportTrack(stream, file, session, scope));
    }
    for (const PretendedDevice& device : scope.devices) {
        judgeFor(device, report, file, scope.fix);
    }
    report.tags = readTags(open);
    const auto keyFrames = scope.frames ? compareKeyFrames(open, file) : std::map<int, KeyFrames>{};
    const auto verified = scope.verify ? verifySamples(open, file) : std::map<int, Verification>{};
    size_t waveforms = 0;
    for (TrackReport& track : report.tracks) {
        callGlue(track, session, scope);
        const auto verification = verified.find(track.stream.index);
        if (verification != verified.end()) track.verification = verification->second;
        const auto found = keyFrames.find(track.stream.index);
        if (found != keyFrames.end()) track.keyFrames = found->second;
        if (!scope.waveform || findPcmFormat(track.stream) == nullptr) continue;
        if (waveforms++ < kMaxWaveforms) track.waveform = drawWaveform(open, track.stream);
    }
    if (pictures != nullptr) writePictures(report, *pictures);
    if (!scope.dumpWav.empty()) writeWav(report, scope, open, file);
}

// open: makes the InputFile
FileReport makeReport(const std::string& path, const Scope& scope, PictureFiles* pictures,
                      const auto& open) {
    FileReport opened;
    opened.path = path;
    FileReport report;
    try {
        const InputFile input = open();
        opened.sizeBytes = input.size();
        opened.modifiedNs = input.modifiedNs();
        report = opened;
        try {
            fill(report, OpenFile(input), scope, pictures);
        } catch (const std::bad_alloc&) {
            throw FileError("needs more memory than there is");
        } catch (const std::exception& error) {
            const std::string fault = faultBeforeMedia(input);
            const bool isNotMedia = dynamic_cast<const NotMedia*>(&error) != nullptr;
            opened.isMedia = !isNotMedia || !fault.empty() || isNamedAsMedia(path);
            throw FileError(fault.empty() ? error.what() : error.what() + ("; " + fault));
        }
    } catch (const std::exception& error) {
        report = opened;
        report.error = error.what();
        report.verdicts.assign(scope.devices.size(), {FilePlay::kUnreadable, report.error});
    }
    return report;
}

}  // namespace

FileReport makeReport(const std::string& path, const Scope& scope, PictureFiles* pictures) {
    return makeReport(path, scope, pictures, [&] { return InputFile(path); });
}

FileReport makeReport(const std::string& path, OpenedFile file, const Scope& scope) {
    return makeReport(path, scope, nullptr, [&] { return InputFile(path, std::move(file)); });
}

void keepOnly(FileReport& report, const Scope& scope) {
    if (!scope.fix) report.fixes.clear();
    for (TrackReport& track : report.tracks) {
        if (!scope.explain) track.explanations.clear();
        if (!scope.frames) track.keyFrames.reset();
        if (scope.component) continue;
        track.component.clear();
        const auto at = [&](size_t line) {
            return track.found.log.begin() + static_cast<ptrdiff_t>(line);
        };
        track.found.log.erase(at(track.componentLog.first), at(track.componentLog.second));
        track.componentLog = {};
    }
}

}  // namespace inspect
