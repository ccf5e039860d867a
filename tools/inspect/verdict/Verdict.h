// Whether a track, and a file, plays on a device, and if not, why.

#pragma once

#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "inspect/devices/TrackFacts.h"
#include "inspect/media/MediaFile.h"
#include "inspect/verdict/PretendedDevice.h"

namespace inspect {

enum class Play {
    kPlays,
    kPlaysInSoftware,
    kBeyondDecoder,          // of a type that the device decodes, but not with these numbers
    kOfferedWithoutDecoder,  // by the library, for a type of which the device has no decoder
    kNoDecoder,
    kNotSupported,  // by the library, whatever the device
    kEncrypted,
    kCodecDataBroken,
    kNothingReadable,
    kEndsProcess,
};

std::string_view toString(Play play);  // its stable code: "plays-in-software"
bool plays(Play play);

struct Step {
    std::string what;
    std::string answer;

    bool operator==(const Step&) const = default;
};

struct Verdict {
    Play play = Play::kNotSupported;
    std::string reason;                 // a sentence; empty when there is nothing to explain
    std::string decoder;                // that takes the track; empty = none, or none is needed
    std::optional<Range> bitRate;       // that it takes
    std::vector<std::string> notKnown;  // what could be judged if it were known; remarks
    std::string lack;         // what the device would need to play it; empty = nothing helps
    std::vector<Step> chain;  // what led there
};

// What is wrong with a track wherever it is played; empty = nothing.
struct TrackFaults {
    std::string brokenData;   // no decoder can start from its codec data
    std::string endsProcess;  // the assertion that its codec data would fail
};

// The first that has to be mended: faults of the file, then of the device.
Verdict judge(const Stream& stream, bool hasWholeFrames, const TrackFacts& facts,
              const TrackFaults& faults, const PretendedDevice& device);

enum class FilePlay { kPlays, kPlaysInPart, kDoesNotPlay, kNoParser, kUnreadable };

std::string_view toString(FilePlay play);  // its stable code

struct FileVerdict {
    FilePlay play = FilePlay::kUnreadable;
    std::string reason = {};   // empty when there is nothing to explain
    std::string decoder = {};  // those of its tracks; empty = none
    std::vector<Step> chain = {};
};

struct JudgedTrack {
    const Stream* stream;
    const TrackFacts* facts;
    const Verdict* verdict;
};

FileVerdict judge(const Container& container, std::span<const JudgedTrack> tracks);

std::string nameOf(const Stream& stream);  // "video track 0"

}  // namespace inspect
