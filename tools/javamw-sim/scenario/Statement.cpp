// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include "scenario/Statement.h"

#include <algorithm>
#include <glib.h>
#include <type_traits>
#include <utility>

#include "link/Protocol.h"
#include "scenario/Words.h"
#include "shared/LineReader.h"

namespace applist::sim {
namespace {

Action ReadExpect(Cursor& cursor) {
    return ReadByKeyword(cursor, ExpectationRules(), "an expectation");
}

const Rules& AllRules() {
    static const Rules ALL = [] {
        Rules all;
        for (const Rules& rules : {StageRules(), MessageRules()}) {
            all.insert(all.end(), rules.begin(), rules.end());
        }
        all.push_back({{"expect", "EXPECTATION", "Check an expectation"}, ReadExpect});
        return all;
    }();
    return ALL;
}

std::string AsWritten(std::string_view text, size_t end) {
    const size_t begin = text.find_first_not_of(" \t");
    return std::string(text.substr(begin, end - begin));
}

}  // namespace

bool IsSetting(const Action& action) {
    return std::holds_alternative<SetTimeout>(action) || std::holds_alternative<Note>(action) ||
           std::holds_alternative<UseMiddleware>(action) ||
           std::holds_alternative<PlanHandshake>(action) ||
           std::holds_alternative<ForgetEvents>(action);
}

const std::vector<StatementForm>& StatementForms() {
    static const std::vector<StatementForm> FORMS = [] {
        std::vector<StatementForm> forms;
        for (const Rule& rule : AllRules()) {
            forms.push_back(rule.form);
        }
        forms.pop_back();
        for (const Rule& rule : ExpectationRules()) {
            forms.push_back({"expect " + rule.form.keyword, rule.form.words, rule.form.meaning});
        }
        return forms;
    }();
    return FORMS;
}

ParsedLine ParseStatement(std::string_view text, size_t line) {
    if (text.ends_with('\r')) {
        text.remove_suffix(1);
    }
    const SplitLine split = SplitWords(text);
    ParsedLine result{std::nullopt, split.error};
    if (!split.error && !split.words.empty()) {
        Cursor cursor(split);
        Action action = ReadByKeyword(cursor, AllRules(), "a statement");
        cursor.End();
        result.error = cursor.error();
        if (!result.error) {
            result.statement = {std::move(action), line, AsWritten(text, split.endByte)};
        }
    }
    if (result.error) {
        result.error->line = line;
    }
    return result;
}

ParsedScenario ParseScenario(std::string_view text) {
    ParsedScenario scenario;
    size_t number = 0;
    for (const std::string_view line : tools::LinesOf(text)) {
        ParsedLine parsed = ParseStatement(line, ++number);
        if (parsed.error) {
            scenario.errors.push_back(std::move(*parsed.error));
        }
        if (parsed.statement) {
            scenario.statements.push_back(std::move(*parsed.statement));
        }
    }
    return scenario;
}

namespace {

using Lines = Result<std::vector<std::string>>;

// Longer command lines exceed the limit of the kernel.
constexpr size_t LONGEST_MESSAGE = 20000;
// Further copies of a message are omitted.
constexpr unsigned MOST_LINES = 10;

std::string ShellQuoted(const std::string& text) {
    g_autofree char* quoted = g_shell_quote(text.c_str());
    return quoted;
}

Lines Busctl(const BusctlTarget& target, const std::string& rest) {
    return std::vector{(target.address.empty()
                            ? "busctl --system"
                            : "busctl --address=" + ShellQuoted(target.address)) +
                       rest};
}

Lines Monitor(const BusctlTarget& target, const std::string& match) {
    return Busctl(target, " monitor --match=" + ShellQuoted("type='signal'," + match));
}

// The payload is an array of bytes for busctl: the count, then each byte.
std::string MessageLine(const Bytes& bytes, bool asSignal, const BusctlTarget& target) {
    const std::string place = std::string(names::OBJECT_PATH) + ' ' + names::INTERFACE + ' ';
    std::string line =
        asSignal ? " --destination=" + target.application + " emit " + place + names::SIGNAL
                 : " call " + target.application + ' ' + place + names::METHOD;
    line += " ay " + std::to_string(bytes.size());
    for (const char byte : bytes) {
        line += ' ' + std::to_string(static_cast<uint8_t>(byte));
    }
    return Busctl(target, line)->front();
}

Lines BusctlFor(const Send& action, const BusctlTarget& target) {
    if (target.application.empty()) {
        return Lines::Failure(
            "no application has announced itself; \"wait connected\" waits for one");
    }
    std::vector<std::string> lines;
    for (unsigned copy = 1; copy <= std::min(action.copies, MOST_LINES); ++copy) {
        const Bytes bytes = action.frame.bytes(copy);
        if (bytes.size() > LONGEST_MESSAGE) {
            return Lines::Failure(std::to_string(bytes.size()) +
                                  " bytes are too many for a command line");
        }
        lines.push_back(MessageLine(bytes, action.asSignal, target));
    }
    if (action.copies > MOST_LINES) {
        lines.push_back("# and " + std::to_string(action.copies - MOST_LINES) + " more like these");
    }
    return lines;
}

// The bus releases the name when busctl exits after the call, which is the announcement.
Lines BusctlFor(const Announce& action, const BusctlTarget& target) {
    return Busctl(target,
                  " call org.freedesktop.DBus /org/freedesktop/DBus org.freedesktop.DBus "
                  "RequestName su " +
                      names::NameOf(names::CLIENT, action.announcement) + " 4");
}

Lines BusctlFor(const ExpectAnnouncement& /*action*/, const BusctlTarget& target) {
    return Monitor(target,
                   "sender='org.freedesktop.DBus',member='NameOwnerChanged',"
                   "arg0namespace='org.vantu.JavaMW'");
}

template <typename Other>
Lines BusctlFor(const Other& /*action*/, const BusctlTarget& target) {
    constexpr bool LIST = std::is_same_v<Other, ExpectList> || std::is_same_v<Other, ExpectCount>;
    if constexpr (LIST || std::is_same_v<Other, ExpectSelection>) {
        const Function function = LIST ? Function::GetAllItems : Function::GetSelection;
        return BusctlFor(
            Send{.frame = {[=](unsigned) { return EncodeCall(function, {}); }, std::nullopt}},
            target);
    } else if constexpr (std::is_same_v<Other, ExpectEvent> ||
                         std::is_same_v<Other, ExpectNoEvent>) {
        return Monitor(target, std::string("interface='") + names::INTERFACE + "'");
    } else {
        return Lines::Failure("busctl cannot do this");
    }
}

}  // namespace

Result<std::vector<std::string>> BusctlLines(const Action& action, const BusctlTarget& target) {
    return std::visit([&target](const auto& known) { return BusctlFor(known, target); }, action);
}

}  // namespace applist::sim
