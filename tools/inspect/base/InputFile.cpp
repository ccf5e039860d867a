#include "inspect/base/InputFile.h"

#include <fcntl.h>
#include <poll.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <utility>

#include "inspect/base/OutputFile.h"
#include "inspect/base/Progress.h"

namespace inspect {
namespace {

// Looked at before it is opened: opening a device may do something.
int openInput(const std::string& path) {
    struct stat status {};
    const bool isStandardInput = path == "-";
    if ((isStandardInput ? fstat(STDIN_FILENO, &status) : stat(path.c_str(), &status)) != 0) {
        throw FileError(std::strerror(errno));
    }
    if (S_ISDIR(status.st_mode)) throw FileError("is a directory");
    if (!S_ISREG(status.st_mode) && !S_ISFIFO(status.st_mode) && !S_ISSOCK(status.st_mode)) {
        throw FileError("is neither a regular file nor a pipe");
    }
    const int descriptor = isStandardInput ? fcntl(STDIN_FILENO, F_DUPFD_CLOEXEC, 0)
                                           : open(path.c_str(), O_RDONLY | O_CLOEXEC);
    if (descriptor < 0) throw FileError(std::strerror(errno));
    return descriptor;
}

bool isPipe(int descriptor) {
    return lseek(descriptor, 0, SEEK_CUR) < 0;
}

// A file without a name. Returns -1 and sets errno where there can be none.
int createNameless() {
    std::error_code error;
    std::string name = std::filesystem::temp_directory_path(error) / "zrinspect-XXXXXX";
    if (error) errno = error.value();
    const int descriptor = error ? -1 : mkostemp(name.data(), O_CLOEXEC);
    if (descriptor >= 0) unlink(name.c_str());
    return descriptor;
}

// Returns 0, or the errno of what failed.
int copyAll(const std::string& name, int from, int to) {
    std::array<uint8_t, 1 << 16> block;
    Progress progress(name, 0);
    int64_t total = 0;
    while (const ssize_t count = read(from, block.data(), block.size())) {
        if (count < 0 && !canRetry(from, POLLIN)) return errno;
        if (count < 0) continue;
        const Bytes data = Bytes(block).first(static_cast<size_t>(count));
        if (const int error = writeAll(to, data)) return error;
        progress.show(total += count);
    }
    return 0;
}

// Takes the pipe, which is closed, and returns a file with what came through it.
int fileOf(const std::string& name, int pipe) {
    const int file = createNameless();
    const int error = file < 0 ? errno : copyAll(name, pipe, file);
    close(pipe);
    if (error == 0) return file;
    if (file >= 0) close(file);
    throw FileError(std::string("cannot be copied to a temporary file: ") + std::strerror(error));
}

}  // namespace

int64_t modifiedNs(const struct stat& status) {
    constexpr int64_t kNsPerSecond = 1'000'000'000;
    return status.st_mtim.tv_sec * kNsPerSecond + status.st_mtim.tv_nsec;
}

InputFile::InputFile(std::string path) : mPath(std::move(path)), mDescriptor(openInput(mPath)) {
    mHasName = mPath != "-" && !mPath.starts_with("/dev/") && !isPipe(mDescriptor);
    if (isPipe(mDescriptor)) mDescriptor = fileOf(mPath, mDescriptor);
    mSize = lseek(mDescriptor, 0, SEEK_END);
    if (mSize > 0) return;
    close(mDescriptor);
    throw FileError("is empty");
}

InputFile::~InputFile() {
    close(mDescriptor);
}

int64_t InputFile::modifiedNs() const {
    struct stat status {};
    return fstat(mDescriptor, &status) == 0 ? inspect::modifiedNs(status) : 0;
}

int64_t InputFile::storedSize() const {
    const auto isHoleFrom = [&](int64_t offset) {
        return lseek(mDescriptor, offset, SEEK_DATA) < 0 && errno == ENXIO;
    };
    int64_t low = 0;
    int64_t high = mSize;
    while (low < high) {
        const int64_t middle = low + (high - low) / 2;
        if (isHoleFrom(middle)) {
            high = middle;
        } else {
            low = middle + 1;
        }
    }
    return low;
}

int64_t InputFile::readAt(int64_t offset, std::span<uint8_t> out) const {
    size_t done = 0;
    while (done < out.size()) {
        const ssize_t count = pread(mDescriptor, out.data() + done, out.size() - done,
                                    offset + static_cast<int64_t>(done));
        if (count < 0 && errno == EINTR) continue;
        if (count < 0 && done == 0) return -1;
        if (count <= 0) break;
        done += static_cast<size_t>(count);
    }
    return static_cast<int64_t>(done);
}

}  // namespace inspect
