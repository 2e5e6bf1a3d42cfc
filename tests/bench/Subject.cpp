// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include "bench/Subject.h"

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>

#include "LittleEndian.h"
#include "bench/references/row-name.h"

namespace applist::bench {
namespace {

namespace fs = std::filesystem;
using test::BuiltProgram;
using test::ChildProcess;

bool Installed(const std::string& program) {
    return ChildProcess({"sh", "-c", "command -v " + program}).WaitForExit() == 0;
}

// Sums a field of the given file over all threads of a process.
template <typename Read>
long long SumOverThreads(pid_t process, const char* file, Read read) {
    long long sum = 0;
    std::error_code gone;
    for (const auto& thread :
         fs::directory_iterator("/proc/" + std::to_string(process) + "/task", gone)) {
        std::ifstream in(thread.path() / file);
        sum += read(in);
    }
    return sum;
}

long long Field(std::istream& in, const std::string& name) {
    std::string word;
    long long value = 0;
    while (in >> word) {
        if (word == name) {
            in >> value;
            return value;
        }
    }
    return 0;
}

std::string NameOf(int row) {
    char name[32];
    write_row_name(name, row);
    return name;
}

std::string IdOf(int row) {
    return "0000000b." + std::to_string(row);
}

void Append(std::vector<char>& bytes, size_t number) {
    const auto wire = ToLittleEndian(static_cast<std::uint32_t>(number));
    bytes.insert(bytes.end(), wire.begin(), wire.end());
}

}  // namespace

std::vector<char> Frame(std::vector<char> payload, int function) {
    Append(payload, static_cast<size_t>(function));
    return payload;
}

void GiveUpUnless(bool condition, const char* error) {
    if (!condition) {
        std::fprintf(stderr, "bench: %s\n", error);
        std::exit(1);
    }
}

std::vector<Subject> Subjects() {
    std::vector<Subject> subjects{
        {"applist", "exec " + BuiltProgram("applist"), true},
        {.name = "applist, prepared",
         .command = "exec " + BuiltProgram("applist-launch"),
         .needsMiddleware = true,
         .prepare = {BuiltProgram("applist"), "--prepare"}},
        {"bare popup", "exec " + BuiltProgram("../bench/bare-popup") + " $ROWS", false, false},
    };
    const auto add = [&subjects](const std::string& program, Subject subject) {
        if (Installed(program)) {
            subjects.push_back(std::move(subject));
        }
    };
    add(BuiltProgram("../bench/gtk-list"),
        {"GTK 4 list", "exec " + BuiltProgram("../bench/gtk-list") + " $ROWS"});
    add("rofi", {"rofi", "exec rofi -no-config -dmenu -i <$ITEMS"});
    add("zenity", {"zenity", "exec zenity --list --width=800 --height=1000 --column=name <$ITEMS"});
    return subjects;
}

Stage::Stage() {
    const std::vector<std::vector<std::string>> settings{
        {"region", "italy"},
        {"set", "memory/tv-viewer/data_service", "int", "2"},
        {"set", "db/menu/broadcasting/autorun-dataservice", "bool", "0"},
        {"set", "memory/javamw/autostart-app", "int", "0"}};
    for (const auto& arguments : settings) {
        Configure(arguments);
    }
}

void Stage::Configure(std::vector<std::string> arguments) const {
    arguments.insert(arguments.begin(), BuiltProgram("platformctl"));
    GiveUpUnless(ChildProcess(arguments, Environment()).WaitForExit() == 0, "platformctl failed");
}

ChildProcess::Environment Stage::Environment() const {
    ChildProcess::Environment environment = m_screen.Environment();
    environment.merge(m_bus.Environment());
    for (const char* name : {"HOME", "TMPDIR", "XDG_RUNTIME_DIR", "APPLIST_PLATFORM_ROOT"}) {
        environment[name] = m_folder.path();
    }
    environment["XDG_CONFIG_HOME"] = std::nullopt;
    environment["DBUS_SESSION_BUS_ADDRESS"] = std::nullopt;
    environment["LC_ALL"] = "C.UTF-8";
    // Services that are missing here; without these settings the other programs would wait for
    // them.
    environment["GTK_A11Y"] = "none";
    environment["NO_AT_BRIDGE"] = "1";
    environment["GSETTINGS_BACKEND"] = "memory";
    // Without a graphics card GTK would draw with OpenGL in software, which takes three times as
    // long.
    environment["GSK_RENDERER"] = "cairo";
    environment["ROWS"] = std::to_string(m_rows);
    environment["ITEMS"] = m_items;
    return environment;
}

std::string Stage::WriteItems(const Subject& subject, int rows) const {
    std::string path = m_folder.path() / "items";
    std::ofstream out(path);
    for (int row = 0; row < rows; ++row) {
        out << (subject.needsMiddleware ? IdOf(row) + '\t' : "") << NameOf(row) << '\n';
    }
    return path;
}

std::vector<char> Stage::ItemsOnTheWire() const {
    std::vector<char> bytes;
    for (int row = 0; row < m_rows; ++row) {
        for (const std::string& text : {NameOf(row), IdOf(row)}) {
            Append(bytes, text.size());
            bytes.insert(bytes.end(), text.begin(), text.end());
        }
    }
    return bytes;
}

void Stage::Prepare(const Subject& subject, int rows) {
    m_rows = rows;
    m_items = WriteItems(subject, rows);
    m_middleware.reset();
    m_heard = 0;
    if (subject.needsMiddleware) {
        m_middleware = std::make_unique<ChildProcess>(
            std::vector<std::string>{BuiltProgram("javamw-sim"), "serve", "--items", m_items},
            Environment());
    }
}

void Stage::MakeReady(const Subject& subject) {
    m_prepared.reset();
    m_usedBefore = 0;
    if (!subject.prepare.empty()) {
        auto environment = Environment();
        environment["APPLIST_LOG"] = "info";
        m_prepared = std::make_unique<ChildProcess>(subject.prepare, environment);
        GiveUpUnless(m_prepared->WaitForText("is prepared"), "the process is not prepared");
        // It still handles the events of its own window.
        m_prepared->WaitForExit(std::chrono::milliseconds(300));
        m_usedBefore = ProcessorNanoseconds(m_prepared->pid());
    }
}

long long Stage::Used(const ChildProcess& started) const {
    const long long launcher = m_prepared ? ProcessorNanoseconds(m_prepared->pid()) : 0;
    return ProcessorNanoseconds(started.pid()) + launcher - m_usedBefore;
}

std::unique_ptr<ChildProcess> Stage::Start(const Subject& subject) const {
    return std::make_unique<ChildProcess>(std::vector<std::string>{"sh", "-c", subject.command},
                                          Environment());
}

void Stage::AwaitFilled(const Subject& subject) {
    if (subject.needsMiddleware) {
        GiveUpUnless(m_middleware->WaitUntil([this] {
            return m_middleware->Output().find("filled", m_heard) != std::string::npos;
        }),
                     "the middleware did not fill the list");
    }
    m_heard = m_middleware ? m_middleware->Output().size() : 0;
}

long ResidentKilobytes(pid_t process) {
    std::ifstream in("/proc/" + std::to_string(process) + "/status");
    return static_cast<long>(Field(in, "VmRSS:"));
}

long long ProcessorNanoseconds(pid_t process) {
    return SumOverThreads(process, "schedstat", [](std::istream& in) {
        long long nanoseconds = 0;
        in >> nanoseconds;
        return nanoseconds;
    });
}

}  // namespace applist::bench
