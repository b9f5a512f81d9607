#include "Support/Report.h"

#include <algorithm>
#include <cstdio>
#include <vector>

namespace KM::Bench {
namespace {

void PrintNumber(const char* format, bool isKnown, double value) {
    char text[32] = "";
    if (isKnown) std::snprintf(text, sizeof text, format, value);
    std::printf(" %12s", text);
}

/// Keeps the time of each repetition, and prints nothing: the table is ours.
class TimeCollector : public benchmark::BenchmarkReporter {
public:
    bool ReportContext(const Context&) override { return true; }
    void ReportRuns(const std::vector<Run>& runs) override {
        for (const Run& run : runs)
            if (run.run_type == Run::RT_Iteration) seconds_.push_back(run.real_accumulated_time);
    }

    double Median() {
        const auto middle = seconds_.begin() + static_cast<std::ptrdiff_t>(seconds_.size() / 2);
        std::nth_element(seconds_.begin(), middle, seconds_.end());
        return *middle;
    }

private:
    std::vector<double> seconds_;
};

}  // namespace

Report::Report(std::string title, int rounds) : rounds_(rounds) {
    std::printf("\n%-48s %12s %12s %12s %12s %12s\n", title.c_str(), "ms", "ns/triangle", "MB/s", "peak B/tri",
                "x floor");
}

double Report::MedianSeconds(const std::string& name, const std::function<void(benchmark::State&)>& body) const {
    benchmark::RegisterBenchmark(name.c_str(), body)->UseManualTime()->Iterations(1)->Repetitions(rounds_);
    TimeCollector times;
    benchmark::RunSpecifiedBenchmarks(&times, ".");
    benchmark::ClearRegisteredBenchmarks();
    return times.Median();
}

void Report::Print(const Work& work, double median, std::size_t peak) {
    seconds_[work.name] = median;

    const auto floor = seconds_.find(work.floor);
    std::printf("%-48s", work.name.c_str());
    PrintNumber("%.2f", true, median * 1e3);
    PrintNumber("%.1f", work.triangles > 0.0, median * 1e9 / work.triangles);
    PrintNumber("%.0f", work.bytes > 0.0, work.bytes / median / 1e6);
    PrintNumber("%.1f", work.triangles > 0.0, static_cast<double>(peak) / work.triangles);
    PrintNumber("%.2f", floor != seconds_.end(), floor != seconds_.end() ? median / floor->second : 0.0);
    std::printf("\n");
    std::fflush(stdout);
}

void Report::Remark(const std::string& text) const { std::printf("    %s\n", text.c_str()); }

}  // namespace KM::Bench
