#include "inspect/report/Outcome.h"

#include <algorithm>

#include "inspect/report/VerifyText.h"

namespace inspect {

std::vector<std::string> faultsOf(const FileReport& report) {
    std::vector<std::string> faults = report.outputErrors;
    const std::string file = report.path + ": ";
    if (!report.error.empty()) faults.push_back(file + report.error);
    if (report.truncation) faults.push_back(file + "is truncated: " + *report.truncation);
    for (const TrackReport& track : report.tracks) {
        const std::string fault = track.verification ? faultText(*track.verification) : "";
        if (fault.empty()) continue;
        faults.push_back(file + "track " + std::to_string(track.stream.index) + ": " + fault);
    }
    return faults;
}

bool meets(const std::string& check, const FileReport& report) {
    if (check.empty()) return true;
    if (check == "all") {
        return std::ranges::all_of(report.verdicts, [](const FileVerdict& verdict) {
            return verdict.play == FilePlay::kPlays;
        });
    }
    const bool isRead = report.verdicts.front().play != FilePlay::kNoParser;
    return std::ranges::all_of(report.tracks, [&](const TrackReport& track) {
        return toString(track.stream.kind) != check ||
               (isRead && std::ranges::all_of(track.verdicts, plays, &Verdict::play));
    });
}

}  // namespace inspect
