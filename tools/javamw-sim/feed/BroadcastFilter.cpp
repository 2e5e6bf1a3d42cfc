// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include "feed/BroadcastFilter.h"

#include <algorithm>
#include <glib.h>
#include <map>
#include <set>
#include <utility>

#include "feed/DisplayNames.h"
#include "shared/Output.h"

namespace applist::sim {
namespace {

// Names are compared without regard to case.
std::string Folded(const std::string& text) {
    g_autofree char* folded = g_utf8_casefold(text.c_str(), -1);
    return folded;
}

// Parses a decimal number, or a hexadecimal one with "0x".
bool IsNumber(const std::string& text, uint16_t number) {
    char* end = nullptr;
    const bool hexadecimal = text.starts_with("0x") || text.starts_with("0X");
    const guint64 value = g_ascii_strtoull(text.c_str(), &end, hexadecimal ? 16 : 10);
    return !text.empty() && g_ascii_isdigit(text[0]) && *end == '\0' && value == number;
}

bool Matches(const BroadcastService& service, const std::string& wanted) {
    // The wanted name is input of the user and may be invalid UTF-8, which the comparison
    // does not accept.
    return (service.id && IsNumber(wanted, *service.id)) ||
           (!service.name.empty() && Folded(service.name) == Folded(ValidUtf8(wanted)));
}

bool IsWanted(const BroadcastService& service, const BroadcastFilter& filter) {
    return filter.services.empty() ||
           std::ranges::any_of(filter.services,
                               [&](const std::string& wanted) { return Matches(service, wanted); });
}

/// Collects applications and makes equal names distinguishable.
class ItemList {
public:
    explicit ItemList(const BroadcastFilter& filter) : m_filter(filter) {}

    void Add(const BroadcastService& service, const Application& application) {
        std::string id = UniqueId(application);
        std::string name = PreferredName(application.names, m_filter.languages);
        // A row needs a text, so an application without a readable name shows its id.
        if (name.empty()) {
            name = id;
        }
        // Several services may offer the same application, which is shown once.
        if (!m_known.insert({id, name}).second) {
            return;
        }
        // The id is known with another name. The service makes it unique, because ids must be
        // unique in a list.
        if (!m_ids.insert(id).second) {
            id += '@' + std::to_string(service.id.value_or(0));
            if (!m_ids.insert(id).second) {
                return;
            }
        }
        m_items.push_back({std::move(id), std::move(name)});
    }

    Items Take() {
        std::map<std::string, size_t> uses;
        std::set<std::string> names;
        // All names are collected first, because a numbered name may equal a name that was sent.
        for (const Item& item : m_items) {
            names.insert(item.name);
        }
        for (Item& item : m_items) {
            const std::string name = item.name;
            // The first item keeps the plain name. Later ones get the next number that is still
            // free.
            for (size_t use = ++uses[name]; use > 1; use = ++uses[name]) {
                item.name = name + " (" + std::to_string(use) + ')';
                if (names.insert(item.name).second) {
                    break;
                }
            }
        }
        return std::move(m_items);
    }

private:
    const BroadcastFilter& m_filter;
    std::set<std::pair<std::string, std::string>> m_known;  ///< Ids and names.
    std::set<std::string> m_ids;
    Items m_items;
};

std::string NameOf(const BroadcastService& service) {
    const std::string id = std::to_string(service.id.value_or(0));
    return service.name.empty() ? id : id + " (" + service.name + ')';
}

// Returns each service of all snapshots once.
std::string ServiceList(const Broadcast& broadcast) {
    std::map<uint16_t, std::string> services;
    for (const Snapshot& snapshot : broadcast.snapshots) {
        for (const BroadcastService& service : snapshot.services) {
            if (service.id) {
                services.try_emplace(*service.id, NameOf(service));
            }
        }
    }
    return tools::Joined(services, ", ", [](const auto& service) { return service.second; });
}

bool IsThere(const Broadcast& broadcast, const std::string& wanted) {
    return std::ranges::any_of(broadcast.snapshots, [&](const Snapshot& snapshot) {
        return std::ranges::any_of(snapshot.services,
                                   [&](const auto& service) { return Matches(service, wanted); });
    });
}

}  // namespace

std::vector<std::string> ReasonsAgainst(const ApplicationTable& table,
                                        const Application& application, bool all) {
    std::vector<std::string> reasons;
    if (application.controlCode != CONTROL_AUTOSTART &&
        application.controlCode != CONTROL_PRESENT) {
        reasons.push_back("control code " + ControlName(application.controlCode));
    }
    if (!all && application.visibility != VISIBLE_ALL) {
        reasons.emplace_back(application.visibility == VISIBLE_APPLICATIONS
                                 ? "visible to other applications only"
                                 : "not visible");
    }
    if (!all && table.test) {
        reasons.emplace_back("for trials");
    }
    return reasons;
}

bool IsOffered(const ApplicationTable& table, const Application& application, bool all) {
    return ReasonsAgainst(table, application, all).empty();
}

std::vector<BroadcastService> SelectServices(const Snapshot& snapshot,
                                             const BroadcastFilter& filter) {
    std::vector<BroadcastService> services;
    std::ranges::copy_if(
        snapshot.services, std::back_inserter(services),
        [&](const BroadcastService& service) { return IsWanted(service, filter); });
    return services;
}

std::string MissingService(const Broadcast& broadcast, const BroadcastFilter& filter) {
    for (const std::string& wanted : filter.services) {
        if (!IsThere(broadcast, wanted)) {
            const std::string list = ServiceList(broadcast);
            return "no service '" + wanted + "'; " +
                   (list.empty() ? "the broadcast does not name any" : "it has " + list);
        }
    }
    return {};
}

Items OfferedItems(const Snapshot& snapshot, const BroadcastFilter& filter) {
    ItemList items(filter);
    ForEachApplication(SelectServices(snapshot, filter),
                       [&](const auto& service, const auto& table, const auto& application) {
                           if (IsOffered(table, application, filter.all)) {
                               items.Add(service, application);
                           }
                       });
    return items.Take();
}

}  // namespace applist::sim
