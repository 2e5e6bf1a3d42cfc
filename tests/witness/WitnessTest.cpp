// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
//
// Runs middlewares in other languages, written only from the protocol's document, against the built
// application. README.md describes how a witness and this test communicate.
#include <memory>
#include <optional>
#include <ostream>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "support/SourceFile.h"
#include "support/Television.h"

namespace applist::test {
namespace {

struct Language {
    const char* name;
    std::vector<std::string> command;
};

void PrintTo(const Language& language, std::ostream* out) {
    *out << language.name;
}

Language Python() {
    return {"Python", {PYTHON, "-B", SourcePath("tests/witness/python/witness.py")}};
}

// The program is small and runs once: skip the optimising compiler and the file in /tmp.
Language Java() {
    return {"Java",
            {JAVA, "-XX:TieredStopAtLevel=1", "-XX:+UseSerialGC", "-XX:-UsePerfData", "-cp",
             WITNESS_CLASSES, "witness.Witness"}};
}

class AWitness : public testing::TestWithParam<Language> {
protected:
    /// Starts the witness and carries out its requests until it ends.
    void RunWitness() {
        m_witness = std::make_unique<ChildProcess>(GetParam().command, m_set.Environment());
        while (const auto line = NextLine()) {
            if (line->starts_with("please ")) {
                ASSERT_NO_FATAL_FAILURE(Oblige(line->substr(7)));
            }
        }
    }

    /// Reads a line; nothing at the end of the witness.
    std::optional<std::string> NextLine() {
        const auto& output = m_witness->Output();
        size_t end = std::string::npos;
        if (!m_witness->WaitUntil([&] {
                end = output.find('\n', m_read);
                return end != std::string::npos;
            })) {
            return std::nullopt;
        }
        const std::string line = output.substr(m_read, end - m_read);
        m_read = end + 1;
        return line;
    }

    void Oblige(const std::string& wish) {
        if (wish == "start application") {
            EXPECT_EQ(m_application->WaitForExit(), 0);
            m_application = m_set.StartApplication();
            return;
        }
        ASSERT_TRUE(wish.starts_with("press ")) << wish;
        ASSERT_TRUE(m_set.WaitForFocusedRow());
        m_set.screen().TypeKey(XNameOf(wish.substr(6)));
    }

    static std::string XNameOf(const std::string& key) {
        return key == "OK" ? "Return" : key == "Back" ? "Escape" : key;
    }

    Television m_set;
    std::unique_ptr<ChildProcess> m_application = m_set.StartApplication();
    std::unique_ptr<ChildProcess> m_witness;
    size_t m_read = 0;
};

TEST_P(AWitness, GetsOnWithTheApplicationByTheDocumentAlone) {
    ASSERT_NE(GetParam().command[0], "") << "not found: scripts/setup test installs it";
    // The application is running before the witness starts.
    ASSERT_TRUE(m_set.WaitForWindow());
    ASSERT_NO_FATAL_FAILURE(RunWitness());
    EXPECT_EQ(m_witness->WaitForExit(), 0) << m_witness->Errors();
    EXPECT_EQ(m_witness->Output(), SourceFile("tests/witness/transcript.txt"));
    EXPECT_EQ(m_application->WaitForExit(), 0);
}

INSTANTIATE_TEST_SUITE_P(In, AWitness, testing::Values(Python(), Java()),
                         [](const auto& test) { return test.param.name; });

}  // namespace
}  // namespace applist::test
