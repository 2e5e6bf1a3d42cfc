// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include <gmock/gmock.h>

#include "recording/Recording.h"
#include "unit/simulator/recording/Messages.h"

namespace applist::sim {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

std::vector<Conversation> Converse(const std::vector<RecordedMessage>& messages) {
    return ConversationsOf({messages, {}});
}

TEST(Conversations, AreBetweenOneMiddlewareAndOneApplicationEach) {
    RecordedMessage other = Signalled(Event::LocalCreated);
    other.to = ":1.9";
    const auto conversations = Converse({Announced(Side::Middleware, ":1.1", "x_CLIENT_SYN"),
                                         Signalled(Event::LocalCreated), other,
                                         Called(1, Function::GetSelection), Replied(1)});
    ASSERT_EQ(conversations.size(), 2U);
    EXPECT_EQ(conversations[0].middleware, ":1.1");
    EXPECT_EQ(conversations[0].application, ":1.2");
    EXPECT_THAT(
        conversations[0].recording.messages,
        ElementsAre(Signalled(Event::LocalCreated), Called(1, Function::GetSelection), Replied(1)));
    EXPECT_EQ(conversations[1].middleware, ":1.9");
    EXPECT_THAT(conversations[1].recording.messages, ElementsAre(other));
}

TEST(Conversations, ExcludeTheHandshakeAndBroadcastSignals) {
    RecordedMessage toAll = Signalled(Event::ItemChanged);
    toAll.to.clear();
    EXPECT_THAT(Converse({Announced(Side::Middleware, ":1.1", "x_CLIENT_SYN"), toAll}), IsEmpty());
}

TEST(Conversations, HaveTheMessagesOfTheMiddlewareWithTimesAndPriorAnswers) {
    RecordedMessage signal = Called(0, Function::SetClicked, {}, 900);
    signal.kind = MessageKind::Signal;
    const auto utterances = SentMessagesOf(
        Converse({Signalled(Event::LocalCreated, 100),
                  Called(1, Function::AddItems, {{"a", "A"}}, 250),
                  Called(2, Function::GetSelection, {}, 300), Replied(1), Failed(2, "no"), signal})
            .at(0));
    ASSERT_EQ(utterances.size(), 3U);
    EXPECT_EQ(utterances[0].bytes, EncodeCall(Function::AddItems, {{"a", "A"}}));
    EXPECT_EQ(utterances[0].time, 150);
    EXPECT_EQ(utterances[0].answersBefore, 0U);
    EXPECT_EQ(utterances[1].answersBefore, 0U);
    EXPECT_EQ(utterances[2].kind, MessageKind::Signal);
    EXPECT_EQ(utterances[2].answersBefore, 2U);
    EXPECT_EQ(utterances[2].time, 800);
}

TEST(Conversations, HaveTheSignalsAndAnswersOfTheApplication) {
    RecordedMessage signal = Called(0, Function::SetClicked);
    signal.kind = MessageKind::Signal;
    const auto conversation =
        Converse({Signalled(Event::LocalCreated), Signalled(Event::LocalCreated), signal,
                  Called(1, Function::GetSelection), Replied(1), Signalled(Event::ItemChanged)})
            .at(0);
    EXPECT_THAT(ApplicationSide(conversation).messages,
                ElementsAre(Signalled(Event::LocalCreated), Called(1, Function::GetSelection),
                            Replied(1), Signalled(Event::ItemChanged)));
}

}  // namespace
}  // namespace applist::sim
