// What is to be said about a file.

#pragma once

#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "inspect/callers/Component.h"
#include "inspect/callers/KeyFrames.h"
#include "inspect/callers/PcmDump.h"
#include "inspect/callers/Pictures.h"
#include "inspect/callers/Session.h"
#include "inspect/callers/Tags.h"
#include "inspect/callers/Verify.h"
#include "inspect/callers/Waveform.h"
#include "inspect/verdict/Fix.h"
#include "inspect/verdict/Verdict.h"

namespace inspect {

// What a report looks at.
struct Scope {
    std::vector<PretendedDevice> devices;  // at least one; the first is the one that is shown
    bool fix = false;                      // what to change
    bool explain = false;                  // codec data byte by byte
    bool frames = false;                   // key frames
    bool verify = false;                   // whether the samples are there
    bool component = false;                // what a component is sent
    bool legacy = false;                   // what older parsers get
    bool waveform = false;                 // of PCM, before and after its conversion
    ComponentOptions componentOptions;
    std::string dumpWav;  // the file to write samples to; empty = none
    OutputRules outputs;
};

struct TrackReport {
    Stream stream;
    TrackFindings found;
    TrackFacts facts;
    TrackFaults faults;
    std::vector<Verdict> verdicts;  // one a device
    std::optional<PcmDump> dump;
    std::vector<Record> explanations;
    std::optional<KeyFrames> keyFrames;  // of a video track
    std::optional<Verification> verification;
    std::optional<Waveform> waveform;  // of a PCM track
    std::vector<Call> component;
    std::pair<size_t, size_t> componentLog;  // the lines of the log that are of that: from, to
    std::vector<Call> legacy;
};

struct FileReport {
    std::string path;
    std::optional<int64_t> sizeBytes;       // none = it could not be opened
    std::optional<int64_t> modifiedNs;      // since 1970, before anything was read
    std::vector<FileVerdict> verdicts;      // one a device
    std::vector<std::optional<Fix>> fixes;  // one a device when they were asked for; none for what
                                            // plays
    bool isMedia = true;  // false: neither by its bytes nor by its name; there is an error
    std::string error;    // not empty: the file could not be read, and little else is set
    std::vector<std::string> outputErrors;  // why files could not be written, with their paths
    std::optional<std::string> truncation;
    std::optional<std::string> junk;  // behind the end
    std::string format;
    std::string formatName;
    std::optional<int64_t> durationUs;
    Entries entries;
    std::vector<TrackReport> tracks;  // also what is no track to the library: Kind::kOther
    Tags tags;
};

// pictures: takes those of the tags; null = they are not written.
FileReport makeReport(const std::string& path, const Scope& scope, PictureFiles* pictures);
// Of a file that is open, and nothing else is opened.
FileReport makeReport(const std::string& path, OpenedFile file, const Scope& scope);

// Takes away what a report with less scope would not have.
void keepOnly(FileReport& report, const Scope& scope);

}  // namespace inspect
