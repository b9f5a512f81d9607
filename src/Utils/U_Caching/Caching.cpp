#include "Utils/U_Caching/Caching.h"

#include "Platform/Files.h"
#include "Utils/U_Caching/SoundValues.h"
#include "Utils/U_Debug/Time.h"
#include "Utils/U_IO/FileNames.h"
#include "Utils/U_IO/Files.h"

namespace KM::Caching {
namespace {

struct ModuleState {
    std::string path = IO::ValidateFileName(Platform::UserCacheFolder() + "/km/Cache");
    std::string dataExt = ".Data";
    std::string infoExt = ".Info";
    std::string progressExt = ".Progress";
    int colorForWriting = 4;
    int colorForReading = 2;
    double cleaningSize = 2000.0;
    double deleteFactor = 0.5;
    double timeBetweenAnalysis = 900.0;
    double lastAnalysisTime = 0.0;
    bool cleaningEnabled = false;
    double persistentTime = 1.0;
    bool infoWrite = false;
    bool infoNeedsReading = true;
};

ModuleState& State() {
    // Never destroyed: results that are static objects ask for their files after `main`.
    static ModuleState& state = *new ModuleState;
    return state;
}

}  // namespace

const std::string& Path() { return State().path; }

void Path(const std::string& path) {
    State().path = IO::ValidateFileName(path);
    IO::MkDir(State().path);
}

const std::string& DataExt() { return State().dataExt; }
void DataExt(const std::string& extension) { State().dataExt = extension; }
const std::string& InfoExt() { return State().infoExt; }
void InfoExt(const std::string& extension) { State().infoExt = extension; }
const std::string& ProgressExt() { return State().progressExt; }
void ProgressExt(const std::string& extension) { State().progressExt = extension; }

int ColorForWriting() { return State().colorForWriting; }
void ColorForWriting(int color) { State().colorForWriting = color; }
int ColorForReading() { return State().colorForReading; }
void ColorForReading(int color) { State().colorForReading = color; }

double CleaningSize() { return State().cleaningSize; }
double DeleteFactor() { return State().deleteFactor; }
double TimeBetweenAnalysis() { return State().timeBetweenAnalysis; }
double LastAnalysisTime() { return State().lastAnalysisTime; }

void CleaningSize(double megabytes) {
    if (IsSoundAmount(megabytes)) State().cleaningSize = megabytes;
}

void DeleteFactor(double fraction) {
    if (IsSoundAmount(fraction)) State().deleteFactor = fraction;
}

void TimeBetweenAnalysis(double seconds) {
    if (IsSoundSpan(seconds)) State().timeBetweenAnalysis = seconds;
}

void LastAnalysisTime(double time) {
    if (IsSoundMoment(time)) State().lastAnalysisTime = time;
}

bool CleaningEnabled() { return State().cleaningEnabled; }
void CleaningEnabled(bool enabled) { State().cleaningEnabled = enabled; }

double PersistentTime() { return State().persistentTime; }

void PersistentTime(double seconds) {
    if (IsSoundSpan(seconds)) State().persistentTime = seconds;
}

void Persistent(double seconds) { PersistentTime(seconds); }
bool IsPersistent(double startTime) { return Time::Get() - startTime > PersistentTime(); }

bool IsEnabledInfoWrite() { return State().infoWrite; }
void InfoWrite(bool enabled) { State().infoWrite = enabled; }

bool InfoNeedsReading() { return State().infoNeedsReading; }
void InfoNeedsReading(bool needed) { State().infoNeedsReading = needed; }

}  // namespace KM::Caching
