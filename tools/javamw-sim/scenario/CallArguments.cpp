// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include "scenario/CallArguments.h"

#include <optional>
#include <utility>

namespace applist::sim {
namespace {

using Arguments = std::vector<std::string>;

Result<Items> Wrong(Function function) {
    const std::string form = ArgumentForm(function);
    return Result<Items>::Failure(std::string(NameOf(function)) + " takes " +
                                  (form.empty() ? "no arguments" : form));
}

std::optional<Item> ParsePair(const std::string& text) {
    const size_t separator = text.find('=');
    if (separator == std::string::npos) {
        return std::nullopt;
    }
    return Item{text.substr(0, separator), text.substr(separator + 1)};
}

Result<Items> ParseIdAndName(Function function, const Arguments& arguments) {
    if (arguments.empty() || arguments.size() > 2) {
        return Wrong(function);
    }
    return Items{{arguments[0], arguments.size() == 2 ? arguments[1] : std::string()}};
}

Result<Items> ParsePairs(Function function, const Arguments& arguments) {
    Items items;
    for (const std::string& argument : arguments) {
        auto item = ParsePair(argument);
        if (!item) {
            return Wrong(function);
        }
        items.push_back(std::move(*item));
    }
    return items;
}

// The item to replace may be given by its id alone.
Result<Items> ParseReplacement(Function function, const Arguments& arguments) {
    if (arguments.size() != 2) {
        return Wrong(function);
    }
    const auto replacement = ParsePair(arguments[1]);
    if (!replacement) {
        return Wrong(function);
    }
    return Items{ParsePair(arguments[0]).value_or(Item{arguments[0], {}}), *replacement};
}

}  // namespace

const char* ArgumentForm(Function function) {
    switch (function) {
        case Function::SetSelection:
        case Function::RemoveItem:
            return "ID [NAME]";
        case Function::AddItems:
            return "ID=NAME...";
        case Function::AddItemAtEnd:
            return "ID=NAME";
        case Function::ModifyItem:
            return "ID ID=NAME";
        case Function::GetSelection:
        case Function::GetAllItems:
        case Function::RemoveAllItems:
        case Function::SetClicked:
            break;
    }
    return "";
}

Result<Items> ParseCallArguments(Function function, const Arguments& arguments) {
    switch (function) {
        case Function::SetSelection:
        case Function::RemoveItem:
            return ParseIdAndName(function, arguments);
        case Function::AddItemAtEnd:
            return arguments.size() == 1 ? ParsePairs(function, arguments) : Wrong(function);
        case Function::AddItems:
            return ParsePairs(function, arguments);
        case Function::ModifyItem:
            return ParseReplacement(function, arguments);
        case Function::GetSelection:
        case Function::GetAllItems:
        case Function::RemoveAllItems:
        case Function::SetClicked:
            break;
    }
    return arguments.empty() ? Result<Items>(Items()) : Wrong(function);
}

}  // namespace applist::sim
