#include "Utils/U_Caching/CachedObjects.h"

#include <algorithm>
#include <utility>

#include "Utils/U_Caching/CacheCleaning.h"
#include "Utils/U_Caching/Caching.h"
#include "Utils/U_XMLReader/Limits.h"

namespace KM::Caching {
namespace {

bool keyDumping = false;

void ReleaseQuietly(AInterface& view) {
    try {
        view.Release();
    } catch (...) {
        // Called by a destructor: nobody could catch it, and other views are to be released as well.
    }
}

}  // namespace

// The cleaner can throw. The object is whole by then, so its destructor takes it off the list again.
ACached::ACached() : ACached(Enrolled()) { CleanIfTooLarge(); }

ACached::ACached(Enrolled) : link_(std::make_shared<ACached*>(this)) { Registry().push_back(link_); }

ACached::~ACached() {
    *link_ = nullptr;
    if (!Registry().empty()) Registry().pop_back();
    const std::vector<Link<AInterface>> views = std::move(interfaces_);
    for (const Link<AInterface>& view : views)
        if (*view != nullptr) ReleaseQuietly(**view);
}

std::vector<ACached::Link<ACached>>& ACached::Registry() {
    // Never destroyed: objects may be static.
    static auto& registry = *new std::vector<Link<ACached>>;
    return registry;
}

void ACached::Dump(XML::Element&, bool) const {}
std::string ACached::OnGetDescription() const { return {}; }
ACached& ACached::operator=(const ACached&) { return *this; }

void ACached::Name(const std::string& name) {
    name_ = name;
    Mix(key_, name);
}

/// Entries of objects that are gone go before the list would grow: a result that outlives many does not collect them.
template <class Entry>
void ACached::MakeRoom(std::vector<Entry>& list) {
    XML::CheckListRoom(list.size());
    if (list.size() < list.capacity()) return;
    std::erase_if(list, [](const Entry& entry) { return IsGone(entry); });
    if (list.size() >= list.capacity() / 2) list.reserve(2 * list.size() + 1);
}

void ACached::SubscribeDependsOn(const ACached& other, bool flag) const {
    const Dependency dependency{other.link_, flag};
    if (std::find(dependencies_.begin(), dependencies_.end(), dependency) != dependencies_.end()) return;
    // All room first, so that a failure leaves both lists as they were.
    MakeRoom(dependencies_);
    MakeRoom(other.derived_);
    dependencies_.push_back(dependency);
    other.derived_.push_back(link_);
    Mix(key_, other.key_);
}

void ACached::SubscribeInterface(const AInterface& view) const {
    MakeRoom(interfaces_);
    interfaces_.push_back(view.link_);
}

void ACached::DetachDerived(const ACached& other) const {
    const auto found = std::find(derived_.begin(), derived_.end(), other.link_);
    if (found != derived_.end()) derived_.erase(found);
}

std::string ACached::FileName() const { return Path() + "$" + name_ + "." + KeyText(key_); }
std::string ACached::CreateFileName(const std::string& extension) const { return FileName() + extension; }

void ACached::Destroy() const {
    // A copy: what a view does on its release can change the list, or end this object.
    const std::vector<Link<AInterface>> views = interfaces_;
    for (const Link<AInterface>& view : views)
        if (*view != nullptr) (*view)->Release();
}

void ACached::EnableKeyDumping() { keyDumping = true; }
void ACached::DisableKeyDumping() { keyDumping = false; }
bool ACached::KeyDumping() { return keyDumping; }

AInterface::AInterface() : link_(std::make_shared<AInterface*>(this)) { SubscribeInterface(*this); }
AInterface::~AInterface() { *link_ = nullptr; }

std::vector<ACached*> CachedObjects() {
    std::vector<ACached*> live;
    for (const ACached::Link<ACached>& object : ACached::Registry())
        if (*object != nullptr) live.push_back(*object);
    return live;
}

}  // namespace KM::Caching
