#include "ProgressLine.h"

#include <sys/ioctl.h>
#include <unistd.h>

#include <algorithm>
#include <cstdio>

#include "Utils/U_App/Application.h"

namespace KM::Tool {
namespace {

constexpr int BarCells = 30;
int shown = 0;  ///< columns that the line takes at the moment

int Columns() {
    winsize size{};
    const bool isKnown = ioctl(STDERR_FILENO, TIOCGWINSZ, &size) == 0 && size.ws_col > 0;
    return isKnown ? size.ws_col : 80;
}

/// The tasks, without the first one, which is the action itself.
std::string TasksOf(const std::string& text) {
    const std::string action = Application::Name() + '.';
    return text.starts_with(action) ? text.substr(action.size()) : std::string();
}

}  // namespace

std::string ProgressLine::Drawn(double global, const std::string& tasks, int columns) {
    const double share = std::clamp(global, 0.0, 1.0);
    const auto cells = static_cast<std::size_t>(share * BarCells);
    char percent[16];
    std::snprintf(percent, sizeof percent, "] %3d %%", static_cast<int>(share * 100.0));
    std::string line = '[' + std::string(cells, '#') + std::string(BarCells - cells, '.') + percent;
    if (!tasks.empty()) line += "  " + tasks;
    // The last column stays free: some terminals go to the next line when it is written.
    return line.substr(0, static_cast<std::size_t>(std::max(columns - 1, 0)));
}

void ProgressLine::operator()(double global, double local, const std::string& text) const {
    Application::StatusPolicy::operator()(global, local, text);
    const std::string line = Drawn(global, TasksOf(text), Columns());
    const int blanks = std::max(shown - static_cast<int>(line.size()), 0);
    std::fprintf(stderr, "\r%s%*s", line.c_str(), blanks, "");
    std::fflush(stderr);
    shown = static_cast<int>(line.size());
}

void ProgressLine::Install() {
    // Never destroyed: the last tasks end after `main`.
    static const ProgressLine& line = *new ProgressLine;
    if (isatty(STDERR_FILENO) != 0) Application::Services::Status(line);
}

void ProgressLine::Clear() {
    if (shown == 0) return;
    std::fprintf(stderr, "\r%*s\r", shown, "");
    std::fflush(stderr);
    shown = 0;
}

}  // namespace KM::Tool
