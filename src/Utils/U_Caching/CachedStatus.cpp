#include <algorithm>
#include <cstdint>
#include <string>

#include "Utils/U_Caching/CachedObjects.h"
#include "Utils/U_Caching/Caching.h"
#include "Utils/U_Debug/Verbose.h"
#include "Utils/U_IO/Files.h"

namespace KM::Caching {
namespace {

using Verbose::EMessageType;

std::string Kilobytes(std::int64_t bytes) {
    constexpr std::size_t width = 6;
    const std::string number = std::to_string(bytes / 1024);
    return std::string(width - std::min(width, number.size()), ' ') + number + "[Kb]";
}

}  // namespace

void ACached::DumpStatus() const {
    const auto first =
        std::find_if(interfaces_.begin(), interfaces_.end(), [](const auto& view) { return !IsGone(view); });
    if (first == interfaces_.end()) return;
    const std::string size = Kilobytes(IO::FileSize(CreateFileName(DataExt())));
    const std::string rest = ", Size: " + size + " , Name: " + name_;
    const char* const status = (**first)->IsCreated() ? "Status: CREATED " : "Status: IDLE    ";
    Verbose::WriteMessage_1(EMessageType::Info, status + rest);
}

void DumpCurrentlyCachedObjects() {
    if (Verbose::Level() < EMessageType::All) return;
    const Verbose::Scope scope("CachedObjectsStatus");
    const auto objects = ACached::Registry();  // a copy: the answer of a view can end objects
    for (const auto& object : objects)
        if (*object != nullptr) (*object)->DumpStatus();
}

}  // namespace KM::Caching
