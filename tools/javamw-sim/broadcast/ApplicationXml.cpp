// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include <map>
#include <memory>
#include <string_view>
#include <utility>

#include <libxml/parser.h>
#include <libxml/tree.h>

#include "Number.h"
#include "broadcast/BroadcastParser.h"

namespace applist::sim {
namespace {

// Versions of the schema differ in the year that follows.
constexpr std::string_view NAMESPACE = "urn:dvb:mhp:";

struct FreeDocument {
    void operator()(xmlDoc* document) const { xmlFreeDoc(document); }
};
struct FreeContext {
    void operator()(xmlParserCtxt* context) const { xmlFreeParserCtxt(context); }
};
using Document = std::unique_ptr<xmlDoc, FreeDocument>;
using Context = std::unique_ptr<xmlParserCtxt, FreeContext>;

std::string Text(const xmlChar* text) {
    return text != nullptr ? reinterpret_cast<const char*>(text) : "";
}

// A document type could name other files or nest entities without limit.
void RefuseDocumentType(void* context, const xmlChar*, const xmlChar*, const xmlChar*) noexcept {
    xmlStopParser(static_cast<xmlParserCtxt*>(context));
}

std::string Reason(xmlParserCtxt* context) {
    if (context->errNo == XML_ERR_USER_STOP) {
        return "XML with a document type declaration, which is not supported";
    }
    const xmlError* error = xmlCtxtGetLastError(context);
    if (error == nullptr || error->message == nullptr) {
        return "not well-formed XML";
    }
    std::string message = error->message;
    // libxml2 ends its messages with a line feed.
    message.erase(message.find_last_not_of('\n') + 1);
    return "line " + std::to_string(error->line) + ": " + message;
}

Result<Document> Parse(ByteSpan bytes) {
    if (bytes.size() > MAX_XML_SIZE) {
        return Result<Document>::Failure("XML of more than 4 MiB");
    }
    const Context context(xmlNewParserCtxt());
    if (!context) {
        return Result<Document>::Failure("out of memory");
    }
    // This callback runs at the document type declaration, before any entity is expanded.
    context->sax->internalSubset = &RefuseDocumentType;
    // The file is untrusted, so the parser must not use the network. Reason() reads errors from the
    // context, so the parser must not print them. The size check makes the cast to int safe.
    Document document(xmlCtxtReadMemory(context.get(), reinterpret_cast<const char*>(bytes.data()),
                                        static_cast<int>(bytes.size()), nullptr, nullptr,
                                        XML_PARSE_NONET | XML_PARSE_NOERROR | XML_PARSE_NOWARNING));
    const bool whole = document && context->errNo != XML_ERR_USER_STOP;
    return whole ? Result(std::move(document)) : Result<Document>::Failure(Reason(context.get()));
}

bool Is(const xmlNode* node, std::string_view name) {
    // Checks the namespace too, because other schemas may use the same element names.
    return node->type == XML_ELEMENT_NODE && node->ns != nullptr &&
           Text(node->ns->href).starts_with(NAMESPACE) && Text(node->name) == name;
}

const xmlNode* Child(const xmlNode* parent, std::string_view name) {
    const xmlNode* child = parent != nullptr ? parent->children : nullptr;
    while (child != nullptr && !Is(child, name)) {
        child = child->next;
    }
    return child;
}

// Returns the text without the white space of the layout.
std::string Content(const xmlNode* node) {
    if (node == nullptr) {
        return {};
    }
    // The caller owns the text that libxml2 returns here.
    xmlChar* raw = xmlNodeGetContent(node);
    std::string text = Text(raw);
    xmlFree(raw);
    constexpr const char* BLANKS = " \t\r\n";
    text.erase(text.find_last_not_of(BLANKS) + 1);
    text.erase(0, text.find_first_not_of(BLANKS));
    return text;
}

std::string ChildContent(const xmlNode* parent, std::string_view name) {
    return Content(Child(parent, name));
}

uint8_t ReadVisibility(const xmlNode* descriptor) {
    const std::string visibility = ChildContent(descriptor, "visibility");
    if (visibility == "VISIBLE_ALL") {
        return VISIBLE_ALL;
    }
    return visibility == "NOT_VISIBLE_USERS" ? VISIBLE_APPLICATIONS : 0;
}

uint16_t ReadType(const xmlNode* descriptor) {
    const xmlNode* type = Child(descriptor, "type");
    const std::string dvb = ChildContent(type, "DvbApp");
    if (!dvb.empty()) {
        return dvb == "DVB-J" ? 1 : dvb == "DVB-HTML" ? 2 : 0;
    }
    const std::string other = ChildContent(type, "OtherApp");
    // The media type may be followed by parameters.
    return other.starts_with("application/vnd.hbbtv.xhtml+xml") ? 0x0010 : 0;
}

void ReadNames(const xmlNode* node, Application& application) {
    for (const xmlNode* child = node->children; child != nullptr; child = child->next) {
        if (Is(child, "appName")) {
            xmlChar* raw = xmlGetProp(child, reinterpret_cast<const xmlChar*>("Language"));
            application.names.push_back({Text(raw), Content(child)});
            xmlFree(raw);
        }
    }
}

std::string ReadLocation(const xmlNode* node) {
    const xmlNode* transport = Child(node, "applicationTransport");
    return ChildContent(transport, "URLBase") + ChildContent(node, "applicationLocation");
}

ReceiverConditions ReadConditions(const xmlNode* node, const xmlNode* descriptor) {
    ReceiverConditions conditions;
    if (const std::string bound = ChildContent(descriptor, "serviceBound"); !bound.empty()) {
        conditions.serviceBound = bound == "true" || bound == "1";
    }
    if (const xmlNode* version = Child(descriptor, "mhpVersion")) {
        const auto part = [version](const char* name) {
            // The schema of ETSI TS 102 809 encodes these fields in hexadecimal.
            return ParseNumber<uint8_t>(ChildContent(version, name), 16).value_or(0);
        };
        conditions.profiles.push_back(
            {ParseNumber<uint16_t>(ChildContent(version, "profile"), 16).value_or(0),
             part("versionMajor"), part("versionMinor"), part("versionMicro")});
    }
    if (const xmlNode* boundary = Child(node, "applicationBoundary")) {
        for (const xmlNode* part = boundary->children; part != nullptr; part = part->next) {
            if (Is(part, "BoundaryExtension")) {
                conditions.boundaries.push_back(Content(part));
            }
        }
    }
    // Only a transport over HTTP has a base address.
    if (Child(Child(node, "applicationTransport"), "URLBase") != nullptr) {
        conditions.transports.emplace_back("HTTP");
    }
    return conditions;
}

std::optional<Application> ReadApplication(const xmlNode* node) {
    const xmlNode* identifier = Child(node, "applicationIdentifier");
    // Unlike the profile and the priority, the two identifiers are decimal.
    const auto organisation = ParseNumber<uint32_t>(ChildContent(identifier, "orgId"), 10);
    const auto id = ParseNumber<uint16_t>(ChildContent(identifier, "appId"), 10);
    // An application without both identifiers cannot be addressed in a list.
    if (!organisation || !id) {
        return std::nullopt;
    }
    const xmlNode* descriptor = Child(node, "applicationDescriptor");
    Application application;
    application.organisation = *organisation;
    application.id = *id;
    application.controlCode = ControlCodeOf(ChildContent(descriptor, "controlCode"));
    application.visibility = ReadVisibility(descriptor);
    application.priority =
        ParseNumber<uint8_t>(ChildContent(descriptor, "priority"), 16).value_or(0);
    ReadNames(node, application);
    application.location = ReadLocation(node);
    application.conditions = ReadConditions(node, descriptor);
    return application;
}

/// Applications grouped by type, as in binary tables.
using Tables = std::map<uint16_t, ApplicationTable>;

void ReadElement(const xmlNode* node, Tables& tables, Damage& damage) {
    if (auto application = ReadApplication(node)) {
        const uint16_t type = ReadType(Child(node, "applicationDescriptor"));
        // The first use of a type creates its table, which does not know its type yet.
        tables[type].type = type;
        tables[type].applications.push_back(std::move(*application));
    } else {
        ++damage.malformedSections;
    }
}

const xmlNode* NextInDocument(const xmlNode* node) {
    if (node->children != nullptr && node->type == XML_ELEMENT_NODE) {
        return node->children;
    }
    while (node != nullptr && node->next == nullptr) {
        node = node->parent;
    }
    return node != nullptr ? node->next : nullptr;
}

}  // namespace

Result<Broadcast> ReadApplicationXml(ByteSpan bytes) {
    const auto document = Parse(bytes);
    if (!document) {
        return Result<Broadcast>::Failure(document.error());
    }
    Broadcast broadcast;
    Tables tables;
    for (const xmlNode* node = xmlDocGetRootElement(document->get()); node != nullptr;
         node = NextInDocument(node)) {
        if (Is(node, "Application")) {
            ReadElement(node, tables, broadcast.damage);
        }
    }
    // XML does not name a service, so all tables belong to one service without an id.
    BroadcastService service;
    for (auto& [type, table] : tables) {
        service.tables.push_back(std::make_shared<const ApplicationTable>(std::move(table)));
    }
    Snapshot& snapshot = broadcast.snapshots.emplace_back();
    if (!service.tables.empty()) {
        snapshot.services.push_back(std::move(service));
    }
    return broadcast;
}

namespace {

class ApplicationXml : public BroadcastParser {
public:
    ApplicationXml(SnapshotHandler handler, Damage& damage)
        : m_handler(std::move(handler)), m_damage(damage) {}

    size_t Parse(ByteSpan bytes, bool last) override {
        // A document without an end would otherwise fill the memory.
        if (!last && bytes.size() <= MAX_XML_SIZE) {
            return 0;
        }
        if (m_error.empty()) {
            auto broadcast = ReadApplicationXml(bytes);
            m_error = broadcast.error();
            if (broadcast) {
                m_damage.malformedSections += broadcast->damage.malformedSections;
                m_handler(std::move(broadcast->snapshots.front()), false);
            }
        }
        return bytes.size();
    }

    std::string error() const override { return m_error; }

private:
    SnapshotHandler m_handler;
    Damage& m_damage;
    std::string m_error;
};

}  // namespace

std::unique_ptr<BroadcastParser> MakeXmlParser(SnapshotHandler handler, Damage& damage) {
    return std::make_unique<ApplicationXml>(std::move(handler), damage);
}

}  // namespace applist::sim
