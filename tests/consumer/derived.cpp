// Somebody else's classes over every base of the public headers, with RTTI.

#include <platform/DataSource.h>
#include <platform/Host.h>
#include <platform/OmxNode.h>
#include <platform/SampleBuffer.h>
#include <zrcodecparser/DataSource.h>
#include <zrcodecparser/ID3Wrapper.h>
#include <zrcodecparser/MediaExtractorHelper.h>

#include <cstdio>
#include <typeinfo>

namespace {

using namespace android;

int failures = 0;

// Is an object of a class derived from Base known by its own type, and as a Base?
template <typename Base, typename Object>
void check(Object& object) {
    Base* base = &object;
    if (dynamic_cast<Object*>(base) != nullptr && typeid(*base) == typeid(Object)) return;
    std::printf("%s is lost behind its base\n", typeid(Object).name());
    ++failures;
}

// Counted objects delete themselves.
template <typename Base>
void checkCounted() {
    struct Derived : Base {
        ~Derived() override = default;
    };
    const sp<Derived> object = new Derived;
    check<Base>(*object);
    check<RefBase>(*object);
}

struct Buffer : MediaBufferHelper {
    void* data() override { return nullptr; }
    size_t size() override { return 0; }
    size_t range_offset() override { return 0; }
    size_t range_length() override { return 0; }
    void set_range(size_t, size_t) override {}
};

struct Source : DataSourceBase {
    status_t initCheck() const override { return 0; }
    ssize_t readAt(off64_t, void*, size_t) override { return 0; }
};

struct Node : IOMXNode {
    status_t getParameter(OMX_INDEXTYPE, void*, size_t) override { return 0; }
    status_t setParameter(OMX_INDEXTYPE, const void*, size_t) override { return 0; }
    status_t getExtensionIndex(const char*, OMX_INDEXTYPE*) override { return 0; }
};

struct Record : DataSourceHelper {
    using DataSourceHelper::DataSourceHelper;
    uint32_t flags() override { return 1; }
};

struct Memory : MemorySource {
    using MemorySource::MemorySource;
    uint32_t flags() override { return 1; }
};

}  // namespace

int main() {
    checkCounted<MediaExtractorHelper>();
    checkCounted<ID3Wrapper>();
    checkCounted<RefBase>();
    checkCounted<MetaData>();

    Buffer buffer;
    check<MediaBufferHelper>(buffer);
    Source source;
    check<DataSourceBase>(source);
    const sp<Node> node = new Node;
    check<IOMXNode>(*node);
    Record record{nullptr};
    check<DataSourceHelper>(record);
    Memory memory{nullptr, 0};
    check<MemorySource>(memory);
    check<DataSourceBase>(memory);
    return failures;
}
