// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <memory>
#include <string>

namespace applist::test {

/// What the conformance test needs of a set besides the functions under test: something to read.
/// Each port has one source file that implements it and MakeSet(); docs/porting.md tells how.
class SetUnderTest {
public:
    SetUnderTest() = default;
    virtual ~SetUnderTest() = default;
    SetUnderTest(const SetUnderTest&) = delete;
    SetUnderTest& operator=(const SetUnderTest&) = delete;
    SetUnderTest(SetUnderTest&&) = delete;
    SetUnderTest& operator=(SetUnderTest&&) = delete;

    /// From now on the settings have this value under key.
    virtual void HoldBool(const std::string& key, bool value) = 0;
    virtual void HoldInt(const std::string& key, int value) = 0;
    /// From now on the factory item with this id is this number.
    virtual void HoldFactoryItem(int id, int value) = 0;
};

/// A set without any settings, without factory item 194, and without an application that runs;
/// called once for each test, before anything of the platform is. It leaves with the object.
std::unique_ptr<SetUnderTest> MakeSet();

}  // namespace applist::test
