// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include <gmock/gmock.h>

#include "recording/Comparison.h"
#include "unit/simulator/recording/Messages.h"

namespace applist::sim {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

using Messages = std::vector<RecordedMessage>;

// Numbers the messages from line 2, as in a file.
Recording Record(Messages messages) {
    for (size_t i = 0; i < messages.size(); ++i) {
        messages[i].line = i + 2;
    }
    return {std::move(messages), {}};
}

std::vector<std::string> Lines(const Messages& first, const Messages& second,
                               const CompareOptions& options = {}) {
    std::vector<std::string> lines;
    for (const Difference& difference :
         Compare(StepsOf(Record(first), options.names), StepsOf(Record(second), options.names),
                 options.tolerance)) {
        lines.push_back(DifferenceLines(difference, "a", "b"));
    }
    return lines;
}

// Returns the same traffic as in another run, with different unique names.
Messages Renamed(Messages messages) {
    for (RecordedMessage& message : messages) {
        for (std::string* name : {&message.from, &message.to}) {
            *name = *name == ":1.1" ? ":1.27" : *name == ":1.2" ? ":1.31" : *name;
        }
    }
    return messages;
}

const Messages SESSION{
    Announced(Side::Application, ":1.2", "x_SERVICE_SYN"),
    Announced(Side::Middleware, ":1.1", "x_CLIENT_SYN_ACK"),
    Signalled(Event::LocalCreated, 10),
    Called(1, Function::AddItems, {{"w1", "Weather"}}, 20),
    Signalled(Event::ItemChanged, 30),
    Replied(1, {}, 40),
};

TEST(Comparison, FindsNothingBetweenARecordingAndItself) {
    EXPECT_THAT(Lines(SESSION, SESSION), IsEmpty());
    EXPECT_THAT(Lines({}, {}), IsEmpty());
}

TEST(Comparison, IgnoresUniqueNamesByDefault) {
    EXPECT_THAT(Lines(SESSION, Renamed(SESSION)), IsEmpty());
    EXPECT_EQ(Lines(SESSION, Renamed(SESSION), {.names = true, .tolerance = {}}).size(), 10U);
}

TEST(Comparison, DistinguishesSeveralPartners) {
    Messages two = SESSION;
    two.push_back(Signalled(Event::ItemSelected));
    Messages other = two;
    other.back().to = ":1.9";
    EXPECT_THAT(Lines(two, other), ElementsAre("- a:8: application signal event 2 ItemSelected",
                                               "+ b:8: application signal event 2 ItemSelected"));
}

TEST(Comparison, ReportsTheLinesOfMissingAndNewMessages) {
    Messages missing = SESSION;
    missing.erase(missing.begin() + 4);
    EXPECT_THAT(Lines(SESSION, missing),
                ElementsAre("- a:6: application signal event 1 ItemChanged"));
    EXPECT_THAT(Lines(missing, SESSION),
                ElementsAre("+ b:6: application signal event 1 ItemChanged"));
}

TEST(Comparison, ContinuesAfterADifference) {
    Messages other = SESSION;
    other[4] = Signalled(Event::ItemSelected);
    other.push_back(Signalled(Event::ItemClicked));
    EXPECT_THAT(Lines(SESSION, other),
                ElementsAre("- a:6: application signal event 1 ItemChanged",
                            "+ b:6: application signal event 2 ItemSelected",
                            "+ b:8: application signal event 3 ItemClicked"));
}

TEST(Comparison, NamesACallWhoseAnswerDiffers) {
    Messages other = SESSION;
    other[5] = Replied(1, Payload({{"w1", "Weather"}}));
    EXPECT_THAT(Lines(SESSION, other),
                ElementsAre("- a:5: middleware call AddItems w1=Weather -> reply nothing",
                            "+ b:5: middleware call AddItems w1=Weather -> reply w1=Weather"));
}

TEST(Comparison, NamesACallThatWasNotAnswered) {
    Messages other = SESSION;
    other.pop_back();
    EXPECT_THAT(Lines(SESSION, other),
                ElementsAre("- a:5: middleware call AddItems w1=Weather -> reply nothing",
                            "+ b:5: middleware call AddItems w1=Weather, not answered"));
}

// A middleware may send the next call before the reply to the last one.
TEST(Comparison, IgnoresWhenACallWasMadeAmongTheAnswers) {
    const Messages waiting{Called(1, Function::GetSelection), Replied(1),
                           Called(2, Function::GetAllItems), Replied(2)};
    const Messages hurrying{Called(1, Function::GetSelection), Called(2, Function::GetAllItems),
                            Replied(1), Replied(2)};
    EXPECT_THAT(Lines(waiting, hurrying), IsEmpty());
}

TEST(Comparison, IgnoresTheTextOfAnError) {
    const Messages first{Called(1, Function::GetSelection), Failed(1, ":1.2 is gone")};
    const Messages second{Called(1, Function::GetSelection), Failed(1, ":1.31 is gone")};
    EXPECT_THAT(Lines(first, second), IsEmpty());
    EXPECT_EQ(Lines(first, second, {.names = true, .tolerance = {}}).size(), 2U);
}

TEST(Comparison, IgnoresTimesByDefault) {
    Messages later = SESSION;
    later[4].time += 2500;
    EXPECT_THAT(Lines(SESSION, later), IsEmpty());
    EXPECT_THAT(Lines(SESSION, later, {.names = false, .tolerance = 2500}), IsEmpty());
    EXPECT_THAT(Lines(SESSION, later, {.names = false, .tolerance = 2499}),
                ElementsAre("- a:6: application signal event 1 ItemChanged, after 0 ms\n"
                            "+ b:6: application signal event 1 ItemChanged, after 2 ms"));
}

TEST(Comparison, ReportsAllFollowingStepsWithoutACommonStep) {
    EXPECT_EQ(Lines(Messages(3000, Signalled(Event::ItemChanged)),
                    Messages(2000, Signalled(Event::ItemSelected)))
                  .size(),
              5000U);
}

}  // namespace
}  // namespace applist::sim
