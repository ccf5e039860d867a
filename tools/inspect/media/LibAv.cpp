#include "inspect/media/LibAv.h"

#include <algorithm>
#include <new>
#include <utility>

namespace inspect {
namespace {

constexpr int kBufferBytes = 1 << 15;

// libav has one callback for the process, without an argument of the user's.
LibAvListener listener;

void passOn(void* /*source*/, int level, const char* format, va_list arguments) {
    if (level == AV_LOG_INFO && listener != nullptr) listener(format, arguments);
}

}  // namespace

void setLibAvListener(LibAvListener hear) {
    listener = std::move(hear);
    av_log_set_callback(passOn);
}

LibAvPtr<AVBSFContext> openFilter(const char* name, const AVCodecParameters& codec) {
    const AVBitStreamFilter* filter = av_bsf_get_by_name(name);
    AVBSFContext* context = nullptr;
    if (filter == nullptr || av_bsf_alloc(filter, &context) < 0) return nullptr;
    LibAvPtr<AVBSFContext> owned(context);
    const bool canRun =
            avcodec_parameters_copy(context->par_in, &codec) >= 0 && av_bsf_init(context) >= 0;
    return canRun ? std::move(owned) : nullptr;
}

void LibAvDelete::operator()(AVIOContext* context) const {
    av_freep(&context->buffer);
    avio_context_free(&context);
}

FileStream::FileStream(const InputFile& file, int64_t end) : mFile(file), mEnd(end) {
    auto* buffer = static_cast<unsigned char*>(av_malloc(kBufferBytes));
    mContext.reset(avio_alloc_context(buffer, kBufferBytes, 0, this, read, nullptr, seek));
    if (mContext == nullptr) {
        av_free(buffer);
        throw std::bad_alloc();
    }
}

void FileStream::limit(int64_t sizeBytes) {
    if (mLeft <= 0) mContext->eof_reached = 0;
    mLeft = sizeBytes;
}

int FileStream::read(void* self, uint8_t* out, int size) {
    auto& stream = *static_cast<FileStream*>(self);
    const int64_t most = std::min({int64_t{size}, stream.mLeft, stream.mEnd - stream.mOffset});
    if (most <= 0) return AVERROR_EOF;
    const int64_t count = stream.mFile.readAt(stream.mOffset, {out, static_cast<size_t>(most)});
    if (count < 0) {
        stream.mHasFailed = true;
        return AVERROR(EIO);
    }
    if (count == 0) return AVERROR_EOF;
    stream.mOffset += count;
    stream.mLeft -= count;
    return static_cast<int>(count);
}

int64_t FileStream::seek(void* self, int64_t offset, int whence) {
    auto& stream = *static_cast<FileStream*>(self);
    switch (whence & ~AVSEEK_FORCE) {
        case AVSEEK_SIZE: return stream.mEnd;
        case SEEK_SET: break;
        case SEEK_CUR: offset += stream.mOffset; break;
        case SEEK_END: offset += stream.mEnd; break;
        default: return AVERROR(EINVAL);
    }
    if (offset < 0) return AVERROR(EINVAL);
    stream.mOffset = offset;
    return offset;
}

std::string readingError(int status) {
    switch (status) {
        case AVERROR_EOF: return "it ends inside its headers";
        case AVERROR(EIO): return "the disk cannot be read";
        case AVERROR(EPERM): return "it names other files, which are not read";
        case AVERROR(ENOMEM): return "it asks for more memory than there is";
        case AVERROR_EXIT: return "its samples do not come to an end";
        case AVERROR_INVALIDDATA: return "its headers make no sense";
        default: return "its headers cannot be read";
    }
}

}  // namespace inspect
