// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include <cstring>
#include <optional>
#include <string>
#include <vector>

#include "fuzz/Properties.h"
#include "ipc/IPCApplist.h"

namespace applist::test {
namespace {

/// A transport with only the hooks that the adapter overrides.
class Hooks {
public:
    explicit Hooks(const std::string& /*name*/) {}
    virtual ~Hooks() = default;
    virtual std::vector<char> HandleMessage(std::vector<char>& data) = 0;
    virtual void HandleNotification(std::vector<char>& data) = 0;
    virtual void HandleConnectionReady(bool ready, const std::string& partner) = 0;
};

class FrameHandler {
public:
    std::vector<char> OnMessage(int id, const std::vector<char>& content) {
        messageId = id;
        payload = std::string(content.begin(), content.end());
        return {'o', 'k'};
    }

    std::optional<int> messageId;
    std::string payload;
};

int IdOf(std::string_view frame) {
    unsigned id = 0;
    for (size_t i = 0; i < 4; ++i) {
        id = id * 256U + static_cast<unsigned char>(frame[frame.size() - 1 - i]);
    }
    return static_cast<int>(id);
}

}  // namespace

std::string CheckAdapterFrame(std::string_view bytes) {
    FrameHandler handler;
    IPCApplist<Hooks, FrameHandler> adapter("Channel");
    adapter.RegisterOnMessage(&handler, &FrameHandler::OnMessage);
    std::vector<char> frame(bytes.begin(), bytes.end());
    std::vector<char> notification = frame;
    adapter.HandleNotification(notification);
    if (handler.messageId) {
        return "a notification reached the message handler";
    }
    const std::vector<char> response = adapter.HandleMessage(frame);
    if (bytes.size() < 4) {
        return !handler.messageId && response.empty() ? "" : "a frame without id was answered";
    }
    if (handler.messageId != IdOf(bytes) || handler.payload != bytes.substr(0, bytes.size() - 4)) {
        return "id or payload changed on the way";
    }
    return response == std::vector<char>{'o', 'k'} ? "" : "the response changed on the way";
}

}  // namespace applist::test
