#pragma once

#include <benchmark/benchmark.h>

#include <chrono>
#include <cstddef>
#include <functional>
#include <map>
#include <string>

#include "Support/Allocations.h"

namespace KM::Bench {

/// What one line of the table is about.
struct Work {
    std::string name;
    double triangles = 0.0;  ///< of the input; times and memory are told per triangle
    double bytes = 0.0;      ///< read or written, for MB/s; 0 leaves that column empty
    std::string floor{};     ///< the name of an earlier line: the obvious hand-written loop for the bare job
};

/// Prints the table of a benchmark program: for each piece of work its time (the median of some rounds), the time per
/// triangle, the speed, the peak of memory above what was allocated before, and the ratio of its time to that of its
/// floor. Absolute times drift with the machine; the ratios, taken in one run, do not.
class Report {
public:
    explicit Report(std::string title, int rounds = 5);

    /// Times `run()`. What it returns counts as memory, and is destroyed after the clock has stopped.
    template <class Run>
    void Measure(const Work& work, Run run) {
        Measure(
            work, [] { return 0; }, [&](int&) { return run(); });
    }

    /// As above, with an input that is made anew for each round, outside the clock: times `run(input)`.
    template <class Prepare, class Run>
    void Measure(const Work& work, Prepare prepare, Run run) {
        std::size_t peak = 0;
        const double seconds = MedianSeconds(work.name, [&](benchmark::State& state) {
            for ([[maybe_unused]] auto _ : state) {
                auto input = prepare();
                const std::size_t before = LiveBytes();
                ForgetPeak();
                const auto start = std::chrono::steady_clock::now();
                [[maybe_unused]] auto result = run(input);
                state.SetIterationTime(std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count());
                benchmark::DoNotOptimize(result);
                peak = PeakBytes() - before;
            }
        });
        Print(work, seconds, peak);
    }

    /// The median time of an earlier line.
    double Seconds(const std::string& name) const { return seconds_.at(name); }

    /// A line of text below the last line of the table: a quality that goes with its time.
    void Remark(const std::string& text) const;

private:
    /// Runs one benchmark, once a round, and gives the median of the times that it set.
    double MedianSeconds(const std::string& name, const std::function<void(benchmark::State&)>& body) const;
    void Print(const Work& work, double seconds, std::size_t peak);

    int rounds_;
    std::map<std::string, double> seconds_;  // by name of work
};

}  // namespace KM::Bench
