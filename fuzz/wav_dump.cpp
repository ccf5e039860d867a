// Input: calls on a WAV file in memory, a byte for each that says which, with their arguments.
//
// Aims at Helper/wavdump/*.

#include <sys/mman.h>
#include <unistd.h>

#include "Fuzz.h"
#include "zrcodecparser/WavDump.h"

using fuzz::Bytes;
using fuzz::take;

namespace {

std::string littleEndian(uint32_t value, unsigned bytes) {
    std::string text;
    for (unsigned i = 0; i < bytes; ++i) text += static_cast<char>(value >> 8 * i);
    return text;
}

// What the file must hold: a header of 44 bytes, then what is written where it is written.
struct Model {
    std::string file{};
    size_t at = 0, size = 44;
    uint32_t rate = 0, bits = 0, channels = 0;

    void write(const std::string& bytes) {
        file.resize(std::max(file.size(), at + bytes.size()));
        file.replace(at, bytes.size(), bytes);
        at += bytes.size();
    }
    // Multimedia Programming Interface and Data Specifications 1.0: RIFF WAVE of WAVE_FORMAT_PCM.
    void writeHeader() {
        const uint32_t frame = bits / 8 * channels;
        write("RIFF" + littleEndian(static_cast<uint32_t>(size - 8), 4) + "WAVEfmt " +
              littleEndian(16, 4) + littleEndian(1, 2) + littleEndian(channels, 2) +
              littleEndian(rate, 4) + littleEndian(rate * frame, 4) + littleEndian(frame, 2) +
              littleEndian(bits, 2) + "data" + littleEndian(static_cast<uint32_t>(size - 44), 4));
    }
    void finish() {
        at = 0;
        writeHeader();
        at = size;
    }
};

std::string contents(int file) {
    std::string bytes(static_cast<size_t>(lseek(file, 0, SEEK_END)), 0);
    REQUIRE(pread(file, bytes.data(), bytes.size(), 0) == std::ssize(bytes));
    return bytes;
}

void callOnce(android::WavDump& dump, Model& model, bool& isOpen, Bytes& input) {
    const uint32_t call = take(input, 1);
    if (call % 8 == 0) {
        const uint32_t rate = take(input, 4);
        const auto bits = static_cast<uint16_t>(take(input, 2));
        const auto channels = static_cast<uint16_t>(take(input, 2));
        REQUIRE(dump.open(rate, bits, channels) == (isOpen ? -1 : 0));
        if (!isOpen) model = {.rate = rate, .bits = bits, .channels = channels};
        if (!isOpen) model.finish();
        isOpen = true;
    } else if (call % 8 == 1) {
        REQUIRE(dump.write_header() == (isOpen ? 0 : -1));
        if (isOpen) model.writeHeader();
    } else if (call % 8 < 4) {
        const bool isWide = call % 8 == 3;
        const uint32_t value = take(input, isWide ? 4 : 2), size = isWide ? 4 : 2;
        const int written =
                isWide ? dump.write_u32le(value) : dump.write_u16le(static_cast<uint16_t>(value));
        REQUIRE(written == (isOpen ? static_cast<int>(size) : -1));
        if (isOpen) model.write(littleEndian(value, size));
    } else {
        const Bytes samples = input.first(std::min<size_t>(call / 8 * 8 + call % 4, input.size()));
        const auto size = static_cast<uint32_t>(samples.size());
        REQUIRE(dump.dump(samples.data(), size) == (isOpen ? size : 0));
        input = input.subspan(size);
        if (!isOpen) return;
        model.write(std::string(samples.begin(), samples.end()));
        model.size += size;
        model.finish();
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    static const int file = memfd_create("wav", 0);
    REQUIRE(file >= 0 && ftruncate(file, 0) == 0);
    Bytes input(data, size);
    Model model;
    {
        android::WavDump dump(("/proc/self/fd/" + std::to_string(file)).c_str());
        for (bool isOpen = false; !input.empty();) callOnce(dump, model, isOpen, input);
    }
    REQUIRE(contents(file) == model.file);
    return 0;
}
