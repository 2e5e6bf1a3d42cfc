// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include "scenario/Parser.h"

#include <algorithm>
#include <utility>

#include "scenario/Cursor.h"

namespace applist::sim {
namespace {

/// A form of line and the function that reads the words after its keyword. The result counts only
/// if the cursor has no error afterwards.
struct Rule {
    StatementForm form;
    Action (*read)(Cursor&);
};

/// Takes a keyword that is in rules, and the words that belong to it. If the next word is not such
/// a keyword, the error message says that it is not "what".
Action ReadByKeyword(Cursor& cursor, const std::vector<Rule>& rules, const std::string& what) {
    for (const Rule& rule : rules) {
        if (cursor.Skip(rule.form.keyword)) {
            return rule.read(cursor);
        }
    }
    const std::string word = cursor.Text(what);
    cursor.Refuse("'" + word + "' is not " + what);
    return rules.front().read(cursor);
}

// --- settings and the bus ---

constexpr uint32_t MOST_REPETITIONS = 1000;

Action ReadTimeout(Cursor& cursor) {
    return SetTimeout{cursor.Time()};
}

Action ReadNote(Cursor& cursor) {
    std::string text = cursor.Text("a text");
    while (!cursor.AtEnd()) {
        text += ' ' + cursor.Text("");
    }
    return Note{text};
}

Action ReadMiddleware(Cursor& cursor) {
    return UseMiddleware{cursor.Text("a name")};
}

Action ReadHandshake(Cursor& cursor) {
    enum { NORMAL, MANUAL, SKIP, REPEAT, DELAY };
    const size_t kind = cursor.Choice({"normal", "manual", "skip", "repeat", "delay"});
    if (kind == NORMAL || kind == MANUAL) {
        return PlanHandshake{.announcement = std::nullopt, .times = kind == NORMAL ? 1U : 0U};
    }
    PlanHandshake plan{.announcement = cursor.OneOf(ANNOUNCEMENTS)};
    if (kind == SKIP) {
        plan.times = 0;
    } else if (kind == REPEAT) {
        plan.times = cursor.Number("the number of times", 2, MOST_REPETITIONS);
    } else {
        plan.delay = cursor.Time();
    }
    return plan;
}

Action ReadForget(Cursor& cursor) {
    cursor.Choice({"events"});
    return ForgetEvents{};
}

Action ReadJoin(Cursor& /*cursor*/) {
    return Join{};
}

Action ReadVanish(Cursor& /*cursor*/) {
    return Vanish{};
}

Action ReadRestart(Cursor& /*cursor*/) {
    return Restart{};
}

Action ReadAnnounce(Cursor& cursor) {
    return Announce{cursor.OneOf(ANNOUNCEMENTS)};
}

Action ReadWait(Cursor& cursor) {
    if (cursor.Skip("connected")) {
        return WaitForConnection{true, cursor.Within()};
    }
    if (cursor.Skip("disconnected")) {
        return WaitForConnection{false, cursor.Within()};
    }
    return WaitFor{cursor.Time()};
}

std::vector<Rule> StageRules() {
    return {
        {{"timeout", "T", "Default timeout of waits and expectations"}, &ReadTimeout},
        {{"note", "TEXT...", "Print a comment"}, &ReadNote},
        {{"partner", "NAME", "Select the acting middleware"}, &ReadMiddleware},
        {{"handshake", "normal | manual | skip STEP | repeat STEP N | delay STEP T",
          "Set how announcements are made"},
         &ReadHandshake},
        {{"forget", "events", "Drop the events received so far"}, &ReadForget},
        {{"join", "", "Connect to the bus"}, &ReadJoin},
        {{"vanish", "", "Close the connection to the bus"}, &ReadVanish},
        {{"restart", "", "Leave and join under a new unique name"}, &ReadRestart},
        {{"announce", "STEP", "Announce syn, syn-ack or ack now"}, &ReadAnnounce},
        {{"wait", "connected [within T] | disconnected [within T] | T", "Wait"}, &ReadWait},
    };
}

// --- messages ---

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
        {{"send-huge", "SIZE [FUNCTION]", "Call with SIZE bytes, most of them invalid"},
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

std::vector<Rule> MessageRules() {
    std::vector<Rule> rules = SingleRules();
    rules.push_back({{"post", "MESSAGE", "Send without waiting for the reply"}, &ReadPost});
    rules.push_back(
        {{"flood", "N MESSAGE", "Send N times, many at once; {n} is the number"}, &ReadFlood});
    return rules;
}

// --- waits and expectations ---

constexpr uint32_t MOST_EVENTS = 1000000;
constexpr uint32_t MOST_ITEMS = 1000000;

std::vector<ItemPattern> ReadPatterns(Cursor& cursor) {
    std::vector<ItemPattern> patterns{cursor.Pattern()};
    while (!cursor.AtEnd()) {
        patterns.push_back(cursor.Pattern());
    }
    return patterns;
}

Action ReadEvent(Cursor& cursor) {
    ExpectEvent expectation;
    expectation.event = cursor.OneOf(EVENTS);
    if (cursor.Skip("times")) {
        expectation.times = cursor.Number("the number of times", 1, MOST_EVENTS);
    }
    expectation.within = cursor.Within();
    return expectation;
}

Action ReadNoEvent(Cursor& cursor) {
    cursor.Choice({"event"});
    cursor.Choice({"for"});
    return ExpectNoEvent{cursor.Time()};
}

Action ReadAnnouncement(Cursor& cursor) {
    const Announcement announcement = cursor.OneOf(ANNOUNCEMENTS);
    return ExpectAnnouncement{announcement, cursor.Within()};
}

Action ReadList(Cursor& cursor) {
    return cursor.Skip("empty") ? ExpectList{} : ExpectList{ReadPatterns(cursor)};
}

Action ReadCount(Cursor& cursor) {
    return ExpectCount{cursor.Number("the number of items", 0, MOST_ITEMS)};
}

Action ReadSelection(Cursor& cursor) {
    return cursor.Skip("none") ? ExpectSelection{} : ExpectSelection{cursor.Pattern()};
}

Action ReadReply(Cursor& cursor) {
    if (cursor.Skip("empty")) {
        return ExpectReply{Bytes()};
    }
    if (cursor.Skip("hex")) {
        return ExpectReply{cursor.Hex()};
    }
    return ExpectReply{ReadPatterns(cursor)};
}

Action ReadError(Cursor& cursor) {
    return ExpectError{cursor.AtEnd() ? std::string() : cursor.Text("")};
}

std::vector<Rule> ExpectationRules() {
    return {
        {{"event", "NAME [times N] [within T]", "Expect this as the next event"}, &ReadEvent},
        {{"no", "event for T", "Expect no event during T"}, &ReadNoEvent},
        {{"announcement", "STEP [within T]", "Expect this as the next announcement"},
         &ReadAnnouncement},
        {{"list", "empty | ID[=NAME]...", "Expect exactly these items in this order"}, &ReadList},
        {{"count", "N", "Expect this number of items"}, &ReadCount},
        {{"selection", "none | ID[=NAME]", "Expect this selection"}, &ReadSelection},
        {{"reply", "empty | hex HEX... | ID[=NAME]...", "Expect this reply to the last call"},
         &ReadReply},
        {{"error", "[TEXT]", "Expect that the last call failed"}, &ReadError},
    };
}

// --- all statements ---

Action ReadExpect(Cursor& cursor) {
    static const std::vector<Rule> RULES = ExpectationRules();
    return ReadByKeyword(cursor, RULES, "an expectation");
}

std::vector<Rule> AllRules() {
    std::vector<Rule> rules = StageRules();
    for (Rule& rule : MessageRules()) {
        rules.push_back(std::move(rule));
    }
    rules.push_back({{"expect", "EXPECTATION", "Check an expectation"}, &ReadExpect});
    return rules;
}

const std::vector<Rule>& Rules() {
    static const std::vector<Rule> RULES = AllRules();
    return RULES;
}

std::vector<StatementForm> AllForms() {
    std::vector<StatementForm> forms;
    for (const Rule& rule : Rules()) {
        if (rule.read != &ReadExpect) {
            forms.push_back(rule.form);
        }
    }
    for (const Rule& rule : ExpectationRules()) {
        forms.push_back({"expect " + rule.form.keyword, rule.form.words, rule.form.meaning});
    }
    return forms;
}

std::string AsWritten(std::string_view text, size_t end) {
    const size_t begin = text.find_first_not_of(" \t");
    return std::string(text.substr(begin, end - begin));
}

}  // namespace

ParsedLine ParseStatement(std::string_view text, size_t line) {
    if (text.ends_with('\r')) {
        text.remove_suffix(1);
    }
    ParsedLine result;
    const SplitLine split = SplitWords(text);
    if (split.error) {
        result.error = {line, split.error->column, split.error->message};
        return result;
    }
    if (split.words.empty()) {
        return result;
    }
    Cursor cursor(split);
    Action action = ReadByKeyword(cursor, Rules(), "a statement");
    cursor.End();
    if (cursor.error()) {
        result.error = {line, cursor.error()->column, cursor.error()->message};
    } else {
        result.statement = {std::move(action), line, AsWritten(text, split.endByte)};
    }
    return result;
}

ParsedScenario ParseScenario(std::string_view text) {
    ParsedScenario scenario;
    for (size_t line = 1; !text.empty(); ++line) {
        const size_t end = text.find('\n');
        ParsedLine parsed = ParseStatement(text.substr(0, end), line);
        if (parsed.error) {
            scenario.errors.push_back(std::move(*parsed.error));
        }
        if (parsed.statement) {
            scenario.statements.push_back(std::move(*parsed.statement));
        }
        text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
    }
    return scenario;
}

const std::vector<StatementForm>& StatementForms() {
    static const std::vector<StatementForm> FORMS = AllForms();
    return FORMS;
}

}  // namespace applist::sim
