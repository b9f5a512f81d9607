// The log: messages that the level drops, messages to a file, and the mark-up in them. An item is one message.
// Usage: LogBench [messages that pass; 100000 by default]

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>

#include "Km.h"
#include "Support/Report.h"

namespace KM::Bench {
namespace {

/// Swallows a line, so that its mark-up is all there is to do.
class DeafDevice : public DumpingDevice {
public:
    void Reset() override {}
    void ApplyBackground() override {}
};

const std::string Text = "Linking of 12345 nodes has ended, 17 of them stand alone.";

int Send(Verbose::EMessageType::iterator type, int count) {
    for (int i = 0; i < count; ++i) Verbose::WriteMessage_1(type, Text);
    return 0;
}

void MeasureFiltered(Report& report) {
    constexpr int count = 1000000;
    report.Measure({"filtered messages", count}, [] { return Send(Verbose::EMessageType::All, count); });
}

/// Floor: the finished lines and nothing else.
int WriteLines(std::ofstream& file, int count) {
    for (int i = 0; i < count; ++i) file << "\n<Info>" << Text << "</Info>";
    return 0;
}

void MeasurePassed(Report& report, int count) {
    const std::filesystem::path name = std::filesystem::temp_directory_path() / "KmLogBench.xml";
    std::ofstream file(name);
    ConsoleDumpingDevice console(file);
    DeafDevice deaf;
    const std::string floor = "floor: the lines, to a file";
    const auto clear = [&] { return Services::GetDumpingDevice()->CLS(), 0; };

    report.Measure({floor, static_cast<double>(count)}, [&] { return WriteLines(file, count); });
    Services::SetDumpingDevice(&console);
    report.Measure({"passed messages, to a file", static_cast<double>(count), 0.0, floor}, clear,
                   [&](int&) { return Send(Verbose::EMessageType::Info, count); });
    Services::SetDumpingDevice(&deaf);
    report.Measure({"passed messages, mark-up alone", static_cast<double>(count), 0.0, floor}, clear,
                   [&](int&) { return Send(Verbose::EMessageType::Info, count); });
    Services::SetDumpingDevice(nullptr);
    std::filesystem::remove(name);
}

}  // namespace
}  // namespace KM::Bench

int main(int argc, char** argv) {
    using namespace KM;
    const int count = argc > 1 ? std::atoi(argv[1]) : 100000;
    Services::GetOutputFormatter();
    Console::IsDumpEnabled(true);
    Bench::Report report("log (read \"triangle\" as message)");
    Bench::MeasureFiltered(report);
    Bench::MeasurePassed(report, count > 0 ? count : 100000);
}
