// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <optional>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "support/ChildProcess.h"
#include "support/PlatformRoot.h"

namespace applist::test {

inline const std::string AUTORUN = "db/menu/broadcasting/autorun-dataservice";
inline const std::string DATA_SERVICE = "memory/tv-viewer/data_service";
inline const std::string AUTOSTART = "memory/javamw/autostart-app";
inline const std::string HIGH_CONTRAST = "db/menu/accessibility/high-contrast";
inline const std::string TEXT_SIZE = "db/menu/accessibility/text-size";
inline const std::string REDUCED_MOTION = "db/menu/accessibility/reduced-motion";
inline const std::string SPEECH = "db/menu/accessibility/speech";

/// A private set, and the tool that changes it as a child process.
class Platformctl : public testing::Test {
protected:
    using Arguments = std::vector<std::string>;

    struct Result {
        std::optional<int> status;
        std::string output;
        std::string errors;
    };

    static Arguments CommandOf(const Arguments& arguments) {
        Arguments argv{BuiltProgram("platformctl")};
        argv.insert(argv.end(), arguments.begin(), arguments.end());
        return argv;
    }

    static Result Run(const Arguments& arguments, const ChildProcess::Environment& changes = {}) {
        ChildProcess process(CommandOf(arguments), changes);
        const auto status = process.WaitForExit();
        return {status, process.Output(), process.Errors()};
    }

    static void Do(const Arguments& arguments) {
        const auto result = Run(arguments);
        ASSERT_EQ(result.status, 0) << result.errors;
        EXPECT_EQ(result.output, "");
    }

    static std::string Get(const std::string& key) { return Run({"get", key}).output; }

    PlatformRoot m_root;
};

}  // namespace applist::test
