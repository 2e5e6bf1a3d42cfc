// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
//
// The whole program behind its bus and without the toolkit: the real entry, models, control and
// transport, on a bus, a clock and a screen that the input operates.
#include <algorithm>
#include <array>
#include <iterator>
#include <optional>
#include <string>
#include <vector>

#include "AppListEntry.h"
#include "VirtualEcore.h"
#include "applist/DefaultAppListControl.h"
#include "fakes/FakeApp.h"
#include "fakes/FakeScreen.h"
#include "fakes/HeldBus.h"
#include "fuzz/ExpectedList.h"
#include "fuzz/Properties.h"
#include "support/HandshakeModel.h"

namespace applist::test {
namespace {

using headless::TheEcore;

constexpr int FUNCTIONS = 11;
constexpr uint32_t FIRST_FUNCTION = 1999;
constexpr uint32_t GET_SELECTION = 2001;
constexpr uint32_t GET_ALL_ITEMS = 2002;
constexpr size_t PARTNERS = 3;
constexpr std::array<const char*, 7> KEYS{"Up",    "Down",     "Right",   "Left",
                                          "Other", "XF86Back", "XF86Exit"};

/// The program and what it must do. A step acts on both.
class Program {
public:
    Program();
    ~Program() { AppListEntry::Terminate(&m_entry); }
    Program(const Program&) = delete;
    Program& operator=(const Program&) = delete;
    Program(Program&&) = delete;
    Program& operator=(Program&&) = delete;

    void Play(int action, std::string_view payload);
    /// Returns what differs from what the program must have done; empty if nothing does.
    std::string Check();

private:
    using Step = void (Program::*)(size_t operand, std::string_view payload);
    static const std::array<Step, 12> STEPS;

    // The steps. The operand is the payload's first byte.
    void PressKey(size_t operand, std::string_view payload);
    void MoveFocus(size_t operand, std::string_view payload);
    void PressOk(size_t operand, std::string_view payload);
    void LetTimePass(size_t operand, std::string_view payload);
    void Handshake(size_t operand, std::string_view payload);
    void LoseReply(size_t operand, std::string_view payload);
    void AnnounceOwnName(size_t operand, std::string_view payload);
    void SignalFromPartner(size_t operand, std::string_view payload);
    void CallWithFrame(size_t operand, std::string_view payload);
    void Launch(size_t operand, std::string_view payload);
    void PauseAndResume(size_t operand, std::string_view payload);
    void Terminate(size_t operand, std::string_view payload);

    void Call(uint32_t function, std::string_view payload);
    void RestartTimer() { m_due = m_now + DefaultAppListControl::AUTO_CLOSE_SECONDS; }
    std::vector<std::string> ExpectedSignals();
    std::string CheckRows() const;

    AppListEntry m_entry{"org.vantu.applist"};
    // What is expected.
    HandshakeModel m_handshake{PARTNERS};
    ExpectedList m_list;
    double m_now = 0;
    /// The end of the time without input; none after it has passed.
    std::optional<double> m_due;
    int m_exits = 0;
    int m_launches = 0;
    bool m_ended = false;
    /// The first wrong reply.
    std::string m_wrongReply;
};

const std::array<Program::Step, 12> Program::STEPS{
    &Program::PressKey,        &Program::MoveFocus,         &Program::PressOk,
    &Program::LetTimePass,     &Program::Handshake,         &Program::LoseReply,
    &Program::AnnounceOwnName, &Program::SignalFromPartner, &Program::CallWithFrame,
    &Program::Launch,          &Program::PauseAndResume,    &Program::Terminate,
};

Program::Program() {
    TheHeldBus() = HeldBus{};
    TheEcore() = {};
    TheApp() = FakeApp{};
    TheScreen() = FakeScreen{};
    AppListEntry::Create(&m_entry);
    RestartTimer();
    if (TheHeldBus().TakeOwnedNames() !=
        std::vector<std::string>{"org.vantu.JavaMW.Applist_SERVICE_SYN"}) {
        m_wrongReply = "the start is not announced";
    }
}

void Program::Play(int action, std::string_view payload) {
    if (action < FUNCTIONS) {
        Call(FIRST_FUNCTION + static_cast<uint32_t>(action), payload);
        return;
    }
    const size_t operand = payload.empty() ? 0 : static_cast<unsigned char>(payload[0]);
    const Step step = STEPS[static_cast<size_t>(action - FUNCTIONS) % STEPS.size()];
    (this->*step)(operand, payload.substr(payload.empty() ? 0 : 1));
}

void Program::PressKey(size_t operand, std::string_view /*payload*/) {
    const size_t key = operand % KEYS.size();
    TheEcore().Release(KEYS[key]);
    if (m_ended) {
        return;
    }
    if (key >= 5) {
        ++m_exits;
    } else if (key < 4 && m_due) {
        RestartTimer();
    }
    if (key == 2 || key == 3) {
        m_list.Step(key == 2 ? 1 : -1);
    }
}

void Program::MoveFocus(size_t operand, std::string_view /*payload*/) {
    if (const size_t rows = TheScreen().rows.size(); rows != 0) {
        TheScreen().MoveFocus(operand % rows);
        m_list.Select(m_list.rows()[operand % rows]);
    }
}

void Program::PressOk(size_t operand, std::string_view /*payload*/) {
    if (const size_t rows = TheScreen().rows.size(); rows != 0) {
        TheScreen().Activate(operand % rows);
        m_list.Click();
        ++m_exits;
    }
}

void Program::LetTimePass(size_t operand, std::string_view /*payload*/) {
    m_now += static_cast<double>(operand);
    TheEcore().Advance(static_cast<double>(operand));
    if (m_due && *m_due <= m_now) {
        m_due.reset();
        ++m_exits;
    }
}

void Program::Handshake(size_t operand, std::string_view /*payload*/) {
    static const std::vector<HandshakeEvent> events = AllHandshakeEvents(PARTNERS);
    const HandshakeEvent& event = events[operand % events.size()];
    if (m_handshake.Allows(event)) {
        m_handshake.Play(event);
    }
}

void Program::LoseReply(size_t /*operand*/, std::string_view /*payload*/) {
    TheHeldBus().LoseNextReply();
}

void Program::AnnounceOwnName(size_t operand, std::string_view /*payload*/) {
    const auto step = static_cast<HandshakeStep>(operand % HANDSHAKE_STEPS);
    TheHeldBus().Announce(HandshakeModel::AnnouncedName(step), HeldBus::SELF);
}

// The program ignores all signals, whatever they carry.
void Program::SignalFromPartner(size_t operand, std::string_view payload) {
    const std::string text(payload.substr(0, payload.find('\0')));
    GVariant* parameters = operand < 128 || g_utf8_validate(text.c_str(), -1, nullptr) == FALSE
                               ? HeldBus::Payload(payload)
                               : g_variant_new("(s)", text.c_str());
    TheHeldBus().Signal(HandshakeModel::NameOf(operand % PARTNERS), parameters);
}

void Program::CallWithFrame(size_t operand, std::string_view payload) {
    const auto reply = TheHeldBus().Call(HandshakeModel::NameOf(operand), payload);
    std::optional<std::string> expected;
    if (!m_ended) {
        expected.emplace();
        if (payload.size() >= 4) {
            uint32_t function = 0;
            for (const char byte :
                 {payload.end()[-1], payload.end()[-2], payload.end()[-3], payload.end()[-4]}) {
                function = function * 256U + static_cast<unsigned char>(byte);
            }
            expected = m_list.Call(function, payload.substr(0, payload.size() - 4));
        }
    }
    if (reply != expected && m_wrongReply.empty()) {
        m_wrongReply = "a call is answered with " + reply.value_or("nothing") + " instead of " +
                       expected.value_or("nothing");
    }
}

void Program::Launch(size_t /*operand*/, std::string_view /*payload*/) {
    // The platform does not launch a program that has ended.
    if (!m_ended) {
        AppListEntry::Service(nullptr, &m_entry);
        m_exits += m_launches++ > 0 ? 1 : 0;
    }
}

void Program::PauseAndResume(size_t /*operand*/, std::string_view /*payload*/) {
    AppListEntry::Pause(&m_entry);
    AppListEntry::Resume(&m_entry);
}

void Program::Terminate(size_t /*operand*/, std::string_view /*payload*/) {
    AppListEntry::Terminate(&m_entry);
    m_handshake.End();
    m_list = {};
    m_due.reset();
    m_ended = true;
}

void Program::Call(uint32_t function, std::string_view payload) {
    std::string frame(payload);
    for (unsigned shift = 0; shift < 32; shift += 8) {
        frame += static_cast<char>(function >> shift & 0xFFU);
    }
    CallWithFrame(0, frame);
}

std::vector<std::string> Program::ExpectedSignals() {
    std::vector<std::string> signals;
    for (const ExpectedList::Event event : m_list.TakeEvents()) {
        if (event == ExpectedList::SELECTED && m_due) {
            RestartTimer();
        }
        for (const std::string& partner : m_handshake.Connected()) {
            signals.push_back(partner + " 0" + std::to_string(event) + "000000");
        }
    }
    return signals;
}

std::string Program::Check() {
    std::vector<std::string> signals = ExpectedSignals();
    const HandshakeModel::Effects effects = m_handshake.Take();
    for (const std::string& partner : effects.connected) {
        signals.push_back(partner + " 04000000");
    }
    if (!m_ended) {
        Call(GET_ALL_ITEMS, "");
        Call(GET_SELECTION, "");
    }
    if (!m_wrongReply.empty()) {
        return m_wrongReply;
    }
    if (TheHeldBus().TakeSignals() != signals) {
        return "other signals are sent";
    }
    if (TheHeldBus().TakeOwnedNames() != effects.ownedNames) {
        return "other names are announced";
    }
    if (TheApp().exits != m_exits) {
        return "the program asks " + std::to_string(TheApp().exits) + " times to end instead of " +
               std::to_string(m_exits) + " times";
    }
    if (TheEcore().HasTimer() != m_due.has_value() || TheEcore().HasHandler() == m_ended) {
        return "the timer or the key handler is left or missing";
    }
    const std::string resources = m_handshake.ResourcesDifference();
    return resources.empty() ? CheckRows() : resources;
}

std::string Program::CheckRows() const {
    const auto& rows = TheScreen().rows;
    const bool same =
        std::equal(rows.begin(), rows.end(), m_list.rows().begin(), m_list.rows().end(),
                   [](AppListItem* row, const auto& item) {
                       return row->GetVisibleName() == item.name && row->GetUnigueId() == item.id;
                   });
    if (!same) {
        return "the rows differ from the list";
    }
    AppListItem* focused = TheScreen().focused;
    if (m_list.SelectionHasARow() &&
        (focused == nullptr || focused->GetUnigueId() != m_list.selection().id)) {
        return "the focus is not on the selection";
    }
    return "";
}

}  // namespace

std::string ProgramStep(int action, const std::string& payload) {
    std::string step(1, static_cast<char>(action));
    step += static_cast<char>(static_cast<unsigned char>(payload.size()));
    return step + payload;
}

std::string CheckWholeProgram(std::string_view bytes) {
    Program program;
    while (bytes.size() >= 2) {
        const int action = static_cast<unsigned char>(bytes[0]);
        const size_t length = static_cast<unsigned char>(bytes[1]);
        bytes.remove_prefix(2);
        program.Play(action, bytes.substr(0, length));
        bytes.remove_prefix(std::min(length, bytes.size()));
        if (std::string broken = program.Check(); !broken.empty()) {
            return broken;
        }
    }
    return "";
}

}  // namespace applist::test
