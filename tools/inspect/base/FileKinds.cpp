#include "inspect/base/FileKinds.h"

#include <algorithm>
#include <array>
#include <string>

namespace inspect {
namespace {

using namespace std::string_view_literals;

constexpr size_t kAnywhere = std::string_view::npos;

struct Row {
    size_t offset;
    std::string_view magic;
    FileKind kind;
};
// The first that fits counts.
// clang-format off
constexpr auto kRows = std::to_array<Row>({
    {0, "\xFF\xD8\xFF"sv,          {"JPEG", ".jpg"}},
    {0, "\x89PNG\r\n\x1A\n"sv,     {"PNG",  ".png"}},
    {0, "GIF8"sv,                  {"GIF",  ".gif"}},
    {8, "WEBP"sv,                  {"WebP", ".webp"}},
    {0, "BM"sv,                    {"BMP",  ".bmp"}},
    {0, "II*\0"sv,                 {"TIFF", ".tif"}},
    {0, "MM\0*"sv,                 {"TIFF", ".tif"}},
    {4, "ftypavif"sv,              {"AVIF", ".avif"}},
    {4, "ftyphei"sv,               {"HEIF", ".heic"}},
    {0, "RIFX"sv,                  {"WAV in big-endian RIFX, which is not read here"}},
    {0, "MThd"sv,                  {"MIDI"}},
    {0, "\x1F\x8B"sv,              {"gzip"}},
    {0, "BZh"sv,                   {"bzip2"}},
    {0, "\xFD" "7zXZ\0"sv,         {"xz"}},
    {0, "\x28\xB5\x2F\xFD"sv,      {"Zstandard"}},
    {0, "PK\3\4"sv,                {"ZIP archive"}},
    {0, "7z\xBC\xAF\x27\x1C"sv,    {"7z archive"}},
    {0, "Rar!\x1A\7"sv,            {"RAR archive"}},
    {257, "ustar"sv,               {"tar archive"}},
    {0, "%PDF-"sv,                 {"PDF"}},
    {0, "\x7F" "ELF"sv,            {"ELF program"}},
    {0, "SQLite format 3\0"sv,     {"SQLite database"}},
    {kAnywhere, "#EXT-X-"sv,       {"HLS playlist"}},
    {0, "#EXTM3U"sv,               {"M3U playlist"}},
    {0, "[playlist]"sv,            {"PLS playlist"}},
    {kAnywhere, "<MPD"sv,          {"DASH playlist"}},
    {kAnywhere, "<svg"sv,          {"SVG"}},
    {0, "<html"sv,                 {"HTML"}},
    {0, "<!DOCTYPE html"sv,        {"HTML"}},
    {0, "<!doctype html"sv,        {"HTML"}},
    {0, "<?xml"sv,                 {"XML"}},
    {0, "\xFF\xFE"sv,              {"text in UTF-16"}},
    {0, "\xFE\xFF"sv,              {"text in UTF-16"}},
});
// clang-format on
constexpr FileKind kText{"text"};
constexpr FileKind kZeros{"nothing but zeros in front"};

bool fits(const Row& row, std::string_view head) {
    if (row.offset == kAnywhere) return head.find(row.magic) != head.npos;
    return head.size() > row.offset && head.substr(row.offset).starts_with(row.magic);
}

bool isOfText(char c) {
    return static_cast<unsigned char>(c) >= ' ' || "\t\n\r\f"sv.find(c) != std::string_view::npos;
}

}  // namespace

const FileKind* findFileKind(Bytes data) {
    const Bytes first = data.first(std::min(data.size(), kFileKindBytes));
    const std::string head(first.begin(), first.end());
    const auto found = std::ranges::find_if(kRows, [&](const Row& row) { return fits(row, head); });
    if (found != kRows.end()) return &found->kind;
    if (std::ranges::all_of(head, isOfText)) return &kText;
    return std::ranges::all_of(head, [](char c) { return c == 0; }) ? &kZeros : nullptr;
}

}  // namespace inspect
