#include "inspect/collection/Channel.h"

#include <sys/socket.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstring>

#include "inspect/base/OutputFile.h"

namespace inspect {
namespace {

// A message of a head and a descriptor (POSIX.1-2008, <sys/socket.h>), to be sent or filled in.
struct HeadMessage {
    Head head;
    alignas(cmsghdr) std::array<char, CMSG_SPACE(sizeof(int))> control{};
    iovec part{&head, sizeof head};
    msghdr message{};

    HeadMessage() {
        message.msg_iov = &part;
        message.msg_iovlen = 1;
        message.msg_control = control.data();
        message.msg_controllen = control.size();
    }
    HeadMessage(const HeadMessage&) = delete;
    HeadMessage& operator=(const HeadMessage&) = delete;
};

bool sendBytes(int socket, const std::string& text) {
    return writeAll(socket, {reinterpret_cast<const uint8_t*>(text.data()), text.size()}) == 0;
}

bool receiveBytes(int socket, std::string& out) {
    for (size_t done = 0; done < out.size();) {
        const ssize_t count = read(socket, out.data() + done, out.size() - done);
        if (count < 0 && errno == EINTR) continue;
        if (count <= 0) return false;
        done += static_cast<size_t>(count);
    }
    return true;
}

}  // namespace

bool sendRequest(int socket, const Request& request) {
    HeadMessage out;
    out.head.sizeBytes = static_cast<uint32_t>(request.text.size());
    cmsghdr* const control = CMSG_FIRSTHDR(&out.message);
    control->cmsg_level = SOL_SOCKET;
    control->cmsg_type = SCM_RIGHTS;
    control->cmsg_len = CMSG_LEN(sizeof(int));
    const int file = request.file.get();
    std::memcpy(CMSG_DATA(control), &file, sizeof file);
    ssize_t count = 0;
    do {
        count = sendmsg(socket, &out.message, 0);
    } while (count < 0 && errno == EINTR);
    return count == ssize_t{sizeof out.head} && sendBytes(socket, request.text);
}

bool sendAnswer(int socket, const std::string& text, bool isFailure) {
    const Head head{static_cast<uint32_t>(text.size()), isFailure ? 1U : 0U};
    std::string message(sizeof head, '\0');
    std::memcpy(message.data(), &head, sizeof head);
    return sendBytes(socket, message + text);
}

std::optional<Request> receiveRequest(int socket) {
    HeadMessage in;
    ssize_t count = 0;
    do {
        count = recvmsg(socket, &in.message, MSG_WAITALL | MSG_CMSG_CLOEXEC);
    } while (count < 0 && errno == EINTR);
    const cmsghdr* const control = CMSG_FIRSTHDR(&in.message);
    if (count != ssize_t{sizeof in.head} || control == nullptr) return std::nullopt;
    int file = -1;
    std::memcpy(&file, CMSG_DATA(control), sizeof file);
    Request request{std::string(in.head.sizeBytes, '\0'), Descriptor(file)};
    if (!receiveBytes(socket, request.text)) return std::nullopt;
    return request;
}

}  // namespace inspect
