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
Descriptor openInput(const std::string& path) {
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
    return Descriptor(descriptor);
}

bool isPipe(const Descriptor& descriptor) {
    return lseek(descriptor.get(), 0, SEEK_CUR) < 0;
}

// A file without a name. Returns nothing and sets errno where there can be none.
Descriptor createNameless() {
    std::error_code error;
    std::string name = std::filesystem::temp_directory_path(error) / "zrinspect-XXXXXX";
    if (error) errno = error.value();
    const int descriptor = error ? -1 : mkostemp(name.data(), O_CLOEXEC);
    if (descriptor >= 0) unlink(name.c_str());
    return Descriptor(descriptor);
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

// A file with what comes through the pipe.
Descriptor fileOf(const std::string& name, const Descriptor& pipe) {
    Descriptor file = createNameless();
    const int error = file.get() < 0 ? errno : copyAll(name, pipe.get(), file.get());
    if (error == 0) return file;
    throw FileError(std::string("cannot be copied to a temporary file: ") + std::strerror(error));
}

OpenedFile openedFile(const std::string& path, Descriptor descriptor, const struct stat& status) {
    const std::filesystem::path folder = std::filesystem::path(path).parent_path();
    return {.descriptor = std::move(descriptor),
            .sizeBytes = status.st_size,
            .modifiedNs = modifiedNs(status),
            .isFolderWritable = access(folder.empty() ? "." : folder.c_str(), W_OK) == 0};
}

OpenedFile openFile(const std::string& path) {
    Descriptor descriptor = openInput(path);
    const bool isCopy = isPipe(descriptor);
    if (isCopy) descriptor = fileOf(path, descriptor);
    struct stat status {};
    if (fstat(descriptor.get(), &status) != 0) throw FileError(std::strerror(errno));
    OpenedFile file = openedFile(path, std::move(descriptor), status);
    file.isCopy = isCopy;
    return file;
}

}  // namespace

int64_t modifiedNs(const struct stat& status) {
    constexpr int64_t kNsPerSecond = 1'000'000'000;
    return status.st_mtim.tv_sec * kNsPerSecond + status.st_mtim.tv_nsec;
}

OpenedFile openRegularFile(const std::string& path) {
    Descriptor descriptor(open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY));
    struct stat status {};
    if (descriptor.get() < 0 || fstat(descriptor.get(), &status) != 0)
        throw FileError(std::strerror(errno));
    if (!S_ISREG(status.st_mode)) throw FileError("is not a regular file");
    return openedFile(path, std::move(descriptor), status);
}

InputFile::InputFile(const std::string& path) : InputFile(path, openFile(path)) {}

InputFile::InputFile(std::string path, OpenedFile file)
    : mPath(std::move(path)),
      mFile(std::move(file)),
      mHasName(mPath != "-" && !mPath.starts_with("/dev/") && !mFile.isCopy) {
    if (size() <= 0) throw FileError("is empty");
}

int64_t InputFile::storedSize() const {
    const auto isHoleFrom = [&](int64_t offset) {
        return lseek(mFile.descriptor.get(), offset, SEEK_DATA) < 0 && errno == ENXIO;
    };
    int64_t low = 0;
    int64_t high = size();
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
        const ssize_t count = pread(mFile.descriptor.get(), out.data() + done, out.size() - done,
                                    offset + static_cast<int64_t>(done));
        if (count < 0 && errno == EINTR) continue;
        if (count < 0 && done == 0) return -1;
        if (count <= 0) break;
        done += static_cast<size_t>(count);
    }
    return static_cast<int64_t>(done);
}

}  // namespace inspect
