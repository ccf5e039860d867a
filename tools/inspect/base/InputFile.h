// A regular file, read at any offset.

#pragma once

#include <cstdint>
#include <stdexcept>
#include <string>

#include "inspect/base/Bytes.h"

namespace inspect {

// Why a file cannot be inspected, in one line without the file's name.
class FileError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

class InputFile {
public:
    // Throws a FileError for what is missing, unreadable, empty, or no regular file.
    explicit InputFile(const std::string& path);
    ~InputFile();
    InputFile(const InputFile&) = delete;
    InputFile& operator=(const InputFile&) = delete;

    int64_t size() const { return mSize; }

    // The bytes read, fewer only at the end; negative for an error.
    int64_t readAt(int64_t offset, std::span<uint8_t> out) const;

private:
    int mDescriptor;
    int64_t mSize = 0;
};

}  // namespace inspect
