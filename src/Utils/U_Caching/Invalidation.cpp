#include <string>
#include <unordered_map>
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

/// Walks down to what was derived, without recursion: chains have any length. An object is entered on each way that leads
/// to it, so that what a view does on its release happens as often as it is told, but never below itself: loops end.
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
        if (IsGone(link) || !MayEnter(link)) return;
        (*link)->Destroy();
        if (!IsGone(link)) path_.push_back({link, (*link)->derived_});
    }

    bool MayEnter(const Link<ACached>& link) {
        const auto [visited, isFirst] = isOnPath_.try_emplace(link, true);
        if (isFirst) return true;
        const std::size_t cost = 1 + (*link)->derived_.size();
        if (visited->second || cost > repeats_) return false;
        repeats_ -= cost;
        return visited->second = true;
    }

    void Step() {
        Level& level = path_.back();
        if (level.next < level.derived.size()) return Enter(level.derived[level.next++]);
        const Link<ACached> link = level.object;
        path_.pop_back();
        isOnPath_[link] = false;
        if (!IsGone(link)) DeleteFiles((*link)->FileName());
    }

    std::vector<Level> path_;
    std::unordered_map<Link<ACached>, bool> isOnPath_;  // of all that were entered
    /// What entering objects again may cost. There can be more ways to one object than anybody could walk, and each walk
    /// reads the folder.
    std::size_t repeats_ = 100'000;
};

void ACached::Invalidate() const { Invalidation(*this); }

}  // namespace KM::Caching
