#include "inspect/base/OutputFile.h"

#include <fcntl.h>
#include <poll.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <climits>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <system_error>
#include <utility>

#include "inspect/base/InputFile.h"

namespace inspect {
namespace {

namespace fs = std::filesystem;

// For the signal handler, which can unlink() but little else. Empty = there is none.
std::array<char, PATH_MAX> temporary{};

constexpr int kSignals[] = {SIGHUP, SIGINT, SIGTERM};

void removeTemporary(int signal) {
    unlink(temporary.data());
    raise(signal);  // with its default effect, once the handler is left
}

void removeOnSignals() {
    for (const int signal : kSignals) {
        struct sigaction action {};
        if (sigaction(signal, nullptr, &action) != 0 || action.sa_handler != SIG_DFL) continue;
        action.sa_handler = removeTemporary;
        action.sa_flags = static_cast<int>(SA_RESETHAND);
        sigaction(signal, &action, nullptr);
    }
}

void stayOnSignals() {
    for (const int signal : kSignals) {
        struct sigaction action {};
        if (sigaction(signal, nullptr, &action) == 0 && action.sa_handler == removeTemporary) {
            std::signal(signal, SIG_DFL);
        }
    }
}

mode_t usualMode() {
    const mode_t mask = umask(0);
    umask(mask);
    return 0666 & ~mask;
}

// The permissions for a file of this name, which may be written.
mode_t modeFor(const fs::path& path, const OutputRules& rules) {
    struct stat status {};
    if (lstat(path.c_str(), &status) != 0) return usualMode();
    std::error_code ignored;
    if (std::ranges::any_of(rules.inputs, [&](const std::string& each) {
            return fs::equivalent(path, each == "-" ? "/dev/stdin" : each, ignored);
        })) {
        failOn(path, "is one of the files to look at");
    }
    if (!rules.overwrites) failOn(path, "is there already; --force overwrites it");
    if (!S_ISREG(status.st_mode)) failOn(path, "is not a regular file");
    if (access(path.c_str(), W_OK) != 0) failOn(path, std::strerror(errno));
    return status.st_mode & 07777;
}

}  // namespace

void failOn(const fs::path& path, const std::string& why) {
    throw FileError(path.string() + ": " + why);
}

bool canRetry(int descriptor, short event) {
    if (errno != EAGAIN) return errno == EINTR;
    pollfd state{.fd = descriptor, .events = event, .revents = 0};
    return poll(&state, 1, -1) >= 0 || errno == EINTR;
}

int writeAll(int descriptor, Bytes data) {
    while (!data.empty()) {
        const ssize_t count = ::write(descriptor, data.data(), data.size());
        if (count < 0 && !canRetry(descriptor, POLLOUT)) return errno;
        if (count > 0) data = data.subspan(static_cast<size_t>(count));
    }
    return 0;
}

OutputFile::OutputFile(fs::path path, const OutputRules& rules)
    : mPath(std::move(path)), mOverwrites(rules.overwrites) {
    std::error_code error;
    const fs::path target = fs::is_symlink(mPath, error) ? fs::canonical(mPath, error) : mPath;
    if (!error && mOverwrites) mPath = target;
    const mode_t mode = modeFor(mPath, rules);
    const std::string name = (mPath.parent_path() / ".zrinspect-XXXXXX").string();
    if (name.size() >= temporary.size()) failOn(mPath, std::strerror(ENAMETOOLONG));
    removeOnSignals();
    std::ranges::copy(name.c_str(), name.c_str() + name.size() + 1, temporary.begin());
    mDescriptor = mkostemp(temporary.data(), O_CLOEXEC);
    if (mDescriptor >= 0 && fchmod(mDescriptor, mode) == 0) return;
    const int reason = errno;
    if (mDescriptor >= 0) close(mDescriptor);
    unlink(temporary.data());
    temporary[0] = '\0';
    failOn(mPath, std::strerror(reason));
}

OutputFile::~OutputFile() {
    if (mDescriptor >= 0) close(mDescriptor);
    if (temporary[0] != '\0') unlink(temporary.data());
    temporary[0] = '\0';
    stayOnSignals();
}

std::string OutputFile::temporaryPath() const {
    return temporary.data();
}

void OutputFile::write(Bytes data) const {
    const int error = writeAll(mDescriptor, data);
    if (error != 0) failOn(mPath, std::strerror(error));
}

void OutputFile::keep() {
    int status = close(std::exchange(mDescriptor, -1));
    const unsigned flags = mOverwrites ? 0 : RENAME_NOREPLACE;
    const char* const name = temporary.data();
    if (status == 0) status = renameat2(AT_FDCWD, name, AT_FDCWD, mPath.c_str(), flags);
    // Some file systems know no flags.
    if (status != 0 && errno == EINVAL) status = rename(name, mPath.c_str());
    if (status != 0) failOn(mPath, std::strerror(errno));
    temporary[0] = '\0';
}

}  // namespace inspect
