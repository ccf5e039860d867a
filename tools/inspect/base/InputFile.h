// A file, read at any offset.

#pragma once

#include <sys/stat.h>

#include <cstdint>
#include <stdexcept>
#include <string>

#include "inspect/base/Bytes.h"
#include "inspect/base/Descriptor.h"

namespace inspect {

// Why a file cannot be inspected, in one line without the file's name.
class FileError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

// When it was last changed, since 1970.
int64_t modifiedNs(const struct stat& status);

// What is open, and what nobody learns from its bytes.
struct OpenedFile {
    Descriptor descriptor;
    int64_t sizeBytes = 0;
    int64_t modifiedNs = 0;         // see above
    bool isFolderWritable = false;  // in which it stands
    bool isCopy = false;            // of what came through a pipe
};

// Waits for nobody and throws a FileError when there is no regular file.
OpenedFile openRegularFile(const std::string& path);

class InputFile {
public:
    // "-" stands for standard input. What comes through a pipe is read to its end into a file
    // without a name. Throws a FileError for what is missing, unreadable, empty, or no file.
    explicit InputFile(const std::string& path);
    InputFile(std::string path, OpenedFile file);  // throws a FileError for an empty one
    InputFile(const InputFile&) = delete;
    InputFile& operator=(const InputFile&) = delete;

    const std::string& path() const { return mPath; }
    int64_t size() const { return mFile.sizeBytes; }
    int64_t modifiedNs() const { return mFile.modifiedNs; }
    bool isFolderWritable() const { return mFile.isFolderWritable; }
    bool hasName() const { return mHasName; }  // that says what it is, unlike that of a pipe

    // Up to where bytes were ever written; a hole of zeros may follow, as far as the file system
    // tells.
    int64_t storedSize() const;

    // The bytes read, fewer only at the end; negative for an error.
    int64_t readAt(int64_t offset, std::span<uint8_t> out) const;

private:
    std::string mPath;
    OpenedFile mFile;
    bool mHasName;
};

}  // namespace inspect
