// What a device brings: interfaces of its own, under names of its own.

#pragma once

#include <sys/types.h>

#include <atomic>
#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <utility>
#include <variant>
#include <vector>

namespace handset {

class Counted {
public:
    void retain() const { ++mCount; }
    void release() const {
        if (--mCount == 0) delete this;
    }

protected:
    virtual ~Counted() = default;

private:
    mutable std::atomic<int> mCount{0};
};

template <typename T>
class StrongPointer {
public:
    StrongPointer() = default;
    StrongPointer(T* object) : mObject(object) {
        if (mObject) mObject->retain();
    }
    StrongPointer(const StrongPointer& other) : StrongPointer(other.get()) {}
    template <typename U>
    StrongPointer(const StrongPointer<U>& other) : StrongPointer(other.get()) {}
    StrongPointer& operator=(StrongPointer other) {
        std::swap(mObject, other.mObject);
        return *this;
    }
    ~StrongPointer() { clear(); }
    void clear() {
        if (T* object = std::exchange(mObject, nullptr)) object->release();
    }
    T* get() const { return mObject; }
    T* operator->() const { return mObject; }
    T& operator*() const { return *mObject; }
    bool operator==(std::nullptr_t) const { return !mObject; }

private:
    T* mObject = nullptr;
};

class Text {
public:
    void setTo(const char* text) { mText = text; }
    void setTo(const char* text, size_t length) { mText.assign(text, length); }
    void setTo(const char16_t* text, size_t length) { mText.assign(text, text + length); }
    const char* c_str() const { return mText.c_str(); }
    size_t size() const { return mText.size(); }

private:
    std::string mText;
};

class Bytes;

// The operations of every key/value store.
template <typename Key>
class Store {
public:
    void setInt32(Key key, int32_t value) { mValues[key] = value; }
    void setInt64(Key key, int64_t value) { mValues[key] = value; }
    void setString(Key key, const char* value) { mValues[key] = std::string(value); }
    void setCString(Key key, const char* value) { setString(key, value); }
    void setBuffer(Key key, StrongPointer<Bytes> value) { mValues[key] = value; }
    void setData(Key key, uint32_t type, const void* data, size_t size) {
        mValues[key] = Data(type, std::string(static_cast<const char*>(data), size));
    }
    bool findInt32(Key key, int32_t* out) const { return copy(find<int32_t>(key), out); }
    bool findInt64(Key key, int64_t* out) const { return copy(find<int64_t>(key), out); }
    bool findBuffer(Key key, StrongPointer<Bytes>* out) const {
        return copy(find<StrongPointer<Bytes>>(key), out);
    }
    bool findCString(Key key, const char** out) const {
        const auto* text = find<std::string>(key);
        if (text) *out = text->c_str();
        return text;
    }
    bool findString(Key key, Text* out) const {
        const auto* text = find<std::string>(key);
        if (text) out->setTo(text->c_str());
        return text;
    }
    bool findData(Key key, uint32_t* type, const void** data, size_t* size) const {
        const auto* entry = find<Data>(key);
        if (!entry) return false;
        *type = entry->first;
        *data = entry->second.data();
        *size = entry->second.size();
        return true;
    }

private:
    using Data = std::pair<uint32_t, std::string>;
    template <typename T>
    const T* find(Key key) const {
        const auto entry = mValues.find(key);
        return entry == mValues.end() ? nullptr : std::get_if<T>(&entry->second);
    }
    template <typename T>
    static bool copy(const T* value, T* out) {
        if (value) *out = *value;
        return value;
    }
    std::map<Key, std::variant<int32_t, int64_t, std::string, Data, StrongPointer<Bytes>>> mValues;
};

class Letter final : public Counted, public Store<std::string> {};
class CountedTags final : public Store<uint32_t>, public Counted {};

class Bytes final : public Counted {
public:
    explicit Bytes(size_t size) : mBytes(size) {}
    uint8_t* data() { return mBytes.data(); }
    size_t size() const { return mBytes.size(); }
    StrongPointer<Letter> meta() { return mMeta; }

private:
    std::vector<uint8_t> mBytes;
    StrongPointer<Letter> mMeta = new Letter;
};

// Of a single bit.
class Bits {
public:
    Bits(const uint8_t*, size_t) {}
    uint32_t getBits(size_t) { return 1; }
    void skipBits(size_t) {}
};

// The slots of these two are in the stand-in's order.
class Samples {
public:
    virtual void* data() = 0;
    virtual size_t size() = 0;
    virtual size_t range_offset() = 0;
    virtual size_t range_length() = 0;
    virtual void set_range(size_t offset, size_t length) = 0;
    virtual ~Samples() = default;
};

class Source {
public:
    virtual int initCheck() const = 0;
    virtual ssize_t readAt(off64_t offset, void* data, size_t size) = 0;
    virtual int getSize(off64_t* size) { return *size = 0, -1010; }
    virtual bool getUri(char*, size_t) { return false; }
    virtual uint32_t flags() { return 0; }
    virtual void close() {}
    virtual int getAvailableSize(off64_t, off64_t*) { return -1; }
    virtual ~Source() = default;
};

// Nothing turns into a name of a service by itself.
struct ServiceName {
    explicit ServiceName(const char16_t* text) : name(text) {}
    std::u16string name;
};

struct CodecInfo final : Counted {
    const char* getCodecName() const { return "handset.decoder"; }
};

// Of a single decoder.
struct Codecs final : Counted {
    static StrongPointer<Codecs> getInstance() { return new Codecs; }
    ssize_t findCodecByType(const std::string& mime, bool encoder, size_t) const {
        return mime == "video/avc" && !encoder ? 0 : -1;
    }
    StrongPointer<CodecInfo> getCodecInfo(size_t) const { return new CodecInfo; }
};

struct Player final : Counted {
    StrongPointer<Codecs> getCodecList() const { return Codecs::getInstance(); }
};

StrongPointer<Player> findPlayer(const ServiceName& service);

}  // namespace handset
