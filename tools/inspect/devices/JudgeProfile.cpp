#include <algorithm>
#include <map>
#include <utility>

#include "inspect/devices/Judge.h"
#include "inspect/devices/Profiles.h"

namespace inspect {
namespace {

// The levels of each profile in a list, without those that another implies.
using Levels = std::map<int64_t, std::vector<int64_t>>;

Levels levelsOf(const CodecProfiles& codec, const std::vector<ProfileLevel>& list) {
    Levels all;
    for (const ProfileLevel& added : list) {
        std::vector<int64_t>& levels = all[added.profile];
        const bool isImplied = std::ranges::any_of(
                levels, [&](int64_t each) { return takesLevel(codec, each, added.level); });
        if (isImplied) continue;
        std::erase_if(levels, [&](int64_t each) { return takesLevel(codec, added.level, each); });
        levels.push_back(added.level);
    }
    return all;
}

// " up to 5.1"
std::string levelsText(const CodecProfiles& codec, const std::vector<int64_t>& levels) {
    if (codec.levels.empty()) return {};
    std::string text;
    for (const int64_t each : levels) {
        text += (text.empty() ? " up to " : " or ") + levelName(codec, each);
    }
    return text;
}

// "Baseline and Main up to 4.0, High up to 5.1"
std::string levelsText(const CodecProfiles& codec, const Levels& all) {
    std::vector<std::pair<std::string, std::vector<std::string>>> groups;
    for (const auto& [profile, levels] : all) {
        const std::string text = levelsText(codec, levels);
        if (groups.empty() || groups.back().first != text) groups.push_back({text, {}});
        groups.back().second.push_back(profileName(codec, profile));
    }
    std::string text;
    for (const auto& [levels, names] : groups) {
        text += (text.empty() ? "" : ", ") + listed(names) + levels;
    }
    return text;
}

Shortfall shortfall(const char* what, const CodecProfiles& codec, const TrackFacts& facts,
                    const Levels& taken, double excess) {
    std::string asked = std::string(codec.name) + " " + facts.profile->name;
    if (facts.level) asked += ", level " + facts.level->name;
    return {what, asked, levelsText(codec, taken), excess};
}

// Zero: a level of these takes it.
double excessOf(const CodecProfiles& codec, const Levels& all, const Rank& asked) {
    if (!asked.number) return kOtherTools;
    double excess = kOtherTools;
    for (const auto& [profile, levels] : all) {
        for (const int64_t each : levels) {
            if (takesLevel(codec, each, *asked.number)) return 0;
            excess = std::min(excess, levelsBetween(codec, each, *asked.number) / 2.0);
        }
    }
    return excess;
}

void judgeLevel(const CodecProfiles& codec, const TrackFacts& facts, const Levels& all,
                Judgement& judgement) {
    if (codec.levels.empty()) return;
    if (!facts.level) return judgement.lack("the level of the file is not known");
    const double excess = excessOf(codec, all, *facts.level);
    if (excess > 0) judgement.beyond.push_back(shortfall("level", codec, facts, all, excess));
}

// For a track without a profile: its samples must fit into the widest of a profile listed.
void judgeBitDepth(const CodecProfiles& codec, const TrackFacts& facts, const Levels& all,
                   Judgement& judgement) {
    int most = 0;
    for (const auto& [profile, levels] : all) {
        const int depth = bitDepthOf(codec, profile);
        if (depth == 0) return;
        most = std::max(most, depth);
    }
    if (!facts.bitDepth || *facts.bitDepth <= most) return;
    const std::string unit = " bits a sample";
    judgement.beyond.push_back({"bit depth", std::to_string(*facts.bitDepth) + unit,
                                "up to " + std::to_string(most) + unit, kOtherTools});
}

}  // namespace

void judgeProfile(const TrackFacts& facts, const Decoder& decoder, Judgement& judgement) {
    const CodecProfiles* codec = profilesOfMime(decoder.type);
    if (codec == nullptr) return;
    const auto& list = decoder.limits.profileLevels;
    if (list.empty()) {
        const char* what = codec->levels.empty() ? "profiles" : "profiles and levels";
        return judgement.lack(std::string(what) + " are not known of this decoder");
    }
    const Levels all = levelsOf(*codec, list);
    if (!facts.profile) {
        judgement.lack("the profile of the file is not known");
        return judgeBitDepth(*codec, facts, all, judgement);
    }
    const auto& number = facts.profile->number;
    Levels fitting = all;
    std::erase_if(fitting, [&](const auto& each) {
        return !number || !takesProfile(*codec, each.first, *number);
    });
    if (!fitting.empty()) return judgeLevel(*codec, facts, fitting, judgement);
    judgement.beyond.push_back(shortfall("profile", *codec, facts, all, kOtherTools));
}

}  // namespace inspect
