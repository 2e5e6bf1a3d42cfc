// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include "link/ListClient.h"

#include <utility>

namespace applist::sim {
namespace {

Result<Items> Decode(const Result<Bytes>& reply) {
    if (!reply) {
        return Result<Items>::Failure(reply.error());
    }
    auto items = DecodeItems(*reply);
    return items ? Result<Items>(std::move(*items))
                 : Result<Items>::Failure("the reply of " + std::to_string(reply->size()) +
                                          " bytes is not a list of items");
}

}  // namespace

void ListClient::Call(const std::string& application, Function function, const Items& items,
                      Done done) {
    m_caller.Call(application, EncodeCall(function, items),
                  [done = std::move(done)](const Result<Bytes>& reply) { done(Decode(reply)); });
}

}  // namespace applist::sim
