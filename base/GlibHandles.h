// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <chrono>
#include <functional>
#include <memory>
#include <string>
#include <utility>

#include <gio/gio.h>

namespace applist {

struct GObjectUnref {
    void operator()(void* object) const { g_object_unref(object); }
};
template <typename Object>
using GObjectPtr = std::unique_ptr<Object, GObjectUnref>;

struct GVariantUnref {
    void operator()(GVariant* value) const { g_variant_unref(value); }
};
using GVariantPtr = std::unique_ptr<GVariant, GVariantUnref>;

/// Returns the text of an error and frees it. REQUIRES: error is not null.
inline std::string TakeMessage(GError* error) {
    g_dbus_error_strip_remote_error(error);
    std::string message = error->message;
    g_error_free(error);
    return message;
}

/// Runs an undo function once, at the latest in its destructor. Movable; a moved-from object is
/// empty.
class [[nodiscard]] Registration {
public:
    Registration() = default;
    explicit Registration(std::function<void()> undo) : m_undo(std::move(undo)) {}
    ~Registration() { Release(); }
    Registration(const Registration&) = delete;
    Registration& operator=(const Registration&) = delete;
    Registration(Registration&& other) noexcept : m_undo(std::exchange(other.m_undo, nullptr)) {}
    Registration& operator=(Registration&& other) noexcept {
        if (this != &other) {
            Release();
            m_undo = std::exchange(other.m_undo, nullptr);
        }
        return *this;
    }

    void Release() {
        if (const auto undo = std::exchange(m_undo, nullptr)) {
            undo();
        }
    }

private:
    std::function<void()> m_undo;
};

/// Runs action whenever source is ready, on the default main context, as long as it returns true
/// and the registration lives. Takes source over.
Registration RunOn(GSource* source, std::function<bool()> action);

/// Runs action whenever the file can be read, is closed at its other end or fails.
Registration WhenReadable(int file, std::function<void(GIOCondition)> action);

/// Runs action once after delay, or never if the registration ends before.
Registration RunAfter(std::chrono::milliseconds delay, std::function<void()> action);

}  // namespace applist
