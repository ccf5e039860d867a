// Every public operation of the library, each on objects of its own, for programs that disturb
// them.

#pragma once

#include <span>
#include <string>

#include "platform/Message.h"
#include "platform/MetaData.h"
#include "platform/OmxNode.h"
#include "support/Platform.h"
#include "zrcodecparser/DataSource.h"
#include "zrcodecparser/MediaExtractorHelper.h"

namespace sweeps {

using android::sp;
using android::status_t;

// Whether allocations of this thread count; what the programs do for themselves does not.
inline thread_local bool watched = false;
class Unwatched {
public:
    ~Unwatched() { watched = mFormer; }

private:
    bool mFormer = std::exchange(watched, false);
};

// A file behind both kinds of sources, which says what it likes of one of its reads, or of its
// size.
struct Source : android::DataSourceBase {
    std::string file{};
    off64_t origin = 0;  // where the file begins
    int spoiltRead = -1;
    ssize_t answer = 0;       // to that read
    off64_t sizeAnswer = -1;  // instead of the size
    status_t sizeStatus = 0;
    int reads = 0;
    size_t asked = 0, sizes[8] = {};  // bytes, of all reads and of each

    status_t initCheck() const override { return 0; }
    ssize_t readAt(off64_t offset, void* data, size_t size) override;
    status_t getSize(off64_t* size) override;
};

// A component that remembers what it is told, and refuses one of the calls.
struct Component : android::IOMXNode {
    std::string calls{};  // a line each
    int count = 0, refusedCall = -1;
    status_t refusal = 0;

    status_t answer(const char* call, uint32_t index, const void* bytes, size_t size);
    status_t getParameter(OMX_INDEXTYPE index, void* params, size_t size) override;
    status_t setParameter(OMX_INDEXTYPE index, const void* params, size_t size) override;
    status_t getExtensionIndex(const char* name, OMX_INDEXTYPE* index) override;
};

// A file that a WAV dump writes, and which of its writes fails or comes out short.
struct Disk {
    std::string file{};
    size_t at = 0;
    int writes = 0, spoiltWrite = -1;
    ssize_t written = 0;  // by that write; 0: it fails
};

struct Operation;

// What one run of an operation has for its own.
struct Trial {
    explicit Trial(std::string bytes);
    Trial(const Trial&) = delete;

    const uint8_t* data() const { return reinterpret_cast<const uint8_t*>(input.data()); }
    uint8_t* out() { return output.data(); }
    // A line of the outcome.
    template <typename... Values>
    void note(const Values&... values) {
        const Unwatched own;
        ((notes += text(values) + ' '), ...);
        notes += '\n';
    }
    // Log lines and files of this thread go to this trial from here on.
    void perform(const Operation& operation);
    ~Trial();
    // Forgets all but what is stored, and has the input again.
    void again();
    // What stands in the stores, a line an entry; and all that has come of the operation.
    std::string stores() const;
    std::string outcome() const;

    std::string first, input;
    size_t size;
    std::vector<uint8_t> output;
    test::Format format{};
    sp<android::MetaData> metadata = new android::MetaData;
    sp<android::AMessage> message = new android::AMessage;
    sp<Component> node = new Component;
    sp<android::MediaExtractorHelper> helper = new android::MediaExtractorHelper;
    Source source{};
    CDataSource record;
    android::DataSourceHelper recordSource{&record};
    Disk disk{};
    std::string notes{}, log{};

private:
    static std::string text(const std::string& value) { return value; }
    static std::string text(const char* value) { return value; }
    static std::string text(auto value) { return std::to_string(value); }
};

struct Operation {
    const char* name;  // the class, the operation and, where there are several, the form
    void (*call)(Trial&);
    std::string (*input)(size_t size);  // of about that many bytes
    // What is held at most, and allocated in all, with what is stored: so many times the input, and
    // in both cases `fixed` bytes.
    double peak = 0;
    double sum = 0;
    size_t fixed = 4096;
    // For each call to the component what a refusal does: is [f]atal, the [r]esult and the end, the
    // silent [e]nd, or [i]gnored.
    const char* component = "";
    bool readsTag = false;  // from the source
};

std::span<const Operation> operations();
inline constexpr size_t kSmall = 700;  // bytes of input where the size does not matter

}  // namespace sweeps
