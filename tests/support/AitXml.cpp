// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include "support/AitXml.h"

namespace applist::test {
namespace {

std::string Element(const std::string& name, const std::string& content) {
    return "<mhp:" + name + ">" + content + "</mhp:" + name + ">";
}

std::string Describe(const XmlApplication& application) {
    return Element("Application",
                   application.names + "\n" +
                       Element("applicationIdentifier", Element("orgId", application.organisation) +
                                                            Element("appId", application.id)) +
                       "\n" +
                       Element("applicationDescriptor",
                               "\n" + Element("type", application.type) +
                                   Element("controlCode", " " + application.control + "\n") +
                                   Element("visibility", application.visibility) +
                                   Element("serviceBound", "false") +
                                   Element("priority", application.priority) +
                                   Element("version", "01")) +
                       "\n<mhp:applicationTransport xsi:type=\"mhp:HTTPTransportType\">" +
                       Element("URLBase", application.base) + "</mhp:applicationTransport>\n" +
                       Element("applicationLocation", application.path)) +
           "\n";
}

}  // namespace

std::string XmlName(const std::string& language, const std::string& text) {
    return "<mhp:appName Language=\"" + language + "\">" + text + "</mhp:appName>";
}

std::string AitXml(const std::vector<XmlApplication>& applications) {
    std::string list = "\n";
    for (const XmlApplication& application : applications) {
        list += Describe(application);
    }
    return "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
           "<mhp:ServiceDiscovery xmlns:mhp=\"urn:dvb:mhp:2009\" "
           "xmlns:xsi=\"http://www.w3.org/2001/XMLSchema-instance\">\n"
           "<mhp:ApplicationDiscovery DomainName=\"a.example\">\n" +
           Element("ApplicationList", list) +
           "\n</mhp:ApplicationDiscovery>\n</mhp:ServiceDiscovery>\n";
}

}  // namespace applist::test
