#include "Utils/U_IO/Processes.h"

#include <algorithm>

#include "Platform/Files.h"
#include "Platform/Memory.h"
#include "Platform/Processes.h"
#include "Utils/U_Debug/Time.h"
#include "Utils/U_Debug/Verbose.h"

namespace KM::IO {
namespace {

using Verbose::EMessageType;

std::vector<std::string> Words(const std::string& arguments) {
    std::vector<std::string> words;
    bool isQuoted = false;
    bool isInWord = false;
    for (const char c : arguments) {
        const bool isBlank = c == ' ' || c == '\t' || c == '\n' || c == '\r';
        if (isBlank && !isQuoted) {
            isInWord = false;
            continue;
        }
        if (!isInWord) words.emplace_back();
        isInWord = true;
        if (c == '"')
            isQuoted = !isQuoted;
        else
            words.back() += c;
    }
    return words;
}

int Megabytes(std::uint64_t bytes) { return static_cast<int>(bytes >> 20); }

}  // namespace

int Execute(const std::string& program, const std::string& arguments, int) {
    return Platform::ChildProcess(program, Words(arguments)).Wait();
}

int Execute(const std::string& program, const std::vector<std::string>& arguments, int) {
    return Platform::ChildProcess(program, arguments).Wait();
}

MonitoredSpawnStatistics MonitoredSpawn(const std::string& program, const std::string& arguments) {
    const double start = Time::Get();
    const int startFree = MemoryStatus().availablePhysical;
    int leastFree = startFree;
    const std::string command = program + " " + arguments;
    Verbose::WriteMessage_1(EMessageType::Info, "CommandLine is: " + command);

    MonitoredSpawnStatistics statistics;
    Platform::ChildProcess child(program, Words(arguments));
    if (!child.HasStarted()) {
        Verbose::WriteMessage_1(EMessageType::Error, "In CreateProcess executing command: \"" + command + "\"");
        return statistics;
    }
    while (!child.ExitCode()) {
        Time::Sleep(500);
        leastFree = std::min(leastFree, MemoryStatus().availablePhysical);
    }
    statistics.elapsed = Time::Get() - start;
    statistics.memoryUsed = startFree - leastFree;
    statistics.exitCode = child.Wait();
    return statistics;
}

MemoryStatus::MemoryStatus() {
    const Platform::Memory now = Platform::MemoryNow();
    memoryLoad = now.loadPercent;
    totalPhysical = Megabytes(now.totalPhysical);
    availablePhysical = Megabytes(now.availablePhysical);
    totalPageFile = Megabytes(now.totalPageFile);
    availablePageFile = Megabytes(now.availablePageFile);
    totalVirtual = Megabytes(now.totalVirtual);
    availableVirtual = Megabytes(now.availableVirtual);
}

double Disk::Free(const std::string& path) { return Platform::SpaceOf(path).free; }
double Disk::UserFree(const std::string& path) { return Platform::SpaceOf(path).userFree; }
double Disk::Total(const std::string& path) { return Platform::SpaceOf(path).total; }

}  // namespace KM::IO
