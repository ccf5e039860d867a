// What goes between a process and those that answer it: texts, and with a request an open file.

#pragma once

#include <optional>
#include <string>

#include "inspect/base/Descriptor.h"

namespace inspect {

// Before a text: how many bytes it has, and in an answer whether it is a failure.
struct Head {
    uint32_t sizeBytes = 0;
    uint32_t isFailure = 0;
};

struct Request {
    std::string text;
    Descriptor file;
};

// Returns whether the other side can still be there.
bool sendRequest(int socket, const Request& request);
bool sendAnswer(int socket, const std::string& text, bool isFailure);

// Waits for one; none when the other side has gone.
std::optional<Request> receiveRequest(int socket);

}  // namespace inspect
