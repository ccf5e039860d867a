// A file as the plain record of entries that container parsers are handed on a device.

#pragma once

#include <cstdio>

#include "platform/DataSource.h"

namespace avi {

class FileSource {
public:
    explicit FileSource(const char* name) : mFile(fopen(name, "rb")) {}
    ~FileSource() {
        if (mFile != nullptr) fclose(mFile);
    }
    FileSource(const FileSource&) = delete;
    FileSource& operator=(const FileSource&) = delete;

    // Lives as long as this object.
    CDataSource* record() { return &mRecord; }

private:
    static FILE* file(void* handle) { return static_cast<FileSource*>(handle)->mFile; }

    static ssize_t readAt(void* handle, off64_t offset, void* data, size_t size) {
        if (fseeko(file(handle), offset, SEEK_SET) != 0) return android::ERROR_IO;
        return static_cast<ssize_t>(fread(data, 1, size, file(handle)));
    }

    static int32_t getSize(void* handle, off64_t* size) {
        if (file(handle) == nullptr || fseeko(file(handle), 0, SEEK_END) != 0) {
            return android::ERROR_IO;
        }
        *size = ftello(file(handle));
        return *size < 0 ? android::ERROR_IO : android::OK;
    }

    static uint32_t flags(void*) { return 0; }
    static bool getUri(void*, char*, size_t) { return false; }

    FILE* mFile;
    CDataSource mRecord = {&readAt, &getSize, &flags, &getUri, this};
};

}  // namespace avi
