// Owning handles for libav's objects, and its messages kept from the user.

#pragma once

extern "C" {
#include <libavcodec/avcodec.h>
#include <libavcodec/bsf.h>
#include <libavformat/avformat.h>
}

#include <cstdarg>
#include <functional>
#include <limits>
#include <memory>
#include <string>

#include "inspect/base/InputFile.h"

namespace inspect {

// For no sample and no index more, whatever its size says.
inline constexpr size_t kMaxAllocatedBytes = size_t{512} << 20;

struct LibAvDelete {
    void operator()(AVFormatContext* context) const { avformat_close_input(&context); }
    void operator()(AVBSFContext* context) const { av_bsf_free(&context); }
    void operator()(AVCodecContext* context) const { avcodec_free_context(&context); }
    void operator()(AVCodecParameters* codec) const { avcodec_parameters_free(&codec); }
    void operator()(AVPacket* packet) const { av_packet_free(&packet); }
    void operator()(AVIOContext* context) const;
};
template <typename T>
using LibAvPtr = std::unique_ptr<T, LibAvDelete>;

// A bitstream filter for such packets; null when there is no such filter for them.
LibAvPtr<AVBSFContext> openFilter(const char* name, const AVCodecParameters& codec);

// A byte stream over the file, which outlives it, up to an end.
class FileStream {
public:
    FileStream(const InputFile& file, int64_t end);
    FileStream(const FileStream&) = delete;
    FileStream& operator=(const FileStream&) = delete;

    AVIOContext* get() const { return mContext.get(); }

    bool hasFailed() const { return mHasFailed; }  // to read, and not for want of bytes

    static constexpr int64_t kNoLimit = std::numeric_limits<int64_t>::max();
    // Seems to end after so many further bytes.
    void limit(int64_t sizeBytes);

private:
    static int read(void* self, uint8_t* out, int size);
    static int64_t seek(void* self, int64_t offset, int whence);

    const InputFile& mFile;
    int64_t mEnd;
    int64_t mLeft = kNoLimit;
    int64_t mOffset = 0;
    bool mHasFailed = false;
    LibAvPtr<AVIOContext> mContext;
};

// Takes a message as printf does.
using LibAvListener = std::function<void(const char* format, va_list arguments)>;

// Who hears libav's messages at AV_LOG_INFO from now on. The others, and all of them when it is
// nobody, go nowhere.
void setLibAvListener(LibAvListener hear);

// What libav's status, an AVERROR, means for a file, in words.
std::string readingError(int status);

}  // namespace inspect
