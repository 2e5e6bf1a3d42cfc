// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include "feed/LiveBroadcast.h"

#include <array>
#include <utility>

namespace applist::sim {

LiveBroadcast::LiveBroadcast(std::string file, InputFile input, BroadcastFeedOptions options)
    : m_file(std::move(file)),
      m_input(std::move(input)),
      m_options(std::move(options)),
      m_reader(m_file, m_options.coding,
               [this](const Snapshot& snapshot, bool) { OnSnapshot(snapshot); }) {}

void LiveBroadcast::Start(Observer observer) {
    m_observer = std::move(observer);
    if (m_options.follow && m_input.IsRegular()) {
        auto changes = m_input.Watch();
        if (!changes) {
            m_observer.failed(changes.error());
            return;
        }
        // The watch begins before the first read, so that no change is missed.
        m_changes = std::make_unique<InputFile>(std::move(*changes));
        m_growing = WhenReadable(m_changes->descriptor(), [this](GIOCondition) { OnGrowth(); });
    }
    ReadWhileReady();
}

// A file is always ready, so it is read when nothing else is to be done.
void LiveBroadcast::ReadWhileReady() {
    m_reading = m_changes ? RunOn(g_idle_source_new(),
                                  [this] {
                                      OnReady();
                                      return true;
                                  })
                          : WhenReadable(m_input.descriptor(), [this](GIOCondition) { OnReady(); });
}

void LiveBroadcast::OnReady() {
    const auto count = m_input.Read(m_reader.Room());
    if (count) {
        m_reader.Take(*count);
        TellDamage();
    }
    const std::string problem = count ? m_reader.Problem() : count.error();
    if (!problem.empty()) {
        m_reading.Release();
        m_observer.failed(problem);
    } else if (*count == 0) {
        m_reading.Release();
        OnEnd();
    }
}

void LiveBroadcast::OnGrowth() {
    // The content of the events does not matter. They are read so that the next one is noticed.
    std::array<uint8_t, 4096> events{};
    if (const auto read = m_changes->Read(events); !read) {
        m_growing.Release();
        m_observer.failed(read.error());
        return;
    }
    if (m_input.RewindIfTruncated()) {
        m_observer.remark(m_file + ": truncated; reading it again from the start");
    }
    ReadWhileReady();
}

void LiveBroadcast::OnSnapshot(const Snapshot& snapshot) {
    m_last = snapshot;
    Items items = OfferedItems(snapshot, m_options.filter);
    // Most tables change nothing for the viewer.
    if (items != m_items) {
        m_items = std::move(items);
        m_everOffered = true;
        m_observer.changed(m_items);
    }
}

void LiveBroadcast::OnEnd() {
    if (m_changes) {
        if (m_last.services.empty() && !std::exchange(m_saidWaiting, true)) {
            m_observer.remark(m_file + ": no service so far; waiting for more bytes");
        }
        return;
    }
    m_reader.Finish();
    TellDamage();
    const std::string problem = Problem();
    if (!problem.empty()) {
        m_observer.failed(problem);
        return;
    }
    m_observer.remark(m_file + ": ended after " + std::to_string(m_reader.size()) +
                      " bytes; the list stays");
}

// The same errors as those of a recording.
std::string LiveBroadcast::Problem() const {
    const std::string missing = MissingService({{m_last}, {}}, m_options.filter);
    if (!m_reader.Problem().empty()) {
        return m_reader.Problem();
    }
    if (!missing.empty()) {
        return m_file + ": " + missing;
    }
    return m_everOffered ? "" : m_file + ": offers no applications";
}

void LiveBroadcast::TellDamage() {
    const auto& places = m_reader.damage().places;
    for (; m_told < places.size(); ++m_told) {
        m_observer.remark(m_file + ": " + places[m_told]);
    }
}

}  // namespace applist::sim
