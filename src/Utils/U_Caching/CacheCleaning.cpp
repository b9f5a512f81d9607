#include "Utils/U_Caching/CacheCleaning.h"

#include <algorithm>
#include <cstdint>
#include <string>
#include <vector>

#include "Platform/OpenFolder.h"
#include "Utils/U_Caching/CacheInfo.h"
#include "Utils/U_Caching/Caching.h"
#include "Utils/U_Debug/NumberText.h"
#include "Utils/U_Debug/Time.h"
#include "Utils/U_Debug/Verbose.h"

namespace KM::Caching {
namespace {

using Platform::PlainFile;
using Verbose::EMessageType;

constexpr double BytesPerMegabyte = 1048576.0;
constexpr std::int64_t UnknownTime = -1;

void Tell(const std::string& text) { Verbose::WriteMessage_1(EMessageType::Info, text); }

std::string Megabytes(double bytes) { return NumberText(bytes / BytesPerMegabyte) + "[Mb]"; }

bool IsRefused(const Platform::OpenFolder& folder) {
    // Files of the user and of the system lie there, whoever configured it so.
    if (!folder.IsRoot() && !folder.IsHome()) return false;
    Verbose::WriteMessage_1(EMessageType::Warning,
                            "The folder " + Path() + " is not cleaned: it is the root or the home folder.");
    return true;
}

/// Sizes are summed up in 32 bits each, since hosts compare the sums with those of listings that have no more.
double SizeOf(const PlainFile& file) { return static_cast<double>(static_cast<std::uint32_t>(file.size)); }

double TotalOf(const std::vector<PlainFile>& files) {
    double total = 0.0;
    for (const PlainFile& file : files) total += SizeOf(file);
    return total;
}

void SortOldestFirst(std::vector<PlainFile>& files) {
    const auto sortBy = [&files](Platform::FileMoment PlainFile::*time) {
        std::stable_sort(files.begin(), files.end(),
                         [time](const PlainFile& a, const PlainFile& b) { return a.*time < b.*time; });
    };
    sortBy(&PlainFile::accessed);
    if (files.front().accessed.seconds == UnknownTime) sortBy(&PlainFile::written);
}

void DeleteOldest(const Platform::OpenFolder& folder, const std::vector<PlainFile>& files, double total,
                  double target) {
    for (const PlainFile& file : files) {
        if (!(total > target)) return;
        folder.Remove(file);
        // Also for one that stays because it is in use: the next look will find it.
        total -= SizeOf(file);
    }
}

void Reduce(const Platform::OpenFolder& folder, std::vector<PlainFile> files) {
    if (files.empty()) return;
    SortOldestFirst(files);
    const double allowed = CleaningSize() * BytesPerMegabyte;
    const double total = TotalOf(files);
    Tell("CacheSize: " + Megabytes(total) + ", Allowed: " + Megabytes(allowed));
    if (!(total > allowed)) return Tell("No action has been taken.");
    Tell("Do cache cleaning!");
    DeleteOldest(folder, files, total, DeleteFactor() * allowed);
}

void TakeOverLastLook() {
    if (!InfoNeedsReading()) return;
    ReadCacheInfo();
    InfoNeedsReading(false);
}

}  // namespace

void CleanIfTooLarge() {
    if (!CleaningEnabled()) return;
    const Verbose::Scope scope("CacheCleaning");
    TakeOverLastLook();
    const double now = Time::Get();  // afterwards, since reading can wait for other processes
    if (!(now - LastAnalysisTime() > TimeBetweenAnalysis())) return;
    Tell("Analyzing cache!");
    LastAnalysisTime(now);
    const Platform::OpenFolder folder(Path());
    if (IsRefused(folder)) return;
    Reduce(folder, folder.Files());
    WriteCacheInfo();
}

void DeleteResults() {
    const Platform::OpenFolder folder(Path());
    if (IsRefused(folder)) return;
    for (const PlainFile& file : folder.Files())
        if (file.name[0] == '$') folder.Remove(file);
}

}  // namespace KM::Caching
