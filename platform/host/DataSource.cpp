#include "platform/DataSource.h"

namespace android {

DataSourceBase::~DataSourceBase() = default;

status_t DataSourceBase::getSize(off64_t* size) {
    *size = 0;
    return ERROR_UNSUPPORTED;
}

bool DataSourceBase::getUri(char*, size_t) {
    return false;
}

uint32_t DataSourceBase::flags() {
    return 0;
}

void DataSourceBase::close() {}

status_t DataSourceBase::getAvailableSize(off64_t, off64_t*) {
    return -1;
}

}  // namespace android
