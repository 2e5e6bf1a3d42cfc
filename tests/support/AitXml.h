// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <vector>

namespace applist::test {

/// An application as the XML encoding describes it; every field is text as it is written.
struct XmlApplication {
    std::string organisation;
    std::string id;
    std::string names{};  ///< Elements; XmlName makes one.
    std::string type = "<mhp:OtherApp>application/vnd.hbbtv.xhtml+xml</mhp:OtherApp>";
    std::string control = "AUTOSTART";
    std::string visibility = "VISIBLE_ALL";
    std::string priority = "1";
    std::string base = "http://a.example/";
    std::string path = "index.html";
};

std::string XmlName(const std::string& language, const std::string& text);

/// A whole document as TS 102 809 lays it out.
std::string AitXml(const std::vector<XmlApplication>& applications);

}  // namespace applist::test
