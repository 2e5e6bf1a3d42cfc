// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include "lock/FileRules.h"

#include <algorithm>
#include <cerrno>
#include <cstdint>
#include <fcntl.h>
#include <unistd.h>

#include <linux/landlock.h>
#include <sys/syscall.h>

namespace applist::desktop {
namespace {

// The headers of an older kernel lack these names.
constexpr uint64_t ACCESS_TRUNCATE = 1U << 14;

constexpr uint64_t READ = LANDLOCK_ACCESS_FS_READ_FILE | LANDLOCK_ACCESS_FS_READ_DIR;
constexpr uint64_t WRITE = LANDLOCK_ACCESS_FS_WRITE_FILE | LANDLOCK_ACCESS_FS_READ_FILE |
                           LANDLOCK_ACCESS_FS_MAKE_REG | LANDLOCK_ACCESS_FS_REMOVE_FILE |
                           ACCESS_TRUNCATE;

// Owns a file descriptor; a negative number stands for none.
class Descriptor {
public:
    // long, because syscall() returns one.
    explicit Descriptor(long number) : m_number(static_cast<int>(number)) {}
    ~Descriptor() {
        if (m_number >= 0) {
            close(m_number);
        }
    }
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;
    Descriptor(Descriptor&&) = delete;
    Descriptor& operator=(Descriptor&&) = delete;

    operator int() const { return m_number; }

private:
    int m_number;
};

// All kinds of access to files that this version of Landlock restricts.
uint64_t AllAccess(long version) {
    // A rule set with a bit that the kernel does not know is rejected as a whole.
    constexpr int BITS[] = {13, 14, 15, 15, 16};
    const auto index = static_cast<size_t>(std::min<long>(version, std::size(BITS))) - 1;
    return (uint64_t{1} << BITS[index]) - 1;
}

void Allow(int rules, uint64_t access, const std::string& folder) {
    const Descriptor descriptor(open(folder.c_str(), O_PATH | O_CLOEXEC));
    // In a folder that does not exist nothing can be opened, so it does not need a rule.
    if (descriptor >= 0) {
        const landlock_path_beneath_attr rule{access, descriptor};
        syscall(SYS_landlock_add_rule, rules, LANDLOCK_RULE_PATH_BENEATH, &rule, 0);
    }
}

}  // namespace

int RestrictFiles(const Folders& folders) {
    const long version =
        syscall(SYS_landlock_create_ruleset, nullptr, 0, LANDLOCK_CREATE_RULESET_VERSION);
    if (version < 1) {
        return errno;
    }
    const uint64_t all = AllAccess(version);
    const landlock_ruleset_attr attributes{all};
    const Descriptor rules(syscall(SYS_landlock_create_ruleset, &attributes, sizeof attributes, 0));
    for (const std::string& folder : folders.readable) {
        Allow(rules, READ, folder);
    }
    // A rule may grant only rights that the rule set restricts.
    for (const std::string& folder : folders.writable) {
        Allow(rules, WRITE & all, folder);
    }
    return syscall(SYS_landlock_restrict_self, static_cast<int>(rules), 0) == 0 ? 0 : errno;
}

}  // namespace applist::desktop
