#pragma once

#include <string>

#include "KmApi.h"

namespace KM {

// How a tool and those who watch it talk without a channel: by the names of files in the cache folder
// (`Caching::Path()`). `ID()` tells the tools that share a folder apart.
//
//   !Break(ID=12)                                               made by a watcher: stop. The tool removes it.
//   !Message(ID=12, 0.6, 0.1, Generate.Toolpath.Linking)        made by the tool, empty: global and local progress, task
//   !Finished(ID=12)                                            made by the tool, empty, when it ends
//
// While a file is made it has another name for a moment, with ".tmp" at its end. The values here are for one thread.

/// The check point of cancellation. Each message to the log passes it, and each report of progress.
///
/// Stops on the file "!Break(ID=…)", which is looked for if `IsEnableInCacheLookingForCheckAbort()`, at most once in
/// `TimeGranularity()` seconds; on Escape on the keyboard, if standard input is a terminal and this process not in the
/// background there (other keys are taken and logged, each by a check of its own; while `IO::Choice` asks, keys are its
/// own); and on an interrupt, after `Application::CatchInterrupts()`. It then closes all scopes of the log but the
/// outermost one.
///
/// Its own messages are check points too: of keys that wait together, the last is logged first, and none of those before
/// an Escape. Does nothing while a scope of the log closes.
/// @throws XUserAbort
KM_API void CheckAbort();

/// Asks for a new start of the process when more of the machine's memory is in use than the setting
/// "Behavior.MaxAcceptableMemoryLoadingFactor" allows. A factor outside 0.1 to 0.9 switches the test off.
/// @throws XRestartMe
KM_API void RestartIfIsHeavyMemoryUsage();

/// Seconds between two looks for the file that stops the tool; 0.2 at start.
KM_API double TimeGranularity();
KM_API void TimeGranularity(double seconds);

// Off at start.

KM_API bool IsEnableInCacheLookingForCheckAbort();
KM_API void IsEnableInCacheLookingForCheckAbort(bool enable);
KM_API bool IsEnableInCacheProgressStatus();
KM_API void IsEnableInCacheProgressStatus(bool enable);
KM_API bool IsEnableInConsoleProgressStatus();
KM_API void IsEnableInConsoleProgressStatus(bool enable);

/// Tells tools that share a cache folder apart; 1 at start.
KM_API int ID();
KM_API void ID(int id);

/// The folder, and "!Message(ID=12, ". The reference holds until the next call.
KM_API const std::string& BeginningOfTheMessageFileName();

namespace Verbose {

/// Takes `ID`, the three switches, `TimeGranularity` and the level of the log from the settings.
KM_API void ConfigureFromSettings();

}  // namespace Verbose

namespace Application {

/// From now on Ctrl-C (and a request of the system to end) is a wish to stop, which `CheckAbort` fulfils. The second one
/// ends the process at once, with the terminal as it was. One that the parent process has switched off stays off.
///
/// The library never calls this by itself: how a process takes its signals is the program's affair.
KM_API void CatchInterrupts();

}  // namespace Application
}  // namespace KM
