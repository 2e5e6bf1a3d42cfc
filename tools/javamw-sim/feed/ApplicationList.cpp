// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include "feed/ApplicationList.h"

#include <algorithm>
#include <map>
#include <set>
#include <tuple>

#include "feed/DisplayNames.h"

namespace applist::sim {
namespace {

std::vector<ApplicationName> NamesByLanguage(const Application& application) {
    std::vector<ApplicationName> names;
    for (const ApplicationName& sent : application.names) {
        ApplicationName name{CleanLanguage(sent.language), ValidUtf8(sent.text)};
        if (name.language.empty()) {
            name.language = "und";  // ISO 639-2 for an unknown language
        }
        const bool known = std::any_of(names.begin(), names.end(), [&](const auto& other) {
            return other.language == name.language;
        });
        // The first name of each language is used if the broadcast repeats a language.
        if (!known) {
            names.push_back(std::move(name));
        }
    }
    return names;
}

ListedApplication Describe(const BroadcastService& service, const ApplicationTable& table,
                           const Application& application,
                           const std::vector<std::string>& languages) {
    ListedApplication listed;
    listed.service = service.id;
    listed.organisation = application.organisation;
    listed.id = application.id;
    listed.type = table.type != 0 ? std::optional(table.type) : std::nullopt;
    listed.control = ControlName(application.controlCode);
    listed.visibility = application.visibility;
    listed.priority = application.priority;
    listed.name = ValidUtf8(PreferredName(application.names, languages));
    listed.names = NamesByLanguage(application);
    listed.location = ValidUtf8(application.location);
    listed.conditions = application.conditions;
    // Bytes from the broadcast may be invalid, and the output must be UTF-8.
    for (std::string& boundary : listed.conditions.boundaries) {
        boundary = ValidUtf8(boundary);
    }
    for (ParentalRating& rating : listed.conditions.ratings) {
        rating.country = ValidUtf8(rating.country);
    }
    // The list gives every reason, so hidden applications and trials are not excused here.
    listed.against = ReasonsAgainst(table, application, false);
    return listed;
}

using Key = std::tuple<std::optional<uint16_t>, uint32_t, uint16_t>;

/// Returns the applications of a snapshot.
std::set<Key> KeysOf(const Snapshot& snapshot) {
    std::set<Key> keys;
    for (const BroadcastService& service : snapshot.services) {
        for (const auto& table : service.tables) {
            for (const Application& application : table->applications) {
                keys.insert({service.id, application.organisation, application.id});
            }
        }
    }
    return keys;
}

}  // namespace

std::vector<ListedApplication> ListApplications(const Broadcast& broadcast,
                                                const BroadcastFilter& filter) {
    std::vector<ListedApplication> list;
    std::map<Key, size_t> places;
    for (const Snapshot& snapshot : broadcast.snapshots) {
        for (const BroadcastService& service : SelectServices(snapshot, filter)) {
            for (const auto& table : service.tables) {
                for (const Application& application : table->applications) {
                    auto listed = Describe(service, *table, application, filter.languages);
                    const Key key{service.id, listed.organisation, listed.id};
                    // A later snapshot replaces the description, and the application keeps its
                    // place in the list.
                    const auto [place, isNew] = places.try_emplace(key, list.size());
                    if (isNew) {
                        list.push_back(std::move(listed));
                    } else {
                        list[place->second] = std::move(listed);
                    }
                }
            }
        }
    }
    // A recording may contain applications that its last tables have withdrawn.
    const std::set<Key> last = KeysOf(broadcast.snapshots.back());
    for (ListedApplication& listed : list) {
        if (last.count({listed.service, listed.organisation, listed.id}) == 0) {
            listed.against.emplace_back("not in the last tables");
        }
    }
    return list;
}

}  // namespace applist::sim
