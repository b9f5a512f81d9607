#include "Utils/U_XMLReader/UnlinkedNodes.h"

#include <mutex>
#include <unordered_map>
#include <unordered_set>

namespace KM::XML {
namespace {

struct Pool {
    std::mutex lock;  // trees of several threads share the pool
    std::unordered_map<const Element*, std::unordered_set<Base*>> byParent;
};

// Never destroyed: trees that are static objects reach it during exit.
Pool& ThePool() {
    static Pool& pool = *new Pool;
    return pool;
}

}  // namespace

void UnlinkedNodes::Keep(Base& node) {
    Pool& pool = ThePool();
    const std::scoped_lock guard(pool.lock);
    pool.byParent[node.parent_].insert(&node);
    node.isUnlinked_ = true;
}

void UnlinkedNodes::Forget(Base& node) {
    Pool& pool = ThePool();
    const std::scoped_lock guard(pool.lock);
    const auto siblings = pool.byParent.find(node.parent_);
    siblings->second.erase(&node);
    if (siblings->second.empty()) pool.byParent.erase(siblings);
    node.isUnlinked_ = false;
}

void UnlinkedNodes::Orphan(const Element& parent) {
    Pool& pool = ThePool();
    const std::scoped_lock guard(pool.lock);
    auto orphans = pool.byParent.extract(&parent);
    if (orphans.empty()) return;
    for (Base* node : orphans.mapped()) node->parent_ = nullptr;
    pool.byParent[nullptr].merge(orphans.mapped());
}

}  // namespace KM::XML
