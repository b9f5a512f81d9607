#include "Support/Report.h"

#include <algorithm>
#include <cstdio>
#include <utility>

namespace KM::Bench {
namespace {

void PrintNumber(const char* format, bool isKnown, double value) {
    char text[32] = "";
    if (isKnown) std::snprintf(text, sizeof text, format, value);
    std::printf(" %12s", text);
}

}  // namespace

Report::Report(std::string title, int rounds) : rounds_(rounds) {
    std::printf("\n%-48s %12s %12s %12s %12s %12s\n", title.c_str(), "ms", "ns/triangle", "MB/s", "peak B/tri",
                "x floor");
}

void Report::Print(const Work& work, std::vector<double> seconds, std::size_t peak) {
    std::nth_element(seconds.begin(), seconds.begin() + rounds_ / 2, seconds.end());
    const double median = seconds[static_cast<std::size_t>(rounds_ / 2)];
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
