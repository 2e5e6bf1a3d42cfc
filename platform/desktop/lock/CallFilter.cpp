// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include "lock/CallFilter.h"

#include <bit>
#include <cerrno>
#include <cstddef>
#include <fcntl.h>
#include <link.h>
#include <sched.h>
#include <unistd.h>

#include <linux/audit.h>
#include <linux/seccomp.h>
#include <sys/ioctl.h>
#include <sys/mman.h>
#include <sys/socket.h>
#include <sys/syscall.h>

// The program's own ELF header; the linker defines it.
extern "C" const ElfW(Ehdr) __ehdr_start;  // NOLINT(bugprone-reserved-identifier)

namespace applist::desktop {
namespace {

using Program = std::vector<sock_filter>;

constexpr uint32_t ALLOW = SECCOMP_RET_ALLOW;
constexpr uint32_t REFUSE = SECCOMP_RET_ERRNO | EPERM;
constexpr uint32_t NOT_IMPLEMENTED = SECCOMP_RET_ERRNO | ENOSYS;

constexpr uint32_t WHOLE = ~0U;
constexpr uint32_t WRITE_FLAGS = O_WRONLY | O_RDWR | O_CREAT | O_EXCL | O_TRUNC;
constexpr uint32_t NEW_FILE = O_RDWR | O_CREAT | O_EXCL;
// Without SOCK_CLOEXEC and SOCK_NONBLOCK.
constexpr uint32_t SOCKET_KIND = 0xF;

/// Which calls of one number are refused.
enum Refusal {
    ALWAYS,
    UNKNOWN,
    NEW_PROCESS,
    EXECUTABLE,
    SOCKET,
    CONNECT,
    OTHER_PROCESS,
    TERMINAL_INPUT,
    WRITING,
    REMOVING,
};

struct RefusedCall {
    long number;
    Refusal refusal;
};

// The build makes this table from refused-calls.txt, without the calls that the architecture lacks.
constexpr RefusedCall REFUSED_CALLS[] = {
#include "RefusedCalls.inc"
};

// A later call may do what the table refuses under another number. The newest one that the build
// knows has the same distance to the others on every architecture.
constexpr long NEWEST_CALL = SYS_set_mempolicy_home_node;

sock_filter Statement(uint16_t code, uint32_t value) {
    return BPF_STMT(code, value);
}

sock_filter Load(size_t offset) {
    return Statement(BPF_LD | BPF_W | BPF_ABS, static_cast<uint32_t>(offset));
}

sock_filter Return(uint32_t verdict) {
    return Statement(BPF_RET | BPF_K, verdict);
}

// Skips the given number of instructions if the condition holds, and others if it does not.
sock_filter Jump(uint16_t condition, uint32_t value, size_t ifTrue, size_t ifFalse) {
    return BPF_JUMP(static_cast<uint16_t>(BPF_JMP | condition | BPF_K), value,
                    static_cast<uint8_t>(ifTrue), static_cast<uint8_t>(ifFalse));
}

// Loads the part of an argument that the kernel uses for flags, numbers and processes.
sock_filter LoadArgument(size_t number) {
    const size_t lowHalf = std::endian::native == std::endian::big ? sizeof(uint32_t) : 0;
    return Load(offsetof(seccomp_data, args) + number * sizeof(uint64_t) + lowHalf);
}

void Append(Program& program, const Program& more) {
    program.insert(program.end(), more.begin(), more.end());
}

// Ends with the verdict if the bits of the argument have the value.
Program If(size_t argument, uint32_t bits, uint32_t value, uint32_t verdict) {
    return {LoadArgument(argument), Statement(BPF_ALU | BPF_AND | BPF_K, bits),
            Jump(BPF_JEQ, value, 0, 1), Return(verdict)};
}

// Ends with the verdict if the bits of the argument have another value.
Program Unless(size_t argument, uint32_t bits, uint32_t value, uint32_t verdict) {
    return {LoadArgument(argument), Statement(BPF_ALU | BPF_AND | BPF_K, bits),
            Jump(BPF_JEQ, value, 1, 0), Return(verdict)};
}

Program Only(const Program& test, uint32_t otherwise) {
    Program program = test;
    program.push_back(Return(otherwise));
    return program;
}

// Datagrams carry the log to the journal.
Program Sockets(bool connections) {
    Program program = Unless(0, WHOLE, AF_UNIX, REFUSE);
    if (!connections) {
        Append(program, Unless(1, SOCKET_KIND, SOCK_DGRAM, REFUSE));
    }
    return Only(program, ALLOW);
}

Program Opening(bool newFiles) {
    Program program = If(2, WRITE_FLAGS, 0, ALLOW);
    if (newFiles) {
        Append(program, If(2, WRITE_FLAGS, NEW_FILE, ALLOW));
    }
    return Only(program, REFUSE);
}

// Both requests make a terminal read text as if it was typed.
Program TerminalInput() {
    Program program = If(1, WHOLE, TIOCSTI, REFUSE);
    Append(program, If(1, WHOLE, TIOCLINUX, REFUSE));
    return Only(program, ALLOW);
}

// The instructions for one call; they always end with a verdict.
Program Verdict(Refusal refusal, const CallNeeds& needs) {
    switch (refusal) {
        case ALWAYS:
            return {Return(REFUSE)};
        case UNKNOWN:
            return {Return(NOT_IMPLEMENTED)};
        case NEW_PROCESS:
            return Only(If(0, CLONE_THREAD, 0, REFUSE), ALLOW);
        case EXECUTABLE:
            return Only(If(2, PROT_EXEC, 0, ALLOW), REFUSE);
        case SOCKET:
            return Sockets(needs.connections);
        case CONNECT:
            return {Return(needs.connections ? ALLOW : REFUSE)};
        case OTHER_PROCESS:
            return Only(If(0, WHOLE, static_cast<uint32_t>(getpid()), ALLOW), REFUSE);
        case TERMINAL_INPUT:
            return TerminalInput();
        case WRITING:
            return Opening(needs.newFiles);
        case REMOVING:
            return {Return(needs.newFiles ? ALLOW : REFUSE)};
    }
    return {Return(REFUSE)};
}

// A processor can offer the calls of a second architecture, with other numbers.
uint32_t OwnArchitecture() {
    const bool wide = __ehdr_start.e_ident[EI_CLASS] == ELFCLASS64;
    const bool little = __ehdr_start.e_ident[EI_DATA] == ELFDATA2LSB;
    return __ehdr_start.e_machine | (wide ? __AUDIT_ARCH_64BIT : 0U) |
           (little ? __AUDIT_ARCH_LE : 0U);
}

}  // namespace

std::vector<sock_filter> CallFilter(const CallNeeds& needs) {
    Program program{Load(offsetof(seccomp_data, arch)),
                    Jump(BPF_JEQ, OwnArchitecture(), 1, 0),
                    Return(REFUSE),
                    Load(offsetof(seccomp_data, nr)),
                    Jump(BPF_JGT, NEWEST_CALL, 0, 1),
                    Return(NOT_IMPLEMENTED)};
    for (const auto& [number, refusal] : REFUSED_CALLS) {
        const Program verdict = Verdict(refusal, needs);
        program.push_back(Jump(BPF_JEQ, static_cast<uint32_t>(number), 0, verdict.size()));
        Append(program, verdict);
    }
    program.push_back(Return(ALLOW));
    return program;
}

int RefuseCalls(const CallNeeds& needs) {
    Program program = CallFilter(needs);
    const sock_fprog filter{static_cast<unsigned short>(program.size()), program.data()};
    // Kernels before 5.16 otherwise slow the processor down for a program with a filter. That
    // protects from code in the same process, which the list does not load.
    constexpr unsigned int FLAGS = SECCOMP_FILTER_FLAG_TSYNC | SECCOMP_FILTER_FLAG_SPEC_ALLOW;
    const long result = syscall(SYS_seccomp, SECCOMP_SET_MODE_FILTER, FLAGS, &filter);
    // A positive result is the id of a thread that has another filter.
    return result == 0 ? 0 : (result > 0 ? ESRCH : errno);
}

}  // namespace applist::desktop
