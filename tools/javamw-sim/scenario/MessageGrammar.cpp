// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include <utility>

#include "scenario/Grammar.h"

namespace applist::sim::grammar {
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

template <Function function>
Action ReadCallOf(Cursor& cursor) {
    return Send{.frame = RegularFrame{function, ReadItems(cursor, function)}};
}

RegularFrame ReadRegularFrame(Cursor& cursor) {
    const Function function = cursor.TakeFunction();
    return {function, ReadItems(cursor, function)};
}

Action ReadCall(Cursor& cursor) {
    return Send{.frame = ReadRegularFrame(cursor)};
}

Action ReadSendHex(Cursor& cursor) {
    return Send{.frame = RawFrame{cursor.Hex()}};
}

Action ReadSendShort(Cursor& cursor) {
    return Send{.frame = RawFrame{
                    Bytes(cursor.Number("the number of bytes", 0, LONGEST_SHORT_FRAME), '\xD0')}};
}

Action ReadSendHuge(Cursor& cursor) {
    HugeFrame frame{.size = cursor.Size()};
    if (!cursor.AtEnd()) {
        frame.function = cursor.TakeFunction();
    }
    return Send{.frame = frame};
}

Action ReadSendFlipped(Cursor& cursor) {
    const uint32_t seed = cursor.Number("the seed", 0, LAST_SEED);
    const uint32_t bits = cursor.Number("the number of bits", 1, MOST_BITS);
    return Send{.frame = FlippedFrame{ReadRegularFrame(cursor), seed, bits}};
}

Action ReadSendCut(Cursor& cursor) {
    const size_t size = cursor.Size();
    return Send{.frame = CutFrame{ReadRegularFrame(cursor), size}};
}

Action ReadSignalHex(Cursor& cursor) {
    return Send{.frame = RawFrame{cursor.Hex()}, .asSignal = true};
}

std::vector<Rule> SingleRules() {
    return {
        {{"add", "ID=NAME...", "Call AddItems"}, &ReadCallOf<Function::AddItems>},
        {{"append", "ID=NAME", "Call AddItemAtEnd"}, &ReadCallOf<Function::AddItemAtEnd>},
        {{"remove", "ID", "Call RemoveItem"}, &ReadCallOf<Function::RemoveItem>},
        {{"modify", "ID ID=NAME", "Call ModifyItem"}, &ReadCallOf<Function::ModifyItem>},
        {{"select", "ID", "Call SetSelection"}, &ReadCallOf<Function::SetSelection>},
        {{"clear", "", "Call RemoveAllItems"}, &ReadCallOf<Function::RemoveAllItems>},
        {{"call", "FUNCTION [ARG...]", "Call any function"}, &ReadCall},
        {{"send-hex", "HEX...", "Call with exactly these bytes"}, &ReadSendHex},
        {{"send-short", "N", "Call with 0 to 3 bytes"}, &ReadSendShort},
        {{"send-huge", "SIZE [FUNCTION]", "Call with so many bytes, most of them false"},
         &ReadSendHuge},
        {{"send-flipped", "SEED BITS FUNCTION [ARG...]", "Call with bits flipped"},
         &ReadSendFlipped},
        {{"send-cut", "SIZE FUNCTION [ARG...]", "Call with the payload cut off"}, &ReadSendCut},
        {{"signal-hex", "HEX...", "Emit a signal with these bytes"}, &ReadSignalHex},
    };
}

Send ReadMessage(Cursor& cursor) {
    static const std::vector<Rule> RULES = SingleRules();
    return std::get<Send>(ReadByKeyword(cursor, RULES, "a message"));
}

Action ReadPost(Cursor& cursor) {
    Send send = ReadMessage(cursor);
    send.awaitReply = false;
    return send;
}

Action ReadFlood(Cursor& cursor) {
    const uint32_t copies = cursor.Number("the number of messages", 1, MOST_COPIES);
    Send send = ReadMessage(cursor);
    send.copies = copies;
    return send;
}

}  // namespace

std::vector<Rule> MessageRules() {
    std::vector<Rule> rules = SingleRules();
    rules.push_back({{"post", "MESSAGE", "Send without waiting for the reply"}, &ReadPost});
    rules.push_back(
        {{"flood", "N MESSAGE", "Send N times, many at once; {n} is the number"}, &ReadFlood});
    return rules;
}

}  // namespace applist::sim::grammar
