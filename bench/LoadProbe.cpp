// Loads one shared library into this fresh process and prints what that took, in one line:
// nanoseconds, new objects, bytes of dirty memory.
//
// usage: load_probe LIBRARY

#include <dlfcn.h>
#include <fcntl.h>
#include <link.h>
#include <unistd.h>

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>

namespace {

int countObject(dl_phdr_info* /*info*/, size_t /*size*/, void* count) {
    ++*static_cast<int*>(count);
    return 0;
}

int loadedObjects() {
    int count = 0;
    dl_iterate_phdr(countObject, &count);
    return count;
}

// The sum of the Private_Dirty lines of the process. Works in memory that is touched beforehand, so
// that it adds nothing to what it measures.
long dirtyBytes() {
    static char text[1 << 20];
    std::memset(text, 1, sizeof(text));
    const int file = open("/proc/self/smaps", O_RDONLY);
    size_t size = 0;
    ssize_t got;
    while ((got = read(file, text + size, sizeof(text) - 1 - size)) > 0) {
        size += static_cast<size_t>(got);
    }
    close(file);
    text[size] = '\0';

    constexpr char kKey[] = "Private_Dirty:";
    long kib = 0;
    for (const char* at = std::strstr(text, kKey); at != nullptr; at = std::strstr(at + 1, kKey)) {
        kib += std::strtol(at + sizeof(kKey) - 1, nullptr, 10);
    }
    return kib * 1024;
}

// Keeps libstdc++ among the objects that are there from the start.
[[gnu::noinline]] std::string named(const char* name) {
    return std::string("cannot load ") + name;
}

}  // namespace

int main(int argc, char** argv) {
    if (argc != 2) return 2;
    const std::string complaint = named(argv[1]);
    dirtyBytes();
    const int objectsBefore = loadedObjects();
    const long dirtyBefore = dirtyBytes();

    const auto start = std::chrono::steady_clock::now();
    void* library = dlopen(argv[1], RTLD_NOW | RTLD_LOCAL);
    const auto end = std::chrono::steady_clock::now();
    if (library == nullptr) {
        std::fprintf(stderr, "%s: %s\n", complaint.c_str(), dlerror());
        return 1;
    }

    const long dirty = dirtyBytes() - dirtyBefore;
    const int objects = loadedObjects() - objectsBefore;
    const auto took = std::chrono::duration_cast<std::chrono::nanoseconds>(end - start);
    std::printf("%lld %d %ld\n", static_cast<long long>(took.count()), objects, dirty);
    return 0;
}
