#include <string>
#include <unordered_set>
#include <utility>
#include <vector>

#include "Utils/U_Caching/CachedObjects.h"
#include "Utils/U_Caching/DescriptionLimit.h"

namespace KM::Caching {

/// Walks up the dependencies without recursion: chains of them have any length.
class ACached::Description {
public:
    explicit Description(const ACached& first) {
        Enter(first.link_);
        while (!path_.empty()) Step();
    }

    std::string Take() { return std::move(text_); }

private:
    struct Level {
        Link<ACached> object;
        std::vector<Dependency> dependencies;  // a copy: a description that others write can change the list
        std::size_t next = 0;
    };

    void Enter(const Link<ACached>& link) {
        const ACached& object = **link;
        text_ += object.name_ + "{K=" + KeyText(object.key_) + ",";
        if (text_.size() > DescriptionLimit || !onPath_.insert(link).second) {
            text_ += "}";
            return;
        }
        path_.push_back({link, object.dependencies_});
        std::erase_if(path_.back().dependencies, [](const Dependency& entry) { return IsGone(entry); });
        if (!path_.back().dependencies.empty()) text_ += "CachedDependencies[";
    }

    void Step() {
        Level& level = path_.back();
        if (level.next == level.dependencies.size()) return Leave();
        if (level.next > 0) text_ += ",";
        const Link<ACached> link = level.dependencies[level.next++].object;
        if (!IsGone(link)) Enter(link);
    }

    void Leave() {
        const Level level = std::move(path_.back());
        path_.pop_back();
        onPath_.erase(level.object);
        const bool hasDependencies = !level.dependencies.empty();
        if (hasDependencies) text_ += "], ";
        const std::string others = IsGone(level.object) ? std::string() : (*level.object)->OnGetDescription();
        if (!others.empty()) text_ += "OtherDependencies[" + std::string(hasDependencies ? ", " : "") + others + "]";
        text_ += "}";
    }

    std::string text_;
    std::vector<Level> path_;
    std::unordered_set<Link<ACached>> onPath_;
};

std::string ACached::GetDescription() const { return Description(*this).Take(); }

}  // namespace KM::Caching
