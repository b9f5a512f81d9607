#include "Utils/U_XMLReader/UnlinkedNodes.h"

#include <mutex>
#include <unordered_map>
#include <unordered_set>

namespace KM::XML {
namespace {

struct Pool {
    std::mutex lock;  // trees of several threads share the pool
    std::unordered_map<const Element*, std::unordered_set<Base*>> byKeeper;
    std::unordered_map<const Base*, Element*> keepers;
};

// Never destroyed: trees that are static objects reach it during exit.
Pool& ThePool() {
    static Pool& pool = *new Pool;
    return pool;
}

}  // namespace

void UnlinkedNodes::Keep(Base& node, Element& keeper) {
    Pool& pool = ThePool();
    const std::scoped_lock guard(pool.lock);
    if (!pool.keepers.emplace(&node, &keeper).second) return;
    pool.byKeeper[&keeper].insert(&node);
    node.isUnlinked_ = true;
}

void UnlinkedNodes::Forget(Base& node) {
    Pool& pool = ThePool();
    const std::scoped_lock guard(pool.lock);
    const auto entry = pool.keepers.find(&node);
    const auto siblings = pool.byKeeper.find(entry->second);
    siblings->second.erase(&node);
    if (siblings->second.empty()) pool.byKeeper.erase(siblings);
    pool.keepers.erase(entry);
    node.isUnlinked_ = false;
}

Element* UnlinkedNodes::KeeperOf(const Base& node) {
    Pool& pool = ThePool();
    const std::scoped_lock guard(pool.lock);
    const auto entry = pool.keepers.find(&node);
    return entry != pool.keepers.end() ? entry->second : nullptr;
}

void UnlinkedNodes::Orphan(const Element& keeper) {
    Pool& pool = ThePool();
    const std::scoped_lock guard(pool.lock);
    auto orphans = pool.byKeeper.extract(&keeper);
    if (orphans.empty()) return;
    for (Base* node : orphans.mapped()) {
        if (node->parent_ == &keeper) node->parent_ = nullptr;
        pool.keepers[node] = nullptr;
    }
    pool.byKeeper[nullptr].merge(orphans.mapped());
}

}  // namespace KM::XML
