// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include "recording/RecordingText.h"

#include <algorithm>
#include <array>
#include <memory>
#include <optional>
#include <utility>

#include <json-glib/json-glib.h>

#include "common/JsonWriter.h"
#include "link/GioHandles.h"
#include "link/Protocol.h"

namespace applist::sim {
namespace {

constexpr const char* VERSION_MEMBER = "javamw-recording";
constexpr std::array SIDES{Side::Application, Side::Middleware};
constexpr std::array KINDS{MessageKind::Acquired, MessageKind::Released, MessageKind::Call,
                           MessageKind::Reply,    MessageKind::Error,    MessageKind::Signal,
                           MessageKind::Left};

struct UnrefNode {
    void operator()(JsonNode* node) const { json_node_unref(node); }
};
using NodePtr = std::unique_ptr<JsonNode, UnrefNode>;

/// An object of the file. A member with a wrong type is an error of the line.
class ObjectReader {
public:
    explicit ObjectReader(JsonObject* object) : m_object(object) {}

    std::string Text(const char* member) {
        JsonNode* node = json_object_get_member(m_object, member);
        if (node == nullptr) {
            return {};
        }
        if (!Holds(node, G_TYPE_STRING)) {
            Refuse(member, "is not a string");
            return {};
        }
        return json_node_get_string(node);
    }
    int64_t Number(const char* member) {
        JsonNode* node = json_object_get_member(m_object, member);
        if (node == nullptr) {
            return 0;
        }
        if (!Holds(node, G_TYPE_INT64) || json_node_get_int(node) < 0) {
            Refuse(member, "is not a non-negative integer");
            return 0;
        }
        return json_node_get_int(node);
    }
    template <typename Choices>
    auto Choice(const char* member, const Choices& choices) {
        const std::string text = Text(member);
        const auto found = std::find_if(choices.begin(), choices.end(),
                                        [&text](auto choice) { return NameOf(choice) == text; });
        if (found == choices.end()) {
            Refuse(member, "is unknown: '" + text + "'");
            return choices.front();
        }
        return *found;
    }
    Bytes Hex(const char* member) {
        auto bytes = FromHex(Text(member));
        if (!bytes) {
            Refuse(member, "is not hexadecimal");
            return {};
        }
        return std::move(*bytes);
    }
    /// The first error; empty if none.
    const std::string& fault() const { return m_fault; }

private:
    static bool Holds(JsonNode* node, GType type) {
        return JSON_NODE_HOLDS_VALUE(node) && json_node_get_value_type(node) == type;
    }
    void Refuse(const std::string& member, const std::string& why) {
        if (m_fault.empty()) {
            m_fault = "\"" + member + "\" " + why;
        }
    }

    JsonObject* m_object;
    std::string m_fault;
};

// The parser is recursive, so deep nesting is rejected first. A message has only one level.
bool IsDeep(std::string_view line) {
    constexpr int LEVELS = 50;
    int brackets = 0;
    bool quoted = false;
    for (size_t i = 0; i < line.size(); ++i) {
        if (line[i] == '"') {
            quoted = !quoted;
        } else if (quoted) {
            i += line[i] == '\\' ? 1 : 0;
        } else if (line[i] == '[' || line[i] == '{') {
            ++brackets;
        }
    }
    return brackets > LEVELS;
}

Result<NodePtr> ParseObject(std::string_view line) {
    if (IsDeep(line)) {
        return Result<NodePtr>::Failure("too many brackets");
    }
    const GObjectPtr<JsonParser> parser(json_parser_new());
    GError* error = nullptr;
    if (json_parser_load_from_data(parser.get(), line.data(), static_cast<gssize>(line.size()),
                                   &error) == FALSE) {
        g_error_free(error);
        return Result<NodePtr>::Failure("not JSON");
    }
    NodePtr root(json_parser_steal_root(parser.get()));
    if (!root || !JSON_NODE_HOLDS_OBJECT(root.get())) {
        return Result<NodePtr>::Failure("not a JSON object");
    }
    return root;
}

std::string CheckHeader(std::string_view line) {
    const auto root = ParseObject(line);
    if (!root) {
        return root.error();
    }
    ObjectReader reader(json_node_get_object(root->get()));
    const int64_t version = reader.Number(VERSION_MEMBER);
    if (!reader.fault().empty() || version == 0) {
        return "not the header of a recording";
    }
    return version == RECORDING_VERSION
               ? std::string()
               : "unsupported version " + std::to_string(version) + " of recordings";
}

Result<RecordedMessage> ParseMessage(std::string_view line) {
    const auto root = ParseObject(line);
    if (!root) {
        return Result<RecordedMessage>::Failure(root.error());
    }
    ObjectReader reader(json_node_get_object(root->get()));
    RecordedMessage message;
    message.time = reader.Number("us");
    message.kind = reader.Choice("kind", KINDS);
    message.side = reader.Choice("side", SIDES);
    message.from = reader.Text("from");
    message.to = reader.Text("to");
    message.call = static_cast<uint64_t>(reader.Number("call"));
    message.name = reader.Text("name");
    message.text = reader.Text("text");
    message.bytes = reader.Hex("bytes");
    return reader.fault().empty() ? Result(message)
                                  : Result<RecordedMessage>::Failure(reader.fault());
}

/// Reads line by line.
class RecordingReader {
public:
    /// Returns an empty string on success.
    std::string Read(std::string_view line) {
        ++m_line;
        if (line.find_first_not_of(" \t\r") == std::string_view::npos) {
            return {};
        }
        if (!m_begun) {
            m_begun = true;
            return CheckHeader(line);
        }
        auto message = ParseMessage(line);
        if (!message) {
            return message.error();
        }
        message->line = m_line;
        m_recording.messages.push_back(std::move(*message));
        return {};
    }

    bool begun() const { return m_begun; }
    size_t line() const { return m_line; }
    Recording& recording() { return m_recording; }

private:
    size_t m_line = 0;
    bool m_begun = false;
    Recording m_recording;
};

}  // namespace

std::string RecordingHeader(const std::string& started) {
    return JsonWriter()
        .Object()
        .Number(VERSION_MEMBER, RECORDING_VERSION)
        .Text("started", started)
        .EndObject()
        .Finish();
}

std::string RecordingLine(const RecordedMessage& message) {
    JsonWriter writer;
    writer.Object()
        .Number("us", message.time)
        .Text("kind", NameOf(message.kind))
        .Text("side", NameOf(message.side))
        .TextUnlessEmpty("from", message.from)
        .TextUnlessEmpty("to", message.to);
    if (message.call > 0) {
        writer.Number("call", static_cast<int64_t>(message.call));
    }
    writer.TextUnlessEmpty("name", message.name)
        .TextUnlessEmpty("text", message.text)
        .TextUnlessEmpty("bytes", ToHex(message.bytes));
    if (CarriesBytes(message.kind)) {
        writer.Text("note", Describe(message));
    }
    return writer.EndObject().Finish();
}

Result<Recording> ParseRecording(std::string_view text) {
    RecordingReader reader;
    while (!text.empty()) {
        const size_t end = text.find('\n');
        const std::string error = reader.Read(text.substr(0, end));
        if (!error.empty()) {
            return Result<Recording>::Failure(std::to_string(reader.line()) + ": " + error);
        }
        text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
    }
    return reader.begun() ? Result(std::move(reader.recording()))
                          : Result<Recording>::Failure("1: empty");
}

}  // namespace applist::sim
