// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
//
// The list for viewers who use a screen reader. The test acts as the reader on the real
// accessibility bus.
#include <sstream>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "support/DrivenMiddleware.h"
#include "support/SourceFile.h"
#include "support/Television.h"

namespace applist::test {
namespace {

using testing::AllOf;
using testing::Contains;
using testing::ElementsAreArray;
using testing::HasSubstr;
using testing::Not;

constexpr int ROWS = 40;

std::string Name(int row) {
    return "Row " + std::to_string(row);
}

std::string Items() {
    std::string items;
    for (int row = 1; row <= ROWS; ++row) {
        items += "id" + std::to_string(row) + "\t" + Name(row) + "\n";
    }
    return items;
}

class AScreenReader : public testing::Test {
protected:
    void Turn(bool on) {
        EXPECT_EQ(Run({"dbus-send", "--session", "--print-reply", "--dest=org.a11y.Bus",
                       "/org/a11y/bus", "org.freedesktop.DBus.Properties.Set",
                       "string:org.a11y.Status", "string:ScreenReaderEnabled",
                       std::string("variant:boolean:") + (on ? "true" : "false")}),
                  0);
    }
    void ShowRows() {
        m_set.Show(Items());
        ASSERT_TRUE(m_set.middleware().SeesSelected("id1", Name(1)));
        ASSERT_TRUE(m_set.WaitForFocusedRow());
    }
    /// The lines "role<TAB>name" of all accessible objects, once one of them has this name.
    std::vector<std::string> HeardWith(const std::string& name) {
        // Debian's own interpreter, because another one in PATH may not have the bindings.
        Run({"/usr/bin/python3", Script("spoken-tree.py"), name});
        std::vector<std::string> lines;
        std::istringstream text(m_output);
        for (std::string line; std::getline(text, line);) {
            lines.push_back(line);
        }
        return lines;
    }
    /// Starts a reader that prints the messages it speaks.
    std::unique_ptr<ChildProcess> Listen() {
        auto reader = std::make_unique<ChildProcess>(
            std::vector<std::string>{"/usr/bin/python3", Script("spoken-messages.py")},
            m_set.Environment());
        EXPECT_TRUE(reader->WaitForText("listening")) << reader->Errors();
        Turn(true);
        return reader;
    }
    std::vector<std::string> RowsHeard() {
        std::vector<std::string> rows;
        for (const std::string& line : HeardWith(Name(ROWS))) {
            if (line.rfind("list item\t", 0) == 0) {
                rows.push_back(line);
            }
        }
        return rows;
    }
    static std::vector<std::string> AllRows() {
        std::vector<std::string> rows;
        for (int row = 1; row <= ROWS; ++row) {
            rows.push_back("list item\t" + Name(row));
        }
        return rows;
    }
    std::string NamesOnTheBus() {
        Run({"dbus-send", "--session", "--print-reply", "--dest=org.freedesktop.DBus",
             "/org/freedesktop/DBus", "org.freedesktop.DBus.ListNames"});
        return m_output;
    }

    // The accessibility bus needs the system's settings schemas.
    Television m_set{{{"XDG_DATA_DIRS", BuiltProgram("../share") + ":/usr/share"}}};

private:
    static std::string Script(const std::string& name) {
        return SourcePath("tests/e2e/television/" + name);
    }
    int Run(const std::vector<std::string>& command) {
        ChildProcess tool(command, m_set.Environment());
        const int status = tool.WaitForExit().value_or(-1);
        m_output = tool.Output();
        EXPECT_EQ(status, 0) << tool.Errors();
        return status;
    }

    std::string m_output;
};

TEST_F(AScreenReader, FindsWindowListAndEveryRowShownOrNot) {
    Turn(true);
    ASSERT_NO_FATAL_FAILURE(ShowRows());
    const std::vector<std::string> heard = HeardWith(Name(ROWS));
    EXPECT_THAT(heard, Contains("window\torg.vantu.applist"));
    EXPECT_THAT(heard, Contains("list\tData services"));
    EXPECT_THAT(RowsHeard(), ElementsAreArray(AllRows()));
}

TEST_F(AScreenReader, HearsThatAnEmptyListWaitsAndOfEachNewNumberOfRows) {
    const auto reader = Listen();
    const auto application = m_set.StartApplication();
    EXPECT_TRUE(reader->WaitForText("listening\nWaiting for the broadcast's services\n"));
    const auto middleware = m_set.StartMiddlewareWithThreeItems();
    EXPECT_TRUE(reader->WaitForText("services\nList changed, 3 entries\n"));
    EXPECT_THAT(HeardWith("Charlie"), Contains("list\tData services"));
    m_set.StartMiddleware({"call", "AddItemAtEnd", "d=Delta"})->process().WaitForExit();
    EXPECT_TRUE(reader->WaitForText("List changed, 4 entries\n"));
}

TEST_F(AScreenReader, FindsTheSameWhenItIsTurnedOnLater) {
    ASSERT_NO_FATAL_FAILURE(ShowRows());
    Turn(true);
    EXPECT_THAT(RowsHeard(), ElementsAreArray(AllRows()));
    Turn(false);
    Turn(true);
    EXPECT_THAT(RowsHeard(), ElementsAreArray(AllRows()));
}

TEST_F(AScreenReader, HearsOfARowThatIsAddedWhileItReads) {
    Turn(true);
    ASSERT_NO_FATAL_FAILURE(ShowRows());
    ASSERT_EQ(RowsHeard().size(), static_cast<size_t>(ROWS));
    m_set.StartMiddleware({"call", "AddItemAtEnd", "new=Late news"})->process().WaitForExit();
    EXPECT_THAT(HeardWith("Late news"), Contains("list item\tLate news"));
}

// The accessibility bus carries valid UTF-8 only.
TEST_F(AScreenReader, HearsNamesOfAnyBytesAndOfAnySize) {
    Turn(true);
    ASSERT_NO_FATAL_FAILURE(ShowRows());
    DrivenMiddleware middleware(m_set.systemBus().Address());
    ASSERT_TRUE(middleware.AwaitApplication());
    ASSERT_TRUE(middleware.Ask(sim::Function::AddItems, {{"malformed", "Mal\xFF is shown"},
                                                         {"huge", std::string(4U << 20U, 'x')},
                                                         {"last", "Last"}}));
    EXPECT_THAT(HeardWith("Last"), AllOf(Contains("list item\tMal\uFFFD is shown"),
                                         Contains("list item\t" + std::string(1000, 'x'))));
}

TEST_F(AScreenReader, LeavesTheKeysToTheList) {
    Turn(true);
    ASSERT_NO_FATAL_FAILURE(ShowRows());
    ASSERT_EQ(RowsHeard().size(), static_cast<size_t>(ROWS));
    for (int row = 2; row <= 4; ++row) {
        m_set.screen().TypeKey("Down");
        EXPECT_TRUE(m_set.middleware().SeesSelected("id" + std::to_string(row), Name(row)));
    }
    m_set.screen().TypeKey("Return");
    EXPECT_TRUE(m_set.middleware().Sees("event 3 ItemClicked"));
    EXPECT_EQ(m_set.application().WaitForExit(), 0);
}

TEST_F(AScreenReader, CostsNothingWhereThereIsNone) {
    ASSERT_NO_FATAL_FAILURE(ShowRows());
    m_set.screen().TypeKey("Down");
    ASSERT_TRUE(m_set.middleware().SeesSelected("id2", Name(2)));
    EXPECT_THAT(NamesOnTheBus(), AllOf(HasSubstr("org.vantu.applist"), Not(HasSubstr("org.a11y"))));
}

}  // namespace
}  // namespace applist::test
