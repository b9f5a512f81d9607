#include "ProgressLine.h"

#include <sys/ioctl.h>
#include <unistd.h>

#include <algorithm>
#include <cstdio>

#include "Utils/U_App/Application.h"

namespace KM::Tool {
namespace {

constexpr int BarCells = 30;
bool isShown = false;

/// The last column stays free: some terminals go to the next line when it is written.
int Columns() {
    winsize size{};
    const bool isKnown = ioctl(STDERR_FILENO, TIOCGWINSZ, &size) == 0 && size.ws_col > 0;
    return (isKnown ? size.ws_col : 80) - 1;
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
    // Over the whole width, since keys that are typed meanwhile are shown behind the line.
    line.resize(static_cast<std::size_t>(columns), ' ');
    return line;
}

void ProgressLine::operator()(double global, double local, const std::string& text) const {
    Application::StatusPolicy::operator()(global, local, text);
    std::fprintf(stderr, "\r%s\r", Drawn(global, TasksOf(text), Columns()).c_str());
    std::fflush(stderr);
    isShown = true;
}

void ProgressLine::Install() {
    // Never destroyed: the last tasks end after `main`.
    static const ProgressLine& line = *new ProgressLine;
    if (isatty(STDERR_FILENO) != 0) Application::Services::Status(line);
}

void ProgressLine::Clear() {
    if (!isShown) return;
    std::fprintf(stderr, "\r%*s\r", Columns(), "");
    std::fflush(stderr);
    isShown = false;
}

}  // namespace KM::Tool
