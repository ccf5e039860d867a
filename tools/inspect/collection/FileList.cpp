#include "inspect/collection/FileList.h"

#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstring>

#include "inspect/base/InputFile.h"
#include "inspect/report/Outcome.h"

namespace inspect {
namespace {

namespace fs = std::filesystem;

FILE* openList(const std::string& name) {
    const int descriptor = name == "-" ? fcntl(STDIN_FILENO, F_DUPFD_CLOEXEC, 0)
                                       : open(name.c_str(), O_RDONLY | O_CLOEXEC);
    FILE* list = descriptor >= 0 ? fdopen(descriptor, "r") : nullptr;
    if (list == nullptr) throw FileError(name + ": " + std::strerror(errno));
    return list;
}

}  // namespace

FileList::FileList(const FileSources& sources) : mSources(sources) {
    if (!sources.list.empty()) mList.reset(openList(sources.list));
}

std::optional<std::string> FileList::nextName() {
    if (mNextPath < mSources.paths.size()) return mSources.paths[mNextPath++];
    if (mList == nullptr) return {};
    constexpr size_t kMaxNameBytes = 1 << 20;
    const auto fail = [&](const std::string& why) { throw FileError(mSources.list + ": " + why); };
    const int end = mSources.endsWithNul ? 0 : 0x0A;  // NUL, line feed
    std::string name;
    int c = 0;
    while ((c = getc_unlocked(mList.get())) != EOF) {
        if (c == end && !name.empty()) return name;
        if (c == end) continue;
        if (c == '\0') fail("has names that end with zero bytes, for which there is -0");
        if (name.size() == kMaxNameBytes) fail("is no list of names");
        name += static_cast<char>(c);
    }
    if (std::ferror(mList.get()) != 0) fail(std::strerror(errno));
    return name.empty() ? std::nullopt : std::optional(name);
}

void FileList::enter(const std::string& folder) {
    std::error_code error;
    std::vector<Entry> entries;
    fs::directory_iterator each(folder, error);
    for (; !error && each != fs::directory_iterator(); each.increment(error)) {
        std::error_code unknown;
        const bool isFolder = each->is_directory(unknown);
        if (isFolder && each->is_symlink(unknown)) continue;
        entries.push_back({{each->path().string(), true, ""}, isFolder});
    }
    if (error) entries.push_back({{folder, true, error.message()}, false});
    std::ranges::sort(entries, std::greater(), [](const Entry& entry) { return entry.file.path; });
    std::ranges::move(entries, std::back_inserter(mWaiting));
}

std::optional<ListedFile> FileList::next() {
    for (;;) {
        if (mWaiting.empty()) {
            std::optional<std::string> name = nextName();
            if (!name) return {};
            std::error_code unknown;
            const bool isFolder = fs::is_directory(*name, unknown);
            mWaiting.push_back({{std::move(*name), false, ""}, isFolder});
        }
        Entry entry = std::move(mWaiting.back());
        mWaiting.pop_back();
        if (!entry.isFolder) return std::move(entry.file);
        enter(entry.file.path);
    }
}

std::string whyNoFile(const ListedFile& file, struct stat& status) {
    if (!file.error.empty()) return file.error;
    if (file.path == "-") return "standard input is not one of many files";
    if (stat(file.path.c_str(), &status) != 0) return std::strerror(errno);
    if (S_ISFIFO(status.st_mode)) return "is a pipe, for which nobody waits among many files";
    return S_ISREG(status.st_mode) ? "" : "is not a regular file";
}

bool isOther(const ListedFile& file, const struct stat& status) {
    if (!file.isFound || !file.error.empty()) return false;
    if (status.st_mode != 0 && !S_ISREG(status.st_mode)) return true;
    const bool isEmpty = status.st_mode != 0
                                 ? status.st_size == 0
                                 : access(file.path.c_str(), F_OK) != 0 && errno == ENOENT;
    return isEmpty && !isExpectedToPlay(file.path);
}

}  // namespace inspect
