#include "inspect/base/OutputFile.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <system_error>

#include "inspect/base/InputFile.h"

namespace inspect {

void failOn(const std::filesystem::path& path, const std::string& why) {
    throw FileError(path.string() + ": " + why);
}

int createFile(const std::filesystem::path& path, const OutputRules& rules) {
    std::error_code ignored;
    if (std::ranges::any_of(rules.inputs, [&](const auto& each) {
            return std::filesystem::equivalent(path, each, ignored);
        })) {
        failOn(path, "is one of the files to look at");
    }
    // Opening a pipe must not wait for its reader.
    const int mode =
            O_WRONLY | O_CREAT | O_CLOEXEC | O_NONBLOCK | (rules.overwrites ? O_TRUNC : O_EXCL);
    const int descriptor = open(path.c_str(), mode, 0666);
    if (descriptor < 0 && errno == EEXIST) failOn(path, "is there already; --force overwrites it");
    if (descriptor < 0) failOn(path, std::strerror(errno));
    struct stat status {};
    if (fstat(descriptor, &status) == 0 && S_ISREG(status.st_mode)) return descriptor;
    close(descriptor);
    failOn(path, "is not a regular file");
}

}  // namespace inspect
