// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include "feed/ItemSource.h"

#include <glib.h>
#include <memory>
#include <string_view>
#include <utility>

#include "broadcast/BroadcastScan.h"
#include "feed/ItemText.h"

namespace applist::sim {
namespace {

struct UnmapFile {
    void operator()(GMappedFile* file) const { g_mapped_file_unref(file); }
};
using MappedFile = std::unique_ptr<GMappedFile, UnmapFile>;

// Mapped, since recordings are large and read several times over.
Result<MappedFile> Map(const std::string& file) {
    GError* error = nullptr;
    MappedFile mapped(g_mapped_file_new(file.c_str(), FALSE, &error));
    if (!mapped) {
        const std::string reason =
            error->code == G_FILE_ERROR_NOENT ? "no such file" : error->message;
        g_error_free(error);
        return Result<MappedFile>::Failure(file + ": " + reason);
    }
    return mapped;
}

std::string_view Content(const MappedFile& file) {
    return {g_mapped_file_get_contents(file.get()), g_mapped_file_get_length(file.get())};
}

std::string DamageRemark(const std::string& file, const Broadcast& broadcast) {
    if (broadcast.damagedPackets == 0 && broadcast.damagedSections == 0) {
        return {};
    }
    return file + ": skipped damaged parts: " + std::to_string(broadcast.damagedPackets) +
           " in packets, " + std::to_string(broadcast.damagedSections) + " in sections";
}

const char* NothingOffered(const Broadcast& broadcast) {
    return broadcast.services.empty() ? ": no transport stream of 188-byte packets with services"
                                      : ": offers no applications";
}

}  // namespace

Feed SampleFeed() {
    return {{{"0000000b.0001", "Guida TV"},
             {"0000000b.0002", "Meteo"},
             {"0000000b.0003", "Notizie"},
             {"0000000b.0004", "Sport e Attualit\u00e0"},
             {"0000000b.0005", "Televideo"}},
            {}};
}

Result<Feed> TextFeed(const std::string& file) {
    const auto mapped = Map(file);
    if (!mapped) {
        return Result<Feed>::Failure(mapped.error());
    }
    auto items = ParseItemText(Content(*mapped));
    if (!items) {
        return Result<Feed>::Failure(file + ":" + items.error());
    }
    return Feed{std::move(*items), {}};
}

Result<Feed> BroadcastFeed(const std::string& file) {
    const auto mapped = Map(file);
    if (!mapped) {
        return Result<Feed>::Failure(mapped.error());
    }
    const std::string_view content = Content(*mapped);
    const Broadcast broadcast =
        ScanBroadcast({reinterpret_cast<const uint8_t*>(content.data()), content.size()});
    const std::string damage = DamageRemark(file, broadcast);
    Items items = OfferedItems(broadcast);
    if (items.empty()) {
        return Result<Feed>::Failure(file + NothingOffered(broadcast) +
                                     (damage.empty() ? "" : "\n" + damage));
    }
    return Feed{std::move(items), damage};
}

}  // namespace applist::sim
