// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <vector>

namespace applist::test {

/// An application as the XML encoding describes it. Each field is written into the document as it
/// is.
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

/// Returns a whole document in the layout of TS 102 809.
std::string AitXml(const std::vector<XmlApplication>& applications);

}  // namespace applist::test
