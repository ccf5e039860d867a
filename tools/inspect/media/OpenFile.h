// A file that is open and known to be media; everybody reads it through this.

#pragma once

#include <string>

#include "inspect/base/InputFile.h"
#include "inspect/media/Extent.h"
#include "inspect/media/LibAv.h"

namespace inspect {

class OpenFile {
public:
    // Finds out what the file is, which stays open elsewhere. Throws a NotMedia when it is
    // none.
    explicit OpenFile(const InputFile& input);

    const InputFile& input() const { return mInput; }
    const AVInputFormat& demuxer() const { return *mDemuxer; }
    bool isSure() const { return mIsSure; }  // from the content alone, without the file's name
    const std::string& format() const { return mFormat; }          // see MediaFile
    const std::string& formatName() const { return mFormatName; }  // see MediaFile
    const Extent& extent() const { return mExtent; }

private:
    const InputFile& mInput;
    const AVInputFormat* mDemuxer = nullptr;
    bool mIsSure = false;
    std::string mFormat;
    std::string mFormatName;
    Extent mExtent;
};

class NotMedia : public FileError {
public:
    using FileError::FileError;
};

// Throws a NotMedia that says so, and what the file is where its first bytes tell.
[[noreturn]] void failAsNotMedia(const InputFile& file);

// Whether the name is one that a media file would have.
bool isNamedAsMedia(const std::string& path);

// What is wrong at the beginning of a file whose kind its first bytes tell, over which a demuxer
// may stumble; empty when nothing is.
std::string faultBeforeMedia(const InputFile& file);

}  // namespace inspect
