// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include <algorithm>
#include <array>
#include <memory>
#include <random>
#include <utility>

#include "LittleEndian.h"
#include "scenario/StatementRunner.h"
#include "scenario/Words.h"
#include "shared/Output.h"

/// Messages to the application, valid and damaged.
namespace applist::sim {
namespace {

constexpr uint32_t LONGEST_SHORT_FRAME = 3;
constexpr uint32_t MOST_BITS = 10000;
constexpr uint32_t MOST_COPIES = 1000000;
constexpr uint32_t LAST_SEED = 0xFFFFFFFF;

Item ReadItemById(Cursor& cursor) {
    ItemPattern pattern = cursor.Pattern();
    return {std::move(pattern.id), pattern.name.value_or("")};
}

Items ReadItems(Cursor& cursor, Function function) {
    switch (function) {
        case Function::SetSelection:
        case Function::RemoveItem:
            return {ReadItemById(cursor)};
        case Function::ModifyItem: {
            Item old = ReadItemById(cursor);
            return {std::move(old), cursor.Pair()};
        }
        case Function::AddItemAtEnd:
            return {cursor.Pair()};
        case Function::AddItems: {
            Items items;
            while (!cursor.AtEnd()) {
                items.push_back(cursor.Pair());
            }
            return items;
        }
        case Function::GetSelection:
        case Function::GetAllItems:
        case Function::RemoveAllItems:
        case Function::SetClicked:
            break;
    }
    return {};
}

FunctionCall ReadFunctionCall(Cursor& cursor) {
    const Function function = cursor.TakeFunction();
    return {function, ReadItems(cursor, function)};
}

Bytes EncodeCopy(const FunctionCall& call, unsigned copy) {
    const std::string number = std::to_string(copy);
    Items items = call.items;
    for (Item& item : items) {
        item = {tools::Replaced(item.id, "{n}", number), tools::Replaced(item.name, "{n}", number)};
    }
    return EncodeCall(call.function, items);
}

Action SendCall(const FunctionCall& call) {
    return Sending(CallMessage(call));
}

template <Function function>
Action ReadCallOf(Cursor& cursor) {
    return SendCall({function, ReadItems(cursor, function)});
}

Action SendRaw(const Bytes& bytes, bool asSignal = false) {
    return Sending({.bytes = [bytes](unsigned) { return bytes; }, .asSignal = asSignal});
}

Action ReadSendShort(Cursor& cursor) {
    return SendRaw(Bytes(cursor.Number("the number of bytes", 0, LONGEST_SHORT_FRAME), '\xD0'));
}

// The first item announces a longer text than the message contains.
Action ReadSendHuge(Cursor& cursor) {
    const size_t size = std::max(cursor.Size(), WIRE_NUMBER_SIZE);
    const Function function = cursor.AtEnd() ? Function::AddItems : cursor.TakeFunction();
    const auto encode = [size, function](unsigned) {
        Bytes bytes(size - WIRE_NUMBER_SIZE, '\xFF');
        const Bytes id = EncodeCall(function, {});
        bytes.insert(bytes.end(), id.begin(), id.end());
        return bytes;
    };
    return Sending({.bytes = encode});
}

// The engine is portable, but the distributions of the library are not.
Action ReadSendFlipped(Cursor& cursor) {
    const uint32_t seed = cursor.Number("the seed", 0, LAST_SEED);
    const uint32_t bits = cursor.Number("the number of bits", 1, MOST_BITS);
    const auto encode = [seed, bits, call = ReadFunctionCall(cursor)](unsigned copy) {
        Bytes bytes = EncodeCopy(call, copy);
        std::mt19937 engine(seed + copy - 1);
        for (unsigned i = 0; i < bits; ++i) {
            const size_t bit = engine() % (bytes.size() * 8);
            bytes[bit / 8] =
                static_cast<char>(static_cast<uint8_t>(bytes[bit / 8]) ^ (1U << bit % 8));
        }
        return bytes;
    };
    return Sending({.bytes = encode});
}

Action ReadSendCut(Cursor& cursor) {
    const size_t size = cursor.Size();
    const auto encode = [size, call = ReadFunctionCall(cursor)](unsigned copy) {
        Bytes bytes = EncodeCopy(call, copy);
        const size_t kept = std::min(size, bytes.size() - WIRE_NUMBER_SIZE);
        bytes.erase(bytes.begin() + static_cast<Bytes::difference_type>(kept),
                    bytes.end() - WIRE_NUMBER_SIZE);
        return bytes;
    };
    return Sending({.bytes = encode});
}

const Rules SINGLE_MESSAGES{
    {{"add", "ID=NAME...", "Call AddItems"}, ReadCallOf<Function::AddItems>},
    {{"append", "ID=NAME", "Call AddItemAtEnd"}, ReadCallOf<Function::AddItemAtEnd>},
    {{"remove", "ID", "Call RemoveItem"}, ReadCallOf<Function::RemoveItem>},
    {{"modify", "ID ID=NAME", "Call ModifyItem"}, ReadCallOf<Function::ModifyItem>},
    {{"select", "ID", "Call SetSelection"}, ReadCallOf<Function::SetSelection>},
    {{"clear", "", "Call RemoveAllItems"}, ReadCallOf<Function::RemoveAllItems>},
    {{"call", "FUNCTION [ARG...]", "Call any function"},
     [](Cursor& cursor) { return SendCall(ReadFunctionCall(cursor)); }},
    {{"send-hex", "HEX...", "Call with exactly these bytes"},
     [](Cursor& cursor) { return SendRaw(cursor.Hex()); }},
    {{"send-short", "N", "Call with 0 to 3 bytes"}, ReadSendShort},
    {{"send-huge", "SIZE [FUNCTION]", "Call with SIZE bytes, most of them invalid"}, ReadSendHuge},
    {{"send-flipped", "SEED BITS FUNCTION [ARG...]", "Call with bits flipped"}, ReadSendFlipped},
    {{"send-cut", "SIZE FUNCTION [ARG...]", "Call with the payload cut off"}, ReadSendCut},
    {{"signal-hex", "HEX...", "Emit a signal with these bytes"},
     [](Cursor& cursor) { return SendRaw(cursor.Hex(), true); }},
};

Message ReadMessage(Cursor& cursor) {
    return ReadByKeyword(cursor, SINGLE_MESSAGES, "a message").message.value_or(Message());
}

Action ReadPost(Cursor& cursor) {
    Message message = ReadMessage(cursor);
    message.awaitReply = false;
    return Sending(message);
}

Action ReadFlood(Cursor& cursor) {
    const uint32_t copies = cursor.Number("the number of messages", 1, MOST_COPIES);
    Message message = ReadMessage(cursor);
    message.copies = copies;
    return Sending(message);
}

}  // namespace

const Rules& MessageRules() {
    static const Rules RULES = [] {
        Rules rules = SINGLE_MESSAGES;
        rules.insert(rules.end(),
                     {
                         {{"post", "MESSAGE", "Send without waiting for the reply"}, ReadPost},
                         {{"flood", "N MESSAGE", "Send N times, many at once; {n} is the number"},
                          ReadFlood},
                     });
        return rules;
    }();
    return RULES;
}

const char* ArgumentForm(Function function) {
    constexpr std::array<const char*, FUNCTIONS.size()> FORMS{
        "ID [NAME]", "", "", "", "ID=NAME...", "ID=NAME", "", "ID [NAME]", "ID ID=NAME"};
    return FORMS.at(static_cast<size_t>(function) - static_cast<size_t>(FUNCTIONS.front()));
}

// For the form "ID [NAME]" the id and the name are separate words on a command line, so that both
// may contain "=".
Result<Items> ParseCallArguments(Function function, const std::vector<std::string>& arguments) {
    const std::string form = ArgumentForm(function);
    const bool ownWords = form == "ID [NAME]";
    SplitLine line;
    for (const std::string& argument : arguments) {
        const size_t equals = ownWords ? std::string::npos : argument.find('=');
        line.words.push_back({.text = argument});
        if (equals != std::string::npos) {
            line.words.back().equals = equals;
        }
    }
    if (ownWords && arguments.size() == 2) {
        line.words = {{.text = arguments[0] + '=' + arguments[1], .equals = arguments[0].size()}};
    }
    Cursor cursor(line);
    Items items = ReadItems(cursor, function);
    cursor.End();
    return cursor.error() ? Result<Items>::Failure(std::string(NameOf(function)) + " takes " +
                                                   (form.empty() ? "no arguments" : form))
                          : items;
}

namespace {

/// The calls of one statement, shared with the reply callbacks, which may run after the statement
/// has timed out.
struct PendingCalls {
    // The bus daemon limits each connection to 128 pending replies.
    static constexpr unsigned MOST_UNDER_WAY = 64;

    unsigned sent = 0;
    unsigned answered = 0;
    unsigned failed = 0;
    std::string firstError;
    std::optional<Result<Bytes>> lastReply;

    static void SendNext(const std::shared_ptr<PendingCalls>& calls, const Message& message,
                         Middleware& middleware) {
        middleware.link().Call(middleware.application(), message.bytes(++calls->sent),
                               [calls](const Result<Bytes>& reply) { calls->Take(reply); });
    }
    void Take(const Result<Bytes>& reply) {
        ++answered;
        if (!reply && ++failed == 1) {
            firstError = reply.error();
        }
        lastReply = reply;
    }
    void GiveUp(const std::string& problem, unsigned copies) {
        failed += copies - answered;
        firstError = firstError.empty() ? problem : firstError;
        lastReply = Result<Bytes>::Failure(problem);
    }
};

Outcome Signal(const Message& message, Middleware& middleware) {
    for (unsigned copy = 1; copy <= message.copies; ++copy) {
        const std::string error =
            middleware.link().Emit(middleware.application(), message.bytes(copy));
        if (!error.empty()) {
            return Failed("the signal could not be sent: " + error);
        }
    }
    return Held();
}

Outcome JudgeReplies(const PendingCalls& calls, const Message& message, StatementRunner& runner) {
    const auto items = ItemsOf(*calls.lastReply);
    const std::string subject =
        message.call ? std::string(NameOf(message.call->function)) : "the call";
    if (calls.failed > 0) {
        const std::string count = message.copies == 1 ? ""
                                                      : std::to_string(calls.failed) + " of " +
                                                            std::to_string(message.copies) +
                                                            " times; first error: ";
        return runner.errorExpected() ? Held()
                                      : Failed(subject + " failed: " + count + calls.firstError);
    }
    return items || !message.call ? Outcome{Verdict::Held, "", items}
                                  : Failed("the reply of " + subject + " is not a list of items");
}

Outcome Send(StatementRunner& runner, const Message& message) {
    Middleware& middleware = runner.acting().middleware;
    if (message.asSignal) {
        return Signal(message, middleware);
    }
    const auto calls = std::make_shared<PendingCalls>();
    if (!message.awaitReply) {
        PendingCalls::SendNext(calls, message, middleware);
        return Held();
    }
    while (calls->answered < message.copies) {
        while (calls->sent < message.copies &&
               calls->sent - calls->answered < PendingCalls::MOST_UNDER_WAY) {
            PendingCalls::SendNext(calls, message, middleware);
        }
        const unsigned before = calls->answered;
        Outcome waited = runner.Await([&] { return calls->answered > before; }, runner.timeout(),
                                      "no reply within " + DescribeTime(runner.timeout()));
        if (waited.verdict == Verdict::Failed) {
            calls->GiveUp(waited.problem, message.copies);
            break;
        }
        if (!waited.held()) {
            return waited;
        }
    }
    runner.acting().lastReply = calls->lastReply;
    return JudgeReplies(*calls, message, runner);
}

}  // namespace

Message CallMessage(const FunctionCall& call) {
    return {.bytes = [call](unsigned copy) { return EncodeCopy(call, copy); }, .call = call};
}

Action Sending(const Message& message) {
    return {.run = [message](StatementRunner& runner) { return Send(runner, message); },
            .kind = Action::Kind::Sending,
            .needs = Action::Needs::Application,
            .message = message};
}

}  // namespace applist::sim
