// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include "scenario/Executor.h"

#include <algorithm>
#include <utility>

#include "scenario/Doing.h"

namespace applist::sim {
namespace {

constexpr Duration USUAL_TIMEOUT{5000};
constexpr const char* FIRST_PARTNER = "middleware";

}  // namespace

Executor::Executor(std::string address, Partner::Observer observer,
                   Partner::ChoiceObserver choiceObserver)
    : m_address(std::move(address)),
      m_observer(std::move(observer)),
      m_choiceObserver(std::move(choiceObserver)),
      m_timeout(USUAL_TIMEOUT),
      m_partner(&PartnerNamed(FIRST_PARTNER)) {}

Executor::~Executor() = default;

Outcome Executor::Execute(const Action& action, bool errorExpected) {
    Doing doing(*this, errorExpected);
    Outcome outcome = m_interrupted ? Outcome{Verdict::Interrupted, "interrupted", {}}
                                    : std::visit(doing, action);
    if (outcome.verdict == Verdict::Interrupted) {
        m_interrupted = false;
    }
    return outcome;
}

void Executor::Interrupt() {
    m_interrupted = true;
}

void Executor::FinishChoices() {
    Await(
        [this] {
            return std::none_of(m_partners.begin(), m_partners.end(),
                                [](const auto& entry) { return entry.second->IsChoicePending(); });
        },
        m_timeout);
}

Partner& Executor::PartnerNamed(const std::string& name) {
    auto& partner = m_partners[name];
    if (!partner) {
        partner = std::make_unique<Partner>(name, m_address, m_observer, m_choiceObserver);
    }
    return *partner;
}

Executor::Waited Executor::Await(const std::function<bool()>& done, Duration patience) {
    bool tooLong = false;
    const Registration clock =
        OwnSource(g_timeout_add(static_cast<unsigned>(patience.count()), &cb_TooLong, &tooLong));
    while (!done()) {
        if (m_interrupted) {
            return Waited::Interrupted;
        }
        if (!m_partner->busProblem().empty()) {
            return Waited::BusLost;
        }
        if (tooLong) {
            return Waited::TooLong;
        }
        g_main_context_iteration(nullptr, TRUE);
    }
    return Waited::Done;
}

int Executor::cb_TooLong(void* tooLong) noexcept {
    *static_cast<bool*>(tooLong) = true;
    return G_SOURCE_CONTINUE;
}

}  // namespace applist::sim
