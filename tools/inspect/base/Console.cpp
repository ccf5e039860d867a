#include "inspect/base/Console.h"

#include <unistd.h>

#include <cstring>

#include "inspect/base/OutputFile.h"
#include "inspect/base/Utf8.h"

namespace inspect {
namespace {

int writeText(int descriptor, const std::string& text) {
    return writeAll(descriptor, ByteVector(text.begin(), text.end()));
}

}  // namespace

void complain(const std::string& text) {
    writeText(STDERR_FILENO, "zrinspect: " + escaped(text) + '\n');
}

bool print(const std::string& text) {
    const int error = writeText(STDOUT_FILENO, text);
    if (error != 0) complain(std::string("standard output: ") + std::strerror(error));
    return error == 0;
}

}  // namespace inspect
