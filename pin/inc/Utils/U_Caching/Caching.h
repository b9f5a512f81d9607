#pragma once

#include <string>

#include "KmApi.h"

/// Results of computations, kept as files in one folder. What follows is the state of the whole process: where the files
/// lie, what they are called, and how large the folder may become before the files that were not used for the longest
/// time are deleted. One thread at a time.
///
/// A setter does nothing with a number that cannot be meant: a size or factor that is negative or not a number, seconds
/// that are not a number or not above -1e19. Seconds above 1e19 are a span without end.
namespace KM::Caching {

/// The folder of all files, ending in a back-slash. At start it lies below the user's cache folder, and is not made
/// before it is configured or written to.
KM_API const std::string& Path();
/// Sets the folder, and makes it.
KM_API void Path(const std::string& path);

/// Extension of the data of a result; ".Data" at start.
KM_API const std::string& DataExt();
KM_API void DataExt(const std::string& extension);
/// Extension of what is told of a result; ".Info" at start.
KM_API const std::string& InfoExt();
KM_API void InfoExt(const std::string& extension);
/// Extension of the files that tell of progress; ".Progress" at start.
KM_API const std::string& ProgressExt();
KM_API void ProgressExt(const std::string& extension);

/// Colour, for `IO::ToFile`, of the name in the log line of a result that is written; 0 for no line. 4 at start.
KM_API int ColorForWriting();
KM_API void ColorForWriting(int color);
/// The same for a result that is read; 2 at start.
KM_API int ColorForReading();
KM_API void ColorForReading(int color);

/// The size that the folder may have, in Mb; 2000 at start.
KM_API double CleaningSize();
KM_API void CleaningSize(double megabytes);
/// The fraction of that size that is left after the folder was cleaned; 0.5 at start.
KM_API double DeleteFactor();
KM_API void DeleteFactor(double fraction);
/// The least time between two looks at the folder, in seconds; 900 at start.
KM_API double TimeBetweenAnalysis();
KM_API void TimeBetweenAnalysis(double seconds);
/// When the folder was last looked at, by `Time::Get`; 0 at start. A moment beyond 1e19 is refused on either side.
KM_API double LastAnalysisTime();
KM_API void LastAnalysisTime(double time);
/// Whether the folder is cleaned at all; false until configured.
KM_API bool CleaningEnabled();
KM_API void CleaningEnabled(bool enabled);

/// The seconds that a computation takes at least if its result is worth a file; 1 at start.
KM_API double PersistentTime();
KM_API void PersistentTime(double seconds);
/// Another name of the setter `PersistentTime`.
KM_API void Persistent(double seconds);
/// True if the computation that began at `startTime`, by `Time::Get`, has taken longer than `PersistentTime`.
KM_API bool IsPersistent(double startTime);

/// Whether programs shall write what is told of a result; false at start.
KM_API bool IsEnabledInfoWrite();
KM_API void InfoWrite(bool enabled);

/// Whether the state file of the folder, "Cache.Info", is still to be read; true at start. The first look at the folder
/// reads it, so that the process goes on from the last look of another one.
KM_API bool InfoNeedsReading();
KM_API void InfoNeedsReading(bool needed);

/// Takes all this from the settings "Cache…", and writes the state file. An empty "Cache.Folder" keeps the folder as it
/// is, and makes it. With "Cache.Cleaning.PreClean" all results in the folder are deleted.
///
/// The time of the last look at the folder comes from the state file, if there is one. A state file that cannot be
/// written is told by an `Error` in the log.
KM_API void ConfigureFromSettings();

}  // namespace KM::Caching
