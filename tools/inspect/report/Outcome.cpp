#include "inspect/report/Outcome.h"

#include "inspect/media/OpenFile.h"
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

bool isExpectedToPlay(const std::string& path) {
    return isNamedAsMedia(path);
}

}  // namespace inspect
