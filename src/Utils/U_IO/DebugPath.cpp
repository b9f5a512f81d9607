#include "Utils/U_IO/DebugPath.h"

#include "Platform/Files.h"
#include "Utils/U_IO/FileNames.h"
#include "Utils/U_IO/Files.h"
#include "Utils/U_Settings/Settings.h"

namespace KM::Debug {
namespace {

std::string& Stored() {
    static std::string path;
    return path;
}

std::string Configured() {
    // The registered default names a drive, which this system does not have.
    constexpr const char* registeredDefault = "D:/HS/Output/";
    const std::string path = Settings::ToString("Debug.Path");
    return path.empty() || path == registeredDefault ? Platform::UserCacheFolder() + "/km/Output" : path;
}

}  // namespace

const std::string& Path() {
    if (Stored().empty()) Path(Configured());
    return Stored();
}

void Path(const std::string& path) {
    Stored() = IO::ValidateFileName(path);
    IO::MkDir(Stored());
}

}  // namespace KM::Debug
