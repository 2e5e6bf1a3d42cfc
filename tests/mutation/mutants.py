# Copyright (c) 2026 the applist authors
# SPDX-License-Identifier: Apache-2.0
"""Generates mutants of C++ source files: small changes that a test should notice.

The order is that of the source text, so that a stride always selects the same mutants.
"""
import re
from typing import NamedTuple

# The test programs for each file, the quickest first. The first program that fails ends a mutant's run.
PROGRAMS = {
    "base/CallbackGuard.h": ["unit_base", "control_test", "renderer_test", "entry_test"],
    "base/LittleEndian.h": ["unit_base"],
    "base/PTMutex.h": ["unit_base"],
    "menu-provider/visibility-checker/src/PlatformSettings.cpp": ["visibility_test"],
    "menu-provider/visibility-checker/src/visibility-checker.cpp": ["visibility_test", "unknown_local_set_test"],
    "src/AppListEntry.cpp": ["entry_test", "failed_request_test"],
    "src/BannerEntry.cpp": ["banner_test"],
    "src/Main.cpp": ["main_test"],
    "src/applist/AppList.cpp": ["unit_list"],
    "src/applist/DefaultAppListControl.cpp": ["control_test"],
    "src/applist/DefaultAppListItem.cpp": ["unit_list"],
    "src/applist/DefaultAppListModel.cpp": ["unit_list"],
    "src/applist/DefaultAppListRenderer.cpp": ["renderer_test", "ui_scene"],
    "src/applist/LocalAppListModel.cpp": ["unit_ipc"],
    "src/applist/RemoteAppListItem.cpp": ["unit_ipc"],
    "src/ipc/IPCApplist.h": ["unit_ipc"],
    "src/ipc/gio-support.cpp": ["transport_calls_test", "transport_test"],
    "src/ipc/javamw-dbus-local.cpp": ["transport_calls_test", "transport_test", "handshake_orders_test"],
}


class Mutant(NamedTuple):
    """One change of a file: the characters from start to end become text."""

    file: str
    line: int
    kind: str
    start: int
    end: int
    text: str
    before: str  # the replaced characters, shortened

    @property
    def name(self):
        return f"{self.file}:{self.line}: {self.kind}: {self.before} -> {self.text or 'nothing'}"

    def applied_to(self, source):
        return source[:self.start] + self.text + source[self.end:]


COMPARISONS = {"==": ["!="], "!=": ["=="], "<": [">=", "<="], ">": ["<=", ">="], "<=": [">", "<"], ">=": ["<", ">"]}
OPPOSITES = {"&&": "||", "||": "&&", "+": "-", "-": "+", "&": "|"}
NOT_CALLS = re.compile(r"(?:return|if|for|while|switch|delete|static_cast<void>|G_GNUC_\w+)\b")


def masked(source):
    """Returns source with comments, texts and preprocessor lines as blanks of the same length."""
    hidden = re.compile(
        r"//[^\n]*|/\*.*?\*/|^[ \t]*#(?:\\\n|[^\n])*|\"(?:\\.|[^\"\\\n])*\"|(?<![\w])'(?:\\.|[^'\\\n])'", re.DOTALL | re.MULTILINE)
    return hidden.sub(lambda match: re.sub(r"[^\n]", " ", match.group()), source)


def closing(code, opening):
    """Returns the position after the parenthesis that closes the one at opening."""
    depth = 0
    for position in range(opening, len(code)):
        depth += {"(": 1, ")": -1}.get(code[position], 0)
        if depth == 0:
            return position + 1
    return len(code)


def operators(code):
    """Comparisons, boundaries, logical and arithmetic operators. The format puts blanks around binary ones only."""
    for match in re.finditer(r"(?<= )(==|!=|<=|>=|<|>|&&|\|\||\+|-|&)(?=[ \n])", code):
        operator = match.group()
        for text in COMPARISONS.get(operator, []):
            yield "boundary" if text.rstrip("=") == operator.rstrip("=") else "comparison", *match.span(), text
        if operator in OPPOSITES:
            yield "operator", *match.span(), OPPOSITES[operator]
    for match in re.finditer(r"(?<=[(\s])!(?=[\w(])", code):
        yield "negation", *match.span(), ""


def numbers(code):
    """Numbers, which grow by one."""
    for match in re.finditer(r"(?<![\w.'])(\d[\d']*)(?![\w.'])", code):
        yield "number", *match.span(), str(int(match.group().replace("'", "")) + 1)


def returns(code):
    """Return values, and statements that leave a function or a loop early."""
    for match in re.finditer(r"\breturn\b\s*([^;]*);", code):
        value = match.group(1)
        if value == "":
            yield "removed return", *match.span(), ";"
        elif value in ("true", "false"):
            yield "return value", *match.span(1), "false" if value == "true" else "true"
        elif not re.fullmatch(r"\{\}|nullptr|0|std::nullopt", value) and "{" not in value:
            yield "return value", *match.span(1), "{}"
    for match in re.finditer(r"\b(?:continue|break);", code):
        yield "removed jump", *match.span(), ";"


def calls(code):
    """Statements that only call a function."""
    for match in re.finditer(r"(?:(?<=[;{}])|(?<=:\n))\s*((?:[\w*()]+(?:::|\.|->|\[\w+\]\.))*[\w:]+)(?=\()", code):
        start, opening = match.start(1), match.end(1)
        end = closing(code, opening)
        if code[end:end + 1] == ";" and not NOT_CALLS.match(code, start):
            kind = "removed log line" if code.startswith("LOG_", start) else "removed call"
            yield kind, start, end, ""


def of_file(file, source):
    """Returns the mutants of source in the order of its text."""
    code = masked(source)
    found = sorted({change for rule in (operators, numbers, returns, calls) for change in rule(code)}, key=lambda c: c[1:])
    return [Mutant(file, code.count("\n", 0, start) + 1, kind, start, end, text,
                   " ".join(source[start:end].split())[:70]) for kind, start, end, text in found]
