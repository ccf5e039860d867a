#include "inspect/report/TextParts.h"

#include <algorithm>

#include "inspect/base/Utf8.h"

namespace inspect {
namespace {

constexpr size_t kBytesBesideName = 8;
constexpr size_t kBytesALine = 16;
constexpr size_t kOffsetWidth = 5;

// A few bytes stand beside the name, more on lines of their own below it.
bool isLong(const Row& row) {
    return row.bytes.size() > kBytesBesideName;
}

std::string besideName(const Row& row) {
    return isLong(row) ? std::to_string(row.bytes.size()) + " bytes" : hex(row.bytes, " ");
}

std::string nameText(const Row& row) {
    return std::string(2 * size_t{row.depth}, ' ') + escaped(row.name);
}

std::string bitsText(const Row& row) {
    if (row.bits == 0) return {};
    return std::to_string(row.bits) + (row.bits == 1 ? " bit " : " bits");
}

struct Widths {
    size_t hex = 0;
    size_t name = 0;
    size_t bits = 0;
};

Widths widthsOf(const std::vector<Row>& rows) {
    Widths widths;
    for (const Row& row : rows) {
        widths.hex = std::max(widths.hex, besideName(row).size());
        widths.name = std::max(widths.name, nameText(row).size());
        widths.bits = std::max(widths.bits, bitsText(row).size());
    }
    return widths;
}

void printLine(std::ostream& out, std::string line) {
    line.erase(line.find_last_not_of(' ') + 1);
    out << line << '\n';
}

void printLongBytes(std::ostream& out, const Row& row) {
    for (size_t at = 0; at < row.bytes.size(); at += kBytesALine) {
        const size_t count = std::min(kBytesALine, row.bytes.size() - at);
        const std::string offset = std::to_string(row.offset + at);
        printLine(out, kIndent + rightAligned(offset, kOffsetWidth) + "    " +
                               hex(Bytes(row.bytes).subspan(at, count), " "));
    }
}

void printRow(std::ostream& out, const Row& row, const Widths& widths) {
    const std::string offset = row.bytes.empty() ? "" : std::to_string(row.offset);
    printLine(out, kIndent + rightAligned(offset, kOffsetWidth) + "  " +
                           padded(besideName(row), widths.hex) + "  " +
                           padded(nameText(row), widths.name) + "  " +
                           rightAligned(bitsText(row), widths.bits) +
                           (widths.bits > 0 ? "  " : "") + escaped(row.value));
    if (isLong(row)) printLongBytes(out, row);
}

}  // namespace

void printRecord(std::ostream& out, const Record& record, const TextStyle& style) {
    std::string heading = record.key + ", " + std::to_string(record.sizeBytes);
    heading += " bytes, one by one";
    if (!record.clause.empty()) heading.append(", by ").append(record.clause);
    heading += ':';
    out << kIndent << paint(style, kBold, escaped(heading)) << '\n';
    const Widths widths = widthsOf(record.rows);
    for (const Row& row : record.rows) printRow(out, row, widths);
}

}  // namespace inspect
