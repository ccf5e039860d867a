#include "inspect/report/Comparison.h"

#include <algorithm>
#include <map>
#include <string>

#include "inspect/base/Utf8.h"
#include "inspect/devices/Judge.h"
#include "inspect/report/TextReport.h"

namespace inspect {
namespace {

// The reasons, each said once and referred to by its number.
class Footnotes {
public:
    // " (1)", or nothing for no reason.
    std::string refer(const std::string& reason) {
        if (reason.empty()) return {};
        const auto [found, isNew] = mNumbers.try_emplace(reason, mNumbers.size() + 1);
        if (isNew) mReasons.push_back(reason);
        return ' ' + mark(found->second);
    }

    void print(std::ostream& out, size_t columns) const {
        if (!mReasons.empty()) out << '\n';
        for (size_t i = 0; i < mReasons.size(); i++) {
            out << wrapped(mark(i + 1) + ' ' + escaped(mReasons[i]), columns) << '\n';
        }
    }

private:
    static std::string mark(size_t number) {
        return std::string("(").append(std::to_string(number)).append(")");
    }

    std::map<std::string, size_t> mNumbers;
    std::vector<std::string> mReasons;
};

struct Line {
    std::string name;
    std::vector<std::string> cells;  // one a device
    std::vector<FilePlay> plays;
};

// What could not be judged of tracks that play.
std::string notKnownOf(const FileReport& report, size_t device) {
    std::string text;
    for (const TrackReport& track : report.tracks) {
        const Verdict& verdict = track.verdicts[device];
        if (verdict.notKnown.empty()) continue;
        text += (text.empty() ? "" : "; ") + verdict.decoder + ": " + listed(verdict.notKnown);
    }
    return text;
}

std::vector<Line> linesOf(const std::vector<FileReport>& reports, Footnotes& notes) {
    std::vector<Line> lines;
    for (const FileReport& report : reports) {
        Line& line = lines.emplace_back();
        line.name = escaped(report.path);
        for (size_t i = 0; i < report.verdicts.size(); i++) {
            const FileVerdict& verdict = report.verdicts[i];
            const std::string note =
                    verdict.reason.empty() ? notKnownOf(report, i) : verdict.reason;
            line.cells.push_back(std::string(toString(verdict.play)) + notes.refer(note));
            line.plays.push_back(verdict.play);
        }
    }
    return lines;
}

std::string cellText(const Line& line, size_t device, size_t width, const TextStyle& style) {
    const FilePlay play = line.plays[device];
    const bool isHalf = play == FilePlay::kPlaysInPart;
    const auto colour = play == FilePlay::kPlays ? kGreen : isHalf ? kYellow : kRed;
    return paint(style, colour, padded(line.cells[device], width));
}

void printTable(std::ostream& out, const std::vector<std::string>& names,
                const std::vector<Line>& lines, const std::vector<size_t>& widths,
                const TextStyle& style) {
    const auto print = [&](const std::string& first, const auto& cell) {
        out << padded(first, widths.front());
        for (size_t i = 0; i < names.size(); i++) {
            const bool isLast = i + 1 == names.size();
            out << "  " << cell(i, isLast ? 0 : widths[i + 1]);
        }
        out << '\n';
    };
    print("", [&](size_t i, size_t width) { return padded(names[i], width); });
    for (const Line& line : lines) {
        print(line.name, [&](size_t i, size_t width) { return cellText(line, i, width, style); });
    }
}

void printList(std::ostream& out, const std::vector<std::string>& names,
               const std::vector<Line>& lines, const TextStyle& style) {
    size_t width = 0;
    for (const std::string& name : names) width = std::max(width, columnsOf(name));
    for (const Line& line : lines) {
        out << line.name << '\n';
        for (size_t i = 0; i < names.size(); i++) {
            out << "  " << padded(names[i], width) << "  " << cellText(line, i, 0, style) << '\n';
        }
    }
}

}  // namespace

void printComparison(std::ostream& out, std::span<const PretendedDevice> devices,
                     const std::vector<FileReport>& reports, size_t columns,
                     const TextStyle& style) {
    Footnotes notes;
    const std::vector<Line> lines = linesOf(reports, notes);
    std::vector<std::string> names;
    std::vector<size_t> widths = {0};
    for (const Line& line : lines) widths[0] = std::max(widths[0], columnsOf(line.name));
    for (const PretendedDevice& device : devices) {
        const size_t index = names.size();
        names.push_back(escaped(device.description.name));
        widths.push_back(columnsOf(names.back()));
        for (const Line& line : lines) {
            widths.back() = std::max(widths.back(), columnsOf(line.cells[index]));
        }
    }
    size_t total = 0;
    for (const size_t width : widths) total += width + 2;
    if (columns == 0 || total <= columns + 2) {
        printTable(out, names, lines, widths, style);
    } else {
        printList(out, names, lines, style);
    }
    notes.print(out, columns);
    for (const FileReport& report : reports) {
        const auto isOne = [](const auto& fix) { return fix.has_value(); };
        if (std::ranges::none_of(report.fixes, isOne)) continue;
        out << '\n' << paint(style, kBold, escaped(report.path)) << '\n';
        printFixes(out, report, devices, style, columns);
    }
}

}  // namespace inspect
