#include "inspect/collection/Summary.h"

#include <algorithm>
#include <cctype>
#include <functional>
#include <limits>
#include <numeric>

#include "inspect/base/Utf8.h"
#include "inspect/report/JsonParts.h"
#include "inspect/report/TextLayout.h"

namespace inspect {
namespace {

constexpr size_t kMaxKeys = 1000;
constexpr size_t kMaxDevices = 100;
constexpr const char* kOther = "other";

constexpr size_t kColumns = 80;
constexpr size_t kLabel = 26;
constexpr size_t kCell = 17;
constexpr size_t kDevicesAside = (kColumns - kLabel) / (kCell + 1);
constexpr size_t kShownRows = 40;

using Cell = std::function<std::string(const std::string& key, size_t device)>;

std::string fitted(const std::string& text, size_t columns) {
    return padded(firstColumns(escaped(text), columns), columns);
}

std::string headText(const Summary& summary) {
    std::string text = std::to_string(summary.files) + (summary.files == 1 ? " file" : " files");
    if (summary.unreadable > 0) text += ", " + std::to_string(summary.unreadable) + " unreadable";
    text += ", " + durationText(summary.durationUs) + '\n';
    for (const std::string& kind : summary.kinds.keys()) {
        text += "  " + fitted(kind + " tracks", kLabel) +
                std::to_string(summary.kinds.at(kind, 0)) + '\n';
    }
    return text;
}

std::string moreText(size_t rows) {
    if (rows <= kShownRows) return {};
    return "  and " + std::to_string(rows - kShownRows) + " more\n";
}

std::string errorText(const Tally& errors) {
    const std::vector<std::string> keys = errors.keys();
    if (keys.empty()) return {};
    std::string text = "\nunreadable\n";
    for (size_t i = 0; i < std::min(keys.size(), kShownRows); i++) {
        const std::string count = rightAligned(std::to_string(errors.at(keys[i], 0)), 8);
        text += firstColumns(count + "  " + escaped(keys[i]), kColumns) + '\n';
    }
    return text + moreText(keys.size());
}

// The devices in groups that fit side by side.
std::string tableText(const std::string& title, const std::vector<std::string>& keys,
                      const std::vector<std::string>& devices, const Cell& cell) {
    std::string text;
    if (keys.empty()) return text;
    for (size_t first = 0; first < devices.size(); first += kDevicesAside) {
        const size_t end = std::min(first + kDevicesAside, devices.size());
        text += '\n' + padded(title, kLabel);
        for (size_t i = first; i < end; i++) {
            text += ' ' + rightAligned(firstColumns(escaped(devices[i]), kCell), kCell);
        }
        text += '\n';
        for (size_t row = 0; row < std::min(keys.size(), kShownRows); row++) {
            text += "  " + fitted(keys[row], kLabel - 2);
            for (size_t i = first; i < end; i++) {
                text += ' ' + rightAligned(cell(keys[row], i), kCell);
            }
            text += '\n';
        }
        text += moreText(keys.size());
    }
    return text;
}

// What differs from file to file only in its numbers is counted together; "ID3v2" is no number.
std::string withoutNumbers(const std::string& text) {
    std::string shown;
    bool isInWord = false;
    for (const char c : text) {
        const bool isDigit = c >= '0' && c <= '9';
        if (isDigit && !isInWord) {
            if (!shown.ends_with('N')) shown += 'N';
            continue;
        }
        isInWord = isDigit || std::isalpha(static_cast<unsigned char>(c)) != 0;
        shown += c;
    }
    return shown;
}

}  // namespace

void Tally::add(const std::string& key, size_t column) {
    const std::string name = shortened(toUtf8(key));
    const bool isKnown = mRows.size() < kMaxKeys || mRows.contains(name);
    Row& row = mRows[isKnown ? name : kOther];
    if (row.size() <= column) row.resize(column + 1);
    row[column]++;
}

int64_t Tally::at(const std::string& key, size_t column) const {
    const auto row = mRows.find(key);
    return row == mRows.end() || column >= row->second.size() ? 0 : row->second[column];
}

std::vector<std::string> Tally::keys() const {
    std::vector<std::pair<int64_t, std::string>> totals;
    for (const auto& [key, row] : mRows) {
        totals.emplace_back(-std::accumulate(row.begin(), row.end(), int64_t{0}), key);
    }
    std::ranges::sort(totals);
    std::vector<std::string> keys;
    keys.reserve(totals.size());
    for (auto& [total, key] : totals) keys.push_back(std::move(key));
    return keys;
}

void Summary::add(const FileRow& row) {
    files++;
    if (!row.error.empty()) {
        unreadable++;
        errors.add(withoutNumbers(row.error), 0);
    }
    const int64_t room = std::numeric_limits<int64_t>::max() - durationUs;
    durationUs += std::clamp<int64_t>(row.durationUs.value_or(0), 0, room);
    for (const PlayRow& play : row.plays) fileVerdicts.add(play.verdict, columnOf(play.device));
    for (const TrackRow& track : row.tracks) {
        kinds.add(track.kind, 0);
        for (const PlayRow& play : track.plays) {
            const size_t column = columnOf(play.device);
            trackVerdicts.add(play.verdict, column);
            (play.plays ? playing : lost).add(track.codec, column);
        }
    }
}

size_t Summary::columnOf(const std::string& device) {
    const auto found = std::ranges::find(devices, device);
    const auto index = static_cast<size_t>(found - devices.begin());
    if (found != devices.end()) return index;
    if (index == kMaxDevices) return index - 1;
    devices.push_back(index + 1 == kMaxDevices ? kOther : device);
    return index;
}

std::vector<std::string> codecsOf(const Summary& summary) {
    std::vector<std::string> codecs = summary.playing.keys();
    for (const std::string& codec : summary.lost.keys()) {
        if (!summary.playing.rows().contains(codec)) codecs.push_back(codec);
    }
    const auto count = [&](const std::string& codec) {
        return summary.playing.at(codec, 0) + summary.lost.at(codec, 0);
    };
    std::ranges::stable_sort(codecs, std::ranges::greater(), count);
    return codecs;
}

std::string summaryText(const Summary& summary) {
    const auto countsOf = [](const Tally& tally) {
        return [&](const std::string& key, size_t device) {
            return std::to_string(tally.at(key, device));
        };
    };
    const auto split = [&](const std::string& codec, size_t device) {
        return std::to_string(summary.playing.at(codec, device)) + " / " +
               std::to_string(summary.lost.at(codec, device));
    };
    const std::vector<std::string>& devices = summary.devices;
    return headText(summary) + errorText(summary.errors) +
           tableText("files", summary.fileVerdicts.keys(), devices,
                     countsOf(summary.fileVerdicts)) +
           tableText("tracks", summary.trackVerdicts.keys(), devices,
                     countsOf(summary.trackVerdicts)) +
           tableText("codecs: play / do not", codecsOf(summary), devices, split);
}

}  // namespace inspect
