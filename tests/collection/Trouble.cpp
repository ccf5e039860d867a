// Makes workers stumble over files whose names say how; loaded before a program's other libraries.
// The first process reads the name, of which a worker knows nothing, and hands on what is to
// happen.

#include <arpa/inet.h>
#include <dlfcn.h>
#include <fcntl.h>
#include <poll.h>
#include <sys/mman.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <climits>
#include <csignal>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <new>
#include <string>
#include <utility>
#include <vector>

namespace {

// By the first process and its workers.
struct Shared {
    pid_t parent = getpid();
    bool isKilled = false;
};
Shared& shared = *new (mmap(nullptr, sizeof(Shared), PROT_READ | PROT_WRITE,
                            MAP_SHARED | MAP_ANONYMOUS, -1, 0)) Shared;

constexpr std::array kTroubles{"crash",   "leave", "hang",    "hungry",  "outlaw", "kill",
                               "read",    "ask",   "write",   "connect", "fork",   "execute",
                               "signals", "load",  "inherit", "drops",   "boast"};

// In a worker.
int received = -1;
off_t trouble = 0;  // its place in the table, from 1

// Of the file that a message hands over.
int fileIn(const msghdr* message) {
    int file = -1;
    const cmsghdr* const control = CMSG_FIRSTHDR(message);
    if (control != nullptr) std::memcpy(&file, CMSG_DATA(control), sizeof file);
    return file;
}

template <typename Function>
Function* original(const char* name) {
    return reinterpret_cast<Function*>(dlsym(RTLD_NEXT, name));
}

bool connects() {
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_port = htons(static_cast<uint16_t>(std::atoi(getenv("ZR_PORT"))));
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    const int descriptor = socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
    return connect(descriptor, reinterpret_cast<sockaddr*>(&address), sizeof address) == 0;
}

// Beside the standard streams and the worker's socket.
bool hasMoreOpen() {
    for (int each = 4; each < 100; each++) {
        if (each != received && (lseek(each, 0, SEEK_CUR) >= 0 || errno != EBADF)) return true;
    }
    return false;
}

// The worker's socket gets the head of an answer, and then a byte after each pause.
[[noreturn]] void answerWith(uint32_t size, int pauseMs) {
    constexpr int kSocket = 3;
    const std::array<uint32_t, 2> head{size, 0};
    if (write(kSocket, head.data(), sizeof head) != sizeof head) _exit(98);
    while (write(kSocket, "", 1) == 1) poll(nullptr, 0, pauseMs);
    _exit(98);
}

// Returns whether something was done that a worker may not.
bool doAs(const std::string& name) {
    if (name == "crash") raise(SIGSEGV);
    if (name == "leave") _exit(7);
    while (name == "hang") pause();
    std::vector<std::unique_ptr<char[]>> pieces;
    while (name == "hungry") pieces.push_back(std::make_unique<char[]>(1 << 20));
    // Once, as somebody else would.
    if (name == "kill" && !std::exchange(shared.isKilled, true)) raise(SIGKILL);
    if (name == "outlaw") raise(SIGKILL);
    if (name == "drops") answerWith(1'000, 200);
    if (name == "boast") answerWith(1U << 30, 1);
    if (name == "read") return open("/etc/passwd", O_RDONLY | O_CLOEXEC) >= 0;
    if (name == "ask") return access("/etc/passwd", F_OK) == 0;
    if (name == "write") return open("/tmp", O_WRONLY | O_TMPFILE | O_CLOEXEC, 0600) >= 0;
    if (name == "connect") return connects();
    if (name == "fork") return fork() >= 0;
    if (name == "execute") return execl("/bin/false", "false", nullptr) == 0;
    if (name == "signals") return kill(shared.parent, 0) == 0;
    constexpr int kCode = PROT_READ | PROT_EXEC;
    if (name == "load") return mmap(nullptr, 1, kCode, MAP_PRIVATE | MAP_ANON, -1, 0) != MAP_FAILED;
    return name == "inherit" && hasMoreOpen();
}

}  // namespace

// In the first process, which hands out a file that it has opened. Nobody else cares for where
// reading would go on.
extern "C" ssize_t sendmsg(int socket, const msghdr* message, int flags) {
    const int file = fileIn(message);
    std::array<char, PATH_MAX> target{};
    const std::string link = "/proc/self/fd/" + std::to_string(file);
    if (readlink(link.c_str(), target.data(), target.size() - 1) < 0) return -1;
    const std::string path = target.data();
    const auto isNamed = [&](const char* part) {
        return path.find(std::string("/") + part) != std::string::npos;
    };
    for (size_t i = 0; i < kTroubles.size(); i++) {
        if (isNamed(kTroubles[i])) lseek(file, static_cast<off_t>(i + 1), SEEK_SET);
    }
    if (isNamed("change")) utimensat(AT_FDCWD, path.c_str(), nullptr, 0);
    if (isNamed("vanish")) unlink(path.c_str());
    return original<decltype(sendmsg)>("sendmsg")(socket, message, flags);
}

extern "C" ssize_t recvmsg(int socket, msghdr* message, int flags) {
    const ssize_t count = original<decltype(recvmsg)>("recvmsg")(socket, message, flags);
    received = fileIn(message);
    trouble = lseek(received, 0, SEEK_CUR);
    return count;
}

extern "C" ssize_t pread64(int descriptor, void* out, size_t size, off64_t offset) {
    const auto number = static_cast<size_t>(std::exchange(trouble, 0));
    const char* const name = number > 0 ? kTroubles.at(number - 1) : getenv("ZR_ALONE");
    if (name != nullptr && doAs(name)) _exit(99);
    return original<decltype(pread64)>("pread64")(descriptor, out, size, offset);
}

extern "C" ssize_t pread(int descriptor, void* out, size_t size, off_t offset) {
    return pread64(descriptor, out, size, offset);
}

// A kernel without a sandbox.
extern "C" int seccomp_load(void* filter) {
    if (getenv("ZR_FREE") != nullptr) return -EINVAL;
    return original<int(void*)>("seccomp_load")(filter);
}
