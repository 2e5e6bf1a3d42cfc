// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include "shell/Busctl.h"

#include <algorithm>
#include <glib.h>
#include <variant>

#include "link/ChannelNames.h"
#include "link/Protocol.h"

namespace applist::sim {
namespace {

using Lines = Result<std::vector<std::string>>;

// Longer command lines exceed the limit of the kernel.
constexpr size_t LONGEST_MESSAGE = 20000;
// Further copies of a message are omitted.
constexpr unsigned MOST_COPIES = 10;

std::string Quoted(const std::string& text) {
    char* quoted = g_shell_quote(text.c_str());
    std::string result = quoted;
    g_free(quoted);
    return result;
}

// An array of bytes for busctl: the count, then each byte.
std::string ByteArray(const Bytes& bytes) {
    std::string text = "ay " + std::to_string(bytes.size());
    for (const char byte : bytes) {
        text += ' ' + std::to_string(static_cast<uint8_t>(byte));
    }
    return text;
}

/// Returns the busctl lines for each kind of action.
class Translation {
public:
    explicit Translation(const BusctlTarget& target) : m_target(target) {}

    Lines operator()(const Send& action) const {
        if (m_target.application.empty()) {
            return Lines::Failure(
                "no application has announced itself; \"wait connected\" waits for one");
        }
        std::vector<std::string> lines;
        for (unsigned copy = 1; copy <= std::min(action.copies, MOST_COPIES); ++copy) {
            const Bytes bytes = BytesOf(action.frame, copy);
            if (bytes.size() > LONGEST_MESSAGE) {
                return Lines::Failure(std::to_string(bytes.size()) +
                                      " bytes are too many for a command line");
            }
            lines.push_back(action.asSignal ? SignalLine(bytes) : CallLine(bytes));
        }
        if (action.copies > MOST_COPIES) {
            lines.push_back("# and " + std::to_string(action.copies - MOST_COPIES) +
                            " more like these");
        }
        return lines;
    }
    // The bus releases the name when busctl exits after the call, which is the announcement.
    Lines operator()(const Announce& action) const {
        return Line(
            " call org.freedesktop.DBus /org/freedesktop/DBus org.freedesktop.DBus "
            "RequestName su " +
            names::NameOf(names::CLIENT, action.announcement) + " 4");
    }
    Lines operator()(const ExpectList&) const { return Read(Function::GetAllItems); }
    Lines operator()(const ExpectCount&) const { return Read(Function::GetAllItems); }
    Lines operator()(const ExpectSelection&) const { return Read(Function::GetSelection); }
    Lines operator()(const ExpectEvent&) const { return Monitor(); }
    Lines operator()(const ExpectNoEvent&) const { return Monitor(); }
    Lines operator()(const ExpectAnnouncement&) const {
        return Line(" monitor --match=" +
                    Quoted("type='signal',sender='org.freedesktop.DBus',"
                           "member='NameOwnerChanged',arg0namespace='org.vantu.JavaMW'"));
    }
    template <typename Other>
    Lines operator()(const Other&) const {
        return Lines::Failure("busctl cannot do this");
    }

private:
    std::string Busctl() const {
        return m_target.address.empty() ? "busctl --system"
                                        : "busctl --address=" + Quoted(m_target.address);
    }
    Lines Line(const std::string& rest) const { return std::vector<std::string>{Busctl() + rest}; }
    Lines Read(Function function) const {
        return (*this)(Send{.frame = RegularFrame{function, {}},
                            .asSignal = false,
                            .copies = 1,
                            .awaitReply = true});
    }
    Lines Monitor() const {
        return Line(" monitor --match=" +
                    Quoted(std::string("type='signal',interface='") + names::INTERFACE + "'"));
    }
    std::string CallLine(const Bytes& bytes) const {
        return Busctl() + " call " + m_target.application + ' ' + names::OBJECT_PATH + ' ' +
               names::INTERFACE + ' ' + names::METHOD + ' ' + ByteArray(bytes);
    }
    std::string SignalLine(const Bytes& bytes) const {
        return Busctl() + " --destination=" + m_target.application + " emit " + names::OBJECT_PATH +
               ' ' + names::INTERFACE + ' ' + names::SIGNAL + ' ' + ByteArray(bytes);
    }

    const BusctlTarget& m_target;
};

}  // namespace

Lines BusctlLines(const Action& action, const BusctlTarget& target) {
    return std::visit(Translation(target), action);
}

}  // namespace applist::sim
