// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <chrono>

#include "bus/Handshake.h"

namespace applist::sim {

/// How a middleware makes one of its announcements.
struct AnnouncementPlan {
    unsigned times = 1;  ///< 0: not at all.
    std::chrono::milliseconds delay{};
};

/// How it makes each; as it should if nothing is changed.
struct HandshakePlan {
    AnnouncementPlan syn;
    AnnouncementPlan synAck;
    AnnouncementPlan ack;

    AnnouncementPlan& operator[](Announcement announcement) {
        switch (announcement) {
            case Announcement::Syn:
                return syn;
            case Announcement::SynAck:
                return synAck;
            case Announcement::Ack:
                break;
        }
        return ack;
    }
};

}  // namespace applist::sim
