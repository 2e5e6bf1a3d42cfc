// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <memory>
#include <string>

namespace applist::test {

/// A platform's stores, for the tests of what every platform promises. One cpp file for each
/// platform implements MakeStores(); a port adds its own.
class Stores {
public:
    virtual ~Stores() = default;
    virtual void HoldBool(const std::string& key, bool value) = 0;
    virtual void HoldInt(const std::string& key, int value) = 0;
    virtual void HoldFactoryItem(int id, int value) = 0;
};

/// Empty stores.
std::unique_ptr<Stores> MakeStores();

}  // namespace applist::test
