#include "handset/handset.h"

#include <cstdarg>
#include <cstdio>
#include <cstdlib>

#include "handset/format.h"

namespace handset {

StrongPointer<Player> findPlayer(const ServiceName& service) {
    return service.name == u"media.player" ? new Player : nullptr;
}

}  // namespace handset

struct AMediaFormat : handset::Store<std::string> {};

extern "C" {

#define HANDSET_KEY(NAME)                   \
    static char text##NAME[] = "my-" #NAME; \
    char* AMEDIAFORMAT_KEY_##NAME = text##NAME;
HANDSET_KEYS(HANDSET_KEY)

AMediaFormat* AMediaFormat_new() {
    return new AMediaFormat;
}
media_status_t AMediaFormat_delete(AMediaFormat* format) {
    delete format;
    return AMEDIA_OK;
}
void AMediaFormat_setInt32(AMediaFormat* format, const char* key, int32_t value) {
    format->setInt32(key, value);
}
void AMediaFormat_setInt64(AMediaFormat* format, const char* key, int64_t value) {
    format->setInt64(key, value);
}
void AMediaFormat_setString(AMediaFormat* format, const char* key, const char* value) {
    format->setString(key, value);
}
void AMediaFormat_setBuffer(AMediaFormat* format, const char* key, const void* data, size_t size) {
    format->setData(key, 0, data, size);
}
bool AMediaFormat_getInt32(AMediaFormat* format, const char* key, int32_t* out) {
    return format->findInt32(key, out);
}
bool AMediaFormat_getString(AMediaFormat* format, const char* key, const char** out) {
    return format->findCString(key, out);
}
bool AMediaFormat_getBuffer(AMediaFormat* format, const char* key, void** data, size_t* size) {
    uint32_t type;
    return format->findData(key, &type, const_cast<const void**>(data), size);
}

int __android_log_print(int, const char*, const char* format, ...) {
    va_list arguments;
    va_start(arguments, format);
    const int length = std::vfprintf(stderr, format, arguments);
    va_end(arguments);
    return length;
}
void __android_log_assert(const char*, const char*, const char*, ...) {
    std::abort();
}
int __android_log_error_write(int, const char*, int32_t, const char*, uint32_t) {
    return 1;
}

}  // extern "C"
