#include "Utils/U_Settings/Vocabulary.h"

namespace KM::Settings {

void DeclareCachingKeys() {
    [[maybe_unused]] static const Add keys[] = {
        Declare("Cache", "", "", "Cache related settings."),
        Declare("Cache.Create", "Int32", "0", "4 Show created entries in cache."),
        Declare("Cache.Reuse", "Int32", "0", "2 Show reused entries in cache."),
        Declare("Cache.Folder", "String", "", "Place where temporary files are stored."),
        Declare("Cache.IsPersistableProcessingTime", "Int32", "1",
                "Time in milliseconds used to decide if an object will be cached or regenerate next time. For slow "
                "connection to cache folder this value will be higher."),
        Declare("Cache.Cleaning.Enabled", "Bool", "Y", "Perform or not cache cleanning."),
        Declare("Cache.Cleaning.Size", "Real64", "5000", "size of the cache. [Mb]"),
        Declare("Cache.Cleaning.DeleteFactor", "Real64", "0.5", "What is the total size of the deleted files."),
        Declare("Cache.Cleaning.TimeBetweenAnalysis", "Int32", "3600",
                "Minimum time between to calls to cache cleaning. [sec]"),
        Declare("Cache.Cleaning.PreClean", "Bool", "N",
                "If is enabled will do a cache cleaning before starting computation."),
    };
}

}  // namespace KM::Settings
