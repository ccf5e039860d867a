#include "inspect/callers/Pictures.h"

#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstring>
#include <string_view>
#include <system_error>
#include <utility>

namespace inspect {
namespace {

namespace fs = std::filesystem;
using namespace std::string_view_literals;

struct Row {
    size_t offset;
    std::string_view magic;
    PictureKind kind;
};
// clang-format off
constexpr auto kRows = std::to_array<Row>({
    {0, "\xFF\xD8\xFF"sv,      {"JPEG", ".jpg"}},
    {0, "\x89PNG\r\n\x1A\n"sv, {"PNG",  ".png"}},
    {0, "GIF8"sv,              {"GIF",  ".gif"}},
    {8, "WEBP"sv,              {"WebP", ".webp"}},
    {0, "BM"sv,                {"BMP",  ".bmp"}},
    {0, "II*\0"sv,             {"TIFF", ".tif"}},
    {0, "MM\0*"sv,             {"TIFF", ".tif"}},
    {4, "ftypavif"sv,          {"AVIF", ".avif"}},
    {4, "ftyphei"sv,           {"HEIF", ".heic"}},
});
// clang-format on

// Returns 0, or the errno of what failed.
int writeAll(int descriptor, Bytes data) {
    while (!data.empty()) {
        const ssize_t count = write(descriptor, data.data(), data.size());
        if (count < 0 && errno == EINTR) continue;
        if (count < 0) return errno;
        data = data.subspan(static_cast<size_t>(count));
    }
    return 0;
}

}  // namespace

PictureKind pictureKind(Bytes data) {
    const std::string head(
            data.begin(), data.begin() + static_cast<ptrdiff_t>(std::min<size_t>(data.size(), 16)));
    const auto found = std::ranges::find_if(kRows, [&](const Row& row) {
        return head.size() > row.offset &&
               std::string_view(head).substr(row.offset).starts_with(row.magic);
    });
    return found != kRows.end() ? found->kind : PictureKind{"of unknown kind", ".bin"};
}

PictureFiles::PictureFiles(fs::path folder, OutputRules rules)
    : mFolder(std::move(folder)), mRules(std::move(rules)) {
    std::error_code error;
    fs::create_directories(mFolder, error);
    if (error) failOn(mFolder, error.message());
}

std::string PictureFiles::write(const std::string& input, Bytes picture) {
    const std::string stem = fs::path(input).stem().string();
    const std::string extension = pictureKind(picture).extension;
    std::string name = stem + extension;
    for (int i = 2; !mNames.insert(name).second; i++) {
        name = stem + "-" + std::to_string(i) + extension;
    }
    const fs::path path = mFolder / name;
    const int descriptor = createFile(path, mRules);
    int status = writeAll(descriptor, picture);
    if (close(descriptor) != 0 && status == 0) status = errno;
    if (status != 0) failOn(path, std::strerror(status));
    return path.string();
}

}  // namespace inspect
