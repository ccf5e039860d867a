// Runs every file of the named folders through a target once, without libFuzzer.

#include <filesystem>
#include <fstream>
#include <iterator>

#include "Fuzz.h"

int main(int argc, char** argv) {
    int files = 0;
    for (int i = 1; i < argc; ++i) {
        for (const auto& file : std::filesystem::directory_iterator(argv[i])) {
            std::ifstream in(file.path(), std::ios::binary);
            const std::vector<char> bytes(std::istreambuf_iterator<char>(in), {});
            REQUIRE(in.good() || in.eof());
            std::printf("%s\n", file.path().c_str());
            LLVMFuzzerTestOneInput(reinterpret_cast<const uint8_t*>(bytes.data()), bytes.size());
            ++files;
        }
    }
    std::printf("%d files\n", files);
    return files > 0 ? 0 : 1;
}
