// How far a run over many files is, on a terminal.

#pragma once

#include <chrono>
#include <cstdint>
#include <optional>

#include "inspect/base/Progress.h"
#include "inspect/collection/FileList.h"

namespace inspect {

class RunProgress {
public:
    // The sources outlive it.
    explicit RunProgress(const FileSources& sources);

    // done: of the files in the list, of which so many were skipped
    void show(uint64_t done, uint64_t skipped, uint64_t notPlaying);
    void hide() { mLine.hide(); }

private:
    using Clock = std::chrono::steady_clock;

    StatusLine mLine;
    std::optional<FileList> mCounter;  // runs ahead to learn how many files there are
    uint64_t mTotal = 0;               // as far as it is
    bool mIsCounted = false;
    Clock::time_point mBegin = Clock::now();
};

}  // namespace inspect
