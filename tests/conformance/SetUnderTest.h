// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <memory>
#include <string>

namespace applist::test {

/// Provides settings and factory items for the functions under test. Each port has one source file
/// that implements it and MakeSet(); docs/porting.md describes how.
class SetUnderTest {
public:
    SetUnderTest() = default;
    virtual ~SetUnderTest() = default;
    SetUnderTest(const SetUnderTest&) = delete;
    SetUnderTest& operator=(const SetUnderTest&) = delete;
    SetUnderTest(SetUnderTest&&) = delete;
    SetUnderTest& operator=(SetUnderTest&&) = delete;

    /// Stores the value under key in the settings.
    virtual void HoldBool(const std::string& key, bool value) = 0;
    virtual void HoldInt(const std::string& key, int value) = 0;
    /// Stores the number as the factory item with this id.
    virtual void HoldFactoryItem(int id, int value) = 0;
};

/// A set without settings, without factory item 194 and without running applications. Called once
/// for each test, before any function of the platform. The set is removed with the object.
std::unique_ptr<SetUnderTest> MakeSet();

}  // namespace applist::test
