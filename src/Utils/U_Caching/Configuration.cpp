#include "Utils/U_Caching/CacheCleaning.h"
#include "Utils/U_Caching/CacheInfo.h"
#include "Utils/U_Caching/Caching.h"
#include "Utils/U_Settings/Settings.h"

namespace KM::Caching {
namespace {

void ConfigureFolder() {
    // Configurations that are shared with other systems can name the folder that is usual there; this one has no
    // drives.
    constexpr const char* usualElsewhere = "C:/TMP/Cache/";
    const std::string folder = Settings::ToString("Cache.Folder");
    const bool isKept = folder.empty() || folder == usualElsewhere;
    Path(isKept ? Path() : folder);  // the kept one too: it need not be there yet
}

/// The file is read before the size is stored: the time of the last look at the folder is what is wanted of it.
void ConfigureSize() {
    const double size = Settings::ToDouble("Cache.Cleaning.Size");
    ReadCacheInfo();
    CleaningSize(size);
    WriteCacheInfo();
}

}  // namespace

void ConfigureFromSettings() {
    ColorForWriting(Settings::ToInt("Cache.Create"));
    ColorForReading(Settings::ToInt("Cache.Reuse"));
    ConfigureFolder();
    ConfigureSize();
    Persistent(Settings::ToInt("Cache.IsPersistableProcessingTime"));
    ReadCacheInfo();
    DeleteFactor(Settings::ToDouble("Cache.Cleaning.DeleteFactor"));
    TimeBetweenAnalysis(Settings::ToInt("Cache.Cleaning.TimeBetweenAnalysis"));
    CleaningEnabled(Settings::ToBool("Cache.Cleaning.Enabled"));
    WriteCacheInfo();
    if (Settings::ToBool("Cache.Cleaning.PreClean")) DeleteResults();
}

}  // namespace KM::Caching
