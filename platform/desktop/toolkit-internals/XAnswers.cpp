// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include "toolkit-internals/XAnswers.h"

#include <array>
#include <cstdlib>
#include <dlfcn.h>
#include <memory>
#include <string_view>
#include <utility>

#include <X11/Xlib.h>
#include <xcb/xcb.h>

#include "CallbackGuard.h"

namespace applist::desktop {
namespace {

// What the toolkit and its libraries ask for. A missing name costs a round trip, a superfluous one
// nothing.
constexpr std::array<std::string_view, 13> EXTENSIONS{"Composite",
                                                      "DAMAGE",
                                                      "DPMS",
                                                      "Generic Event Extension",
                                                      "MIT-SCREEN-SAVER",
                                                      "RANDR",
                                                      "RENDER",
                                                      "SHAPE",
                                                      "SYNC",
                                                      "XFIXES",
                                                      "XINERAMA",
                                                      "XInputExtension",
                                                      "XKEYBOARD"};
constexpr std::array<std::string_view, 20> ATOMS{"ATOM",
                                                 "ConnectorNumber",
                                                 "ConnectorType",
                                                 "TARGETS",
                                                 "UTF8_STRING",
                                                 "WM_PROTOCOLS",
                                                 "application/x-elementary-markup",
                                                 "image/gif",
                                                 "image/jpeg",
                                                 "image/png",
                                                 "image/svg+xml",
                                                 "image/tiff",
                                                 "image/x-ms-bmp",
                                                 "image/x-portable-pixmap",
                                                 "image/x-tga",
                                                 "image/x-xpixmap",
                                                 "text/plain",
                                                 "text/plain;charset=utf-8",
                                                 "text/uri-list",
                                                 "text/x-vcard"};

// For the replaced functions, which do not have an argument of ours.
XAnswers* g_answers = nullptr;

// The replies are allocated by the library with malloc().
struct Free {
    void operator()(void* reply) const { std::free(reply); }
};
template <typename Reply>
using Owned = std::unique_ptr<Reply, Free>;

Eina_Bool OnFirstIdle(void* answers) {
    GuardCallback([answers] { static_cast<XAnswers*>(answers)->Forget(); });
    return ECORE_CALLBACK_RENEW;
}

}  // namespace

XAnswers::XAnswers()
    : m_connection(xcb_connect(nullptr, nullptr)), m_display(XDisplayName(nullptr)) {
    // xcb_connect() never returns null. A failed connection must be closed as well; see Forget().
    if (xcb_connection_has_error(m_connection) == 0) {
        AskForExtensions();
        g_answers = this;
        m_atFirstIdle = ecore_idle_enterer_add(OnFirstIdle, this);
    }
}

// All requests are sent before the first answer is read.
void XAnswers::AskForExtensions() {
    std::array<xcb_query_extension_cookie_t, EXTENSIONS.size()> questions;
    for (size_t i = 0; i < EXTENSIONS.size(); ++i) {
        questions[i] = xcb_query_extension(
            m_connection, static_cast<uint16_t>(EXTENSIONS[i].size()), EXTENSIONS[i].data());
    }
    AskForAtoms();
    for (size_t i = 0; i < EXTENSIONS.size(); ++i) {
        const Owned<xcb_query_extension_reply_t> reply(
            xcb_query_extension_reply(m_connection, questions[i], nullptr));
        // Without a reply the name stays unknown and the library asks for it again.
        if (reply != nullptr) {
            m_extensions[std::string(EXTENSIONS[i])] = {reply->present != 0, reply->major_opcode,
                                                        reply->first_event, reply->first_error};
        }
    }
}

void XAnswers::AskForAtoms() {
    std::array<xcb_intern_atom_cookie_t, ATOMS.size()> questions;
    for (size_t i = 0; i < ATOMS.size(); ++i) {
        // 0 creates a missing atom, so that the answer is right for both values of onlyIfExists.
        questions[i] = xcb_intern_atom(m_connection, 0, static_cast<uint16_t>(ATOMS[i].size()),
                                       ATOMS[i].data());
    }
    for (size_t i = 0; i < ATOMS.size(); ++i) {
        const Owned<xcb_intern_atom_reply_t> reply(
            xcb_intern_atom_reply(m_connection, questions[i], nullptr));
        if (reply != nullptr) {
            m_atoms[std::string(ATOMS[i])] = reply->atom;
        }
    }
}

void XAnswers::Forget() {
    if (g_answers == this) {
        g_answers = nullptr;
    }
    if (m_atFirstIdle != nullptr) {
        ecore_idle_enterer_del(std::exchange(m_atFirstIdle, nullptr));
    }
    if (m_connection != nullptr) {
        xcb_disconnect(std::exchange(m_connection, nullptr));
    }
}

const XAnswers* XAnswers::For(const char* display) {
    return g_answers != nullptr && display == g_answers->m_display ? g_answers : nullptr;
}

const XAnswers::Extension* XAnswers::FindExtension(std::string_view name) const {
    const auto found = m_extensions.find(name);
    return found != m_extensions.end() ? &found->second : nullptr;
}

const unsigned long* XAnswers::FindAtom(std::string_view name) const {
    const auto found = m_atoms.find(name);
    return found != m_atoms.end() ? &found->second : nullptr;
}

}  // namespace applist::desktop

// The functions below replace the library's functions, because the dynamic linker resolves symbols
// from the program first.
using applist::desktop::XAnswers;

extern "C" __attribute__((visibility("default"))) Bool XQueryExtension(Display* display,
                                                                       const char* name,
                                                                       int* request, int* event,
                                                                       int* error) {
    // RTLD_NEXT finds the library's own function, which answers for unknown names.
    static auto* const replaced =
        reinterpret_cast<decltype(&XQueryExtension)>(dlsym(RTLD_NEXT, "XQueryExtension"));
    const XAnswers* answers = XAnswers::For(DisplayString(display));
    const XAnswers::Extension* known = answers != nullptr ? answers->FindExtension(name) : nullptr;
    if (known == nullptr) {
        return replaced(display, name, request, event, error);
    }
    *request = known->request;
    *event = known->event;
    *error = known->error;
    return known->present ? True : False;
}

extern "C" __attribute__((visibility("default"))) Atom XInternAtom(Display* display,
                                                                   const char* name,
                                                                   Bool onlyIfExists) {
    static auto* const replaced =
        reinterpret_cast<decltype(&XInternAtom)>(dlsym(RTLD_NEXT, "XInternAtom"));
    const XAnswers* answers = XAnswers::For(DisplayString(display));
    const unsigned long* known = answers != nullptr ? answers->FindAtom(name) : nullptr;
    return known != nullptr ? *known : replaced(display, name, onlyIfExists);
}
