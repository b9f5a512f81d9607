#include <string>
#include <unordered_set>
#include <vector>

#include "Platform/Files.h"
#include "Utils/U_Caching/CachedObjects.h"
#include "Utils/U_Caching/Caching.h"
#include "Utils/U_Debug/Verbose.h"
#include "Utils/U_IO/FileNames.h"

namespace KM::Caching {
namespace {

/// Deletes the files whose names begin with this one and a dot. Not by the pattern alone: names may hold wild
/// characters, and lead out of the cache folder.
void DeleteFiles(const std::string& fileName) {
    const std::string folder = IO::FileNameManipulation::Path(fileName);
    const std::string beginning = fileName.substr(folder.size()) + ".";
    std::vector<std::string> names = Platform::Matches(fileName + ".*");
    std::erase_if(names, [&](const std::string& name) { return !name.starts_with(beginning); });
    if (names.empty()) return;
    if (!Platform::LiesWithin(folder, Path()))
        return Verbose::WriteMessage_1(
            Verbose::EMessageType::Warning,
            "The files " + fileName + ".* are not deleted: they lie outside the cache folder.");
    for (const std::string& name : names) Platform::RemoveFile(folder + name);
}

}  // namespace

/// Walks down to what was derived, without recursion, and each object once: there can be loops, and more ways to one
/// object than anybody could count.
class ACached::Invalidation {
public:
    explicit Invalidation(const ACached& first) {
        Enter(first.link_);
        while (!path_.empty()) Step();
    }

private:
    struct Level {
        Link<ACached> object;
        std::vector<Link<ACached>> derived;  // a copy: what a view does on its release can change the list
        std::size_t next = 0;
    };

    /// By value: a release can end the object, and the link that it holds itself.
    void Enter(Link<ACached> link) {
        if (IsGone(link) || !entered_.insert(link).second) return;
        (*link)->Destroy();
        if (!IsGone(link)) path_.push_back({link, (*link)->derived_});
    }

    void Step() {
        Level& level = path_.back();
        if (level.next < level.derived.size()) return Enter(level.derived[level.next++]);
        const Link<ACached> link = level.object;
        path_.pop_back();
        if (!IsGone(link)) DeleteFiles((*link)->FileName());
    }

    std::vector<Level> path_;
    std::unordered_set<Link<ACached>> entered_;
};

void ACached::Invalidate() const { Invalidation(*this); }

}  // namespace KM::Caching
