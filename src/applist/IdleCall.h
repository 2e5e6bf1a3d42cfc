// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <functional>

// NOLINTBEGIN(bugprone-reserved-identifier,cert-dcl37-c,cert-dcl51-cpp): the toolkit reserved them
typedef unsigned char Eina_Bool;
typedef struct _Ecore_Factorized_Idle Ecore_Idler;
// NOLINTEND(bugprone-reserved-identifier,cert-dcl37-c,cert-dcl51-cpp)

namespace applist {

/// A call that waits until the main loop has handled every event and job that is due. Dropped if
/// the object goes first. Main thread only.
class IdleCall {
public:
    explicit IdleCall(std::function<void()> body);
    ~IdleCall();
    IdleCall(const IdleCall&) = delete;
    IdleCall& operator=(const IdleCall&) = delete;
    IdleCall(IdleCall&&) = delete;
    IdleCall& operator=(IdleCall&&) = delete;

    /// Asks for one call; asking again before it came changes nothing.
    void Request();
    /// Takes the request back.
    void Drop();

private:
    static Eina_Bool OnIdle(void* data);
    void Run();

    std::function<void()> m_body;
    Ecore_Idler* m_idler = nullptr;
};

}  // namespace applist
