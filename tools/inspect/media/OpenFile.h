// A media file with the demuxer at work on it.

#pragma once

#include <optional>
#include <string>

#include "inspect/base/InputFile.h"
#include "inspect/media/LibAv.h"

namespace inspect {

enum class Samples {
    kWhole,     // parsed into whole frames, whose kind the demuxer looks up where need be
    kAsStored,  // as the container cuts and marks them
};

class OpenFile {
public:
    // Throws a FileError for a file that cannot be read or holds no media.
    OpenFile(const std::string& path, Samples samples);

    AVFormatContext& context() const { return *mContext; }
    const InputFile& input() const { return mInput; }
    const std::string& format() const { return mFormat; }          // see MediaFile
    const std::string& formatName() const { return mFormatName; }  // see MediaFile
    const std::optional<std::string>& truncation() const { return mTruncation; }
    std::string complaint(int status) const { return mSilence.complaint(status); }

private:
    LibAvSilence mSilence;
    InputFile mInput;
    FileStream mStream;
    std::string mFormat;
    std::string mFormatName;
    std::optional<std::string> mTruncation;
    LibAvPtr<AVFormatContext> mContext;
};

}  // namespace inspect
