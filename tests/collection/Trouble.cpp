// Makes a program stumble over files whose names say how; loaded before its other libraries.

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <climits>
#include <csignal>
#include <memory>
#include <string>
#include <vector>

extern "C" ssize_t pread64(int descriptor, void* out, size_t size, off64_t offset) {
    std::array<char, PATH_MAX> target{};
    const std::string link = "/proc/self/fd/" + std::to_string(descriptor);
    if (readlink(link.c_str(), target.data(), target.size() - 1) < 0) return -1;
    const std::string path = target.data();
    const auto isNamed = [&](const char* part) { return path.find(part) != std::string::npos; };
    if (isNamed("/crash")) raise(SIGSEGV);
    if (isNamed("/leave")) _exit(7);
    while (isNamed("/hang")) pause();
    std::vector<std::unique_ptr<char[]>> pieces;
    while (isNamed("/hungry")) pieces.push_back(std::make_unique<char[]>(1 << 20));
    if (isNamed("/change")) utimensat(AT_FDCWD, path.c_str(), nullptr, 0);
    if (isNamed("/vanish")) unlink(path.c_str());
    // Once for each file, as somebody else would.
    const std::string mark = path + ".killed";
    if (isNamed("/kill") && access(mark.c_str(), F_OK) != 0) {
        close(open(mark.c_str(), O_CREAT | O_WRONLY | O_CLOEXEC, 0600));
        raise(SIGKILL);
    }
    if (isNamed("/outlaw")) raise(SIGKILL);
    return lseek64(descriptor, offset, SEEK_SET) < 0 ? -1 : read(descriptor, out, size);
}

extern "C" ssize_t pread(int descriptor, void* out, size_t size, off_t offset) {
    return pread64(descriptor, out, size, offset);
}
