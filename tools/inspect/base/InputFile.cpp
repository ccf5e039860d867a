#include "inspect/base/InputFile.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <utility>

namespace inspect {
namespace {

// Looked at before it is opened: opening a pipe would wait for its writer.
int64_t regularFileSize(const std::string& path) {
    struct stat status {};
    if (stat(path.c_str(), &status) != 0) throw FileError(std::strerror(errno));
    if (S_ISDIR(status.st_mode)) throw FileError("is a directory");
    if (!S_ISREG(status.st_mode)) throw FileError("is not a regular file");
    if (status.st_size == 0) throw FileError("is empty");
    return status.st_size;
}

}  // namespace

InputFile::InputFile(std::string path)
    : mPath(std::move(path)),
      mSize(regularFileSize(mPath)),
      mDescriptor(open(mPath.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK)) {
    if (mDescriptor < 0) throw FileError(std::strerror(errno));
}

InputFile::~InputFile() {
    close(mDescriptor);
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
