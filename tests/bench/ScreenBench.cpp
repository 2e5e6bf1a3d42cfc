// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
//
// screen-bench [REPETITIONS [IDLE_SECONDS [SUBJECT [MEASURE]]]]: measures delays that a viewer
// notices, for applist and the programs it is compared with. SUBJECT limits it to one program,
// MEASURE to one of start, wait, fill, keys, speech, rest and end. Prints a JSON object on each
// line: measure, subject, rows, unit, samples.
#include <cstdio>
#include <cstdlib>
#include <functional>
#include <string>
#include <unistd.h>

#include "bench/ScreenWatch.h"
#include "bench/Subject.h"
#include "support/ScriptedPeer.h"
#include "support/SpeechService.h"

namespace applist::bench {
namespace {

using namespace std::chrono_literals;
using test::ChildProcess;

constexpr auto PATIENCE = 10s;
constexpr auto SETTLED = 500ms;  // longer than any frame or animation of a list that opens
constexpr auto BETWEEN_KEYS = 120ms;
constexpr double ROWS_SHOWN = 0.9;  // of the edges of the settled picture

double Milliseconds(Clock::duration duration) {
    return std::chrono::duration<double, std::milli>(duration).count();
}

/// Samples of one measure of one subject.
class Series {
public:
    Series(std::string measure, const Subject& subject, int rows, std::string unit)
        : m_measure(std::move(measure)),
          m_subject(subject.name),
          m_rows(rows),
          m_unit(std::move(unit)) {}

    void Add(double sample) { m_samples.push_back(sample); }
    ~Series() {
        std::printf(R"({"measure":"%s","subject":"%s","rows":%d,"unit":"%s","samples":[)",
                    m_measure.c_str(), m_subject.c_str(), m_rows, m_unit.c_str());
        const char* separator = "";
        for (const double sample : m_samples) {
            std::printf("%s%.4f", separator, sample);
            separator = ",";
        }
        std::puts("]}");
        std::fflush(stdout);
    }
    Series(const Series&) = delete;
    Series& operator=(const Series&) = delete;

private:
    std::string m_measure;
    std::string m_subject;
    int m_rows;
    std::string m_unit;
    std::vector<double> m_samples;
};

class ScreenBench {
public:
    ScreenBench(int repetitions, std::chrono::seconds idle)
        : m_repetitions(repetitions), m_idle(idle) {}

    void Run(const std::string& only, const std::string& measure) {
        for (const Subject& subject : Subjects()) {
            if (only.empty() || subject.name == only) {
                for (const Measure& each : MEASURES) {
                    if (measure.empty() || measure == each.name) {
                        MeasureAll(subject, each);
                    }
                }
            }
        }
    }

private:
    struct Measure {
        const char* name;
        void (ScreenBench::*run)(const Subject& subject, int rows);
        std::vector<int> rows;
        /// Which subjects it makes sense for: only applist has rows that arrive later and a key
        /// that ends it, and a list that was prepared differs from others until it is shown.
        enum { ALL, UNPREPARED, OURS, PREPARED } of = UNPREPARED;

        bool MakesSenseFor(const Subject& subject) const {
            const bool prepared = !subject.prepare.empty();
            return of == ALL ||
                   (prepared == (of == PREPARED) && (subject.needsMiddleware || of != OURS));
        }
    };
    static const std::vector<Measure> MEASURES;

    void MeasureAll(const Subject& subject, const Measure& measure) {
        if (measure.MakesSenseFor(subject)) {
            for (const int rows : measure.rows) {
                (this->*measure.run)(subject, rows);
            }
        }
    }

    /// Starts the subject and waits until its picture stops changing.
    std::unique_ptr<ChildProcess> Show(const Subject& subject, int rows) {
        m_stage.Prepare(subject, rows);
        m_stage.MakeReady(subject);
        m_watch.Forget();
        auto process = m_stage.Start(subject);
        m_watch.AwaitDamage(Clock::now() + PATIENCE);
        m_stage.AwaitFilled(subject);
        m_watch.AwaitQuiet(SETTLED);
        m_x = m_watch.BusiestStrip();
        m_settled = m_watch.Grab(m_x);
        return process;
    }

    void MeasureStart(const Subject& subject, int rows) {
        Show(subject, rows).reset();
        m_watch.AwaitQuiet(SETTLED);
        Series shown("start: rows shown", subject, rows, "ms");
        Series settled("start: settled", subject, rows, "ms");
        Series cost("start: processor time", subject, rows, "ms");
        for (int i = 0; i < m_repetitions; ++i) {
            m_stage.MakeReady(subject);
            m_watch.Forget();
            const auto start = Clock::now();
            const auto process = m_stage.Start(subject);
            const auto rowsShown = m_watch.AwaitStrip(
                m_x, [this](const Strip& strip) { return ShowsRows(strip); }, PATIENCE);
            if (rowsShown) {
                shown.Add(Milliseconds(*rowsShown - start));
                settled.Add(Milliseconds(LastChange(*rowsShown, SETTLED) - start));
                cost.Add(static_cast<double>(m_stage.Used(*process)) / 1e6);
            }
        }
        m_watch.AwaitQuiet(SETTLED);
    }

    bool ShowsRows(const Strip& strip) const {
        return CountEdges(strip) >= ROWS_SHOWN * CountEdges(m_settled);
    }

    /// The time of the strip's last change before the screen became quiet for this time.
    Clock::time_point LastChange(Clock::time_point changed, std::chrono::milliseconds quiet) {
        Strip last = m_watch.Grab(m_x);
        while (const auto drawn = m_watch.AwaitDamage(Clock::now() + quiet)) {
            Strip now = m_watch.Grab(m_x);
            if (now != last) {
                changed = *drawn;
                last = std::move(now);
            }
        }
        return changed;
    }

    void MeasureKeys(const Subject& subject, int rows) {
        if (!subject.showsKeys) {
            return;
        }
        const auto process = Show(subject, rows);
        Series latency("key: first changed pixel", subject, rows, "ms");
        Series settled("key: last changed pixel", subject, rows, "ms");
        Series cost("key: processor time", subject, rows, "ms");
        const int keys = m_repetitions * 5;
        for (int i = 0; i < keys; ++i) {
            const long long before = ProcessorNanoseconds(process->pid());
            const Strip strip = m_watch.Grab(m_x);
            m_watch.Forget();
            const auto start = Clock::now();
            m_stage.screen().PressKey("Down");
            const auto changed = m_watch.AwaitStrip(
                m_x, [&strip](const Strip& now) { return now != strip; }, PATIENCE);
            m_stage.screen().ReleaseKey("Down");
            if (changed) {
                latency.Add(Milliseconds(*changed - start));
                settled.Add(Milliseconds(LastChange(*changed, BETWEEN_KEYS) - start));
            }
            cost.Add(static_cast<double>(ProcessorNanoseconds(process->pid()) - before) / 1e6);
        }
    }

    /// Measures from a key until the speech service has received the text of the new row.
    void MeasureSpeech(const Subject& subject, int rows) {
        const test::TemporaryDir folder;
        test::SpeechService service(folder.path() / "speech");
        const auto awaitRow = [&](int row) {
            const std::string end = ", " + std::to_string(row) + " of " + std::to_string(rows);
            const auto told = [&] {
                const auto all = service.Utterances();
                return !all.empty() && all.back().ends_with(end);
            };
            GiveUpUnless(service.WaitUntil(told, PATIENCE), "the list does not speak a row");
        };
        setenv("SPEECHD_ADDRESS", service.Address().c_str(), 1);
        m_stage.Configure({"set", "db/menu/accessibility/speech", "bool", "true"});
        const auto process = Show(subject, rows);
        Series told("key: text at the speech service", subject, rows, "ms");
        for (int row = 2; row <= m_repetitions + 1; ++row) {
            const auto start = Clock::now();
            m_stage.screen().PressKey("Down");
            awaitRow(row);
            told.Add(Milliseconds(Clock::now() - start));
            m_stage.screen().ReleaseKey("Down");
            m_watch.AwaitQuiet(BETWEEN_KEYS);
        }
        m_stage.Configure({"set", "db/menu/accessibility/speech", "bool", "false"});
    }

    void MeasureRest(const Subject& subject, int rows) {
        const auto process = Show(subject, rows);
        // Toolkits free a frame's memory some time after the frame.
        m_watch.AwaitQuiet(SETTLED);
        MeasureIdle(subject, rows, *process);
    }

    /// Measures a prepared process that waits for a launch.
    void MeasureWait(const Subject& subject, int rows) {
        m_stage.MakeReady(subject);
        m_watch.AwaitQuiet(SETTLED);
        MeasureIdle(subject, rows, m_stage.prepared());
    }

    void MeasureIdle(const Subject& subject, int rows, const test::ChildProcess& process) {
        const long sleeps = process.Sleeps();
        const long long used = ProcessorNanoseconds(process.pid());
        // Measures an idle period of fixed length, without an event to wait for.
        ::sleep(static_cast<unsigned>(m_idle.count()));
        Series wakes("idle: wake-ups", subject, rows, "times");
        wakes.Add(static_cast<double>(process.Sleeps() - sleeps));
        Series cost("idle: processor time", subject, rows, "ms");
        cost.Add(static_cast<double>(ProcessorNanoseconds(process.pid()) - used) / 1e6);
        Series memory("memory: resident", subject, rows, "MB");
        memory.Add(static_cast<double>(ResidentKilobytes(process.pid())) / 1024);
    }

    /// Measures from the reply to the call that filled an empty list until its rows are on the
    /// screen.
    void MeasureFill(const Subject& subject, int rows) {
        Show(subject, rows).reset();
        Series shown("fill: reply to rows shown", subject, rows, "ms");
        const auto call = Frame(m_stage.ItemsOnTheWire(), ADD_ITEMS);
        m_stage.DismissMiddleware();
        test::ScriptedPeer partner(m_stage.bus().Address());
        for (int i = 0; i < m_repetitions; ++i) {
            const auto process = m_stage.Start(subject);
            GiveUpUnless(partner.AwaitAnnouncement("_SERVICE_SYN"),
                         "the list does not announce itself");
            const std::string list = partner.Announcer();
            partner.Announce("_CLIENT_SYN");
            partner.Announce("_CLIENT_ACK");
            m_watch.AwaitDamage(Clock::now() + PATIENCE);
            m_watch.AwaitQuiet(SETTLED);
            partner.Ask(list, call);
            const auto replied = Clock::now();
            const auto rowsShown = m_watch.AwaitStrip(
                m_x, [this](const Strip& strip) { return ShowsRows(strip); }, PATIENCE);
            if (rowsShown) {
                shown.Add(Milliseconds(*rowsShown - replied));
            }
        }
    }

    void MeasureEnd(const Subject& subject, int rows) {
        Series gone("end: window gone", subject, rows, "ms");
        Series ended("end: process gone", subject, rows, "ms");
        for (int i = 0; i < m_repetitions; ++i) {
            const auto process = Show(subject, rows);
            m_watch.Forget();
            const auto start = Clock::now();
            m_stage.screen().TypeKey("Return");
            if (const auto unmapped = m_watch.AwaitUnmap(PATIENCE)) {
                gone.Add(Milliseconds(*unmapped - start));
            }
            process->WaitForExit();
            ended.Add(Milliseconds(Clock::now() - start));
        }
    }

    int m_repetitions;
    std::chrono::seconds m_idle;
    Stage m_stage;
    ScreenWatch m_watch{m_stage.screen().Name()};
    int m_x = 0;
    Strip m_settled;
};

const std::vector<ScreenBench::Measure> ScreenBench::MEASURES = {
    {"start", &ScreenBench::MeasureStart, {10, 100, 1000}, Measure::ALL},
    {"wait", &ScreenBench::MeasureWait, {0}, Measure::PREPARED},
    {"fill", &ScreenBench::MeasureFill, {10, 100}, Measure::OURS},
    {"keys", &ScreenBench::MeasureKeys, {10, 100, 10'000}},
    {"speech", &ScreenBench::MeasureSpeech, {1000}, Measure::OURS},
    {"rest", &ScreenBench::MeasureRest, {10, 10'000}},
    {"end", &ScreenBench::MeasureEnd, {10}, Measure::OURS},
};

}  // namespace
}  // namespace applist::bench

int main(int argc, char** argv) {
    const int repetitions = argc > 1 ? std::atoi(argv[1]) : 20;
    const int idle = argc > 2 ? std::atoi(argv[2]) : 10;
    if (repetitions < 1 || idle < 0) {
        std::fputs("Usage: screen-bench [REPETITIONS [IDLE_SECONDS [SUBJECT [MEASURE]]]]\n",
                   stderr);
        return 2;
    }
    applist::bench::ScreenBench(repetitions, std::chrono::seconds(idle))
        .Run(argc > 3 ? argv[3] : "", argc > 4 ? argv[4] : "");
    return 0;
}
