#include "Utils/U_App/CheckAbort.h"
#include "Utils/U_Debug/Verbose.h"
#include "Utils/U_Settings/Settings.h"

namespace KM {
namespace {

int id = 1;
bool looksForAbortFile = false;
bool showsStatusInCache = false;
bool showsStatusInConsole = false;
double timeGranularity = 0.2;

}  // namespace

int ID() { return id; }
void ID(int newId) { id = newId; }

bool IsEnableInCacheLookingForCheckAbort() { return looksForAbortFile; }
void IsEnableInCacheLookingForCheckAbort(bool enable) { looksForAbortFile = enable; }
bool IsEnableInCacheProgressStatus() { return showsStatusInCache; }
void IsEnableInCacheProgressStatus(bool enable) { showsStatusInCache = enable; }
bool IsEnableInConsoleProgressStatus() { return showsStatusInConsole; }
void IsEnableInConsoleProgressStatus(bool enable) { showsStatusInConsole = enable; }

double TimeGranularity() { return timeGranularity; }
void TimeGranularity(double seconds) { timeGranularity = seconds; }

void Verbose::ConfigureFromSettings() {
    ID(Settings::ToInt("Communication.ID"));
    IsEnableInCacheLookingForCheckAbort(Settings::ToBool("Communication.EnableInCacheLookingForCheckAbort"));
    IsEnableInCacheProgressStatus(Settings::ToBool("Communication.EnableInCacheProgressStatus"));
    IsEnableInConsoleProgressStatus(Settings::ToBool("Communication.EnableInConsoleProgressStatus"));
    TimeGranularity(Settings::ToDouble("Communication.TimeGranularity"));
    Level(static_cast<EMessageType::iterator>(Settings::ToInt("Debug.VerboseLevel")));
}

}  // namespace KM
