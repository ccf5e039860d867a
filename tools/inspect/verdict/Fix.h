// What to change so that a file plays on a device.

#pragma once

#include <optional>
#include <span>
#include <string>
#include <vector>

#include "inspect/verdict/Verdict.h"

namespace inspect {

struct Fix {
    std::string sentence;  // what the command does, or why none helps
    std::string command;   // for a shell, and as it is for a terminal; empty = none helps
    std::string device;    // what the device lacks instead; empty = nothing would help

    bool operator==(const Fix&) const = default;
};

// For a file that does not play, or not all of it. The command is proposed only where the same
// judge says that all it makes plays on the device.
Fix proposeFix(const MediaFile& file, std::span<const JudgedTrack> tracks,
               const PretendedDevice& device);

}  // namespace inspect
