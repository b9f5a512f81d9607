#include "Utils/U_Parser/NodePool.h"

#include <mutex>
#include <vector>

namespace KM::Parsing {
namespace {

struct Pool {
    std::mutex lock;  // sessions of several threads share the pool
    std::vector<Expression*> nodes;
    std::vector<std::shared_ptr<const void>> targets;
};

// Never destroyed: nodes that are static objects reach it during exit.
Pool& ThePool() {
    static Pool& pool = *new Pool;
    return pool;
}

}  // namespace

void NodePool::Keep(Expression* node) {
    if (node == nullptr || node->poolPlace_ != 0) return;
    Pool& pool = ThePool();
    const std::scoped_lock guard(pool.lock);
    pool.nodes.push_back(node);
    node->poolPlace_ = pool.nodes.size();
}

void NodePool::Forget(Expression& node) {
    if (node.poolPlace_ == 0) return;
    Pool& pool = ThePool();
    const std::scoped_lock guard(pool.lock);
    Expression*& place = pool.nodes[node.poolPlace_ - 1];
    place = pool.nodes.back();
    place->poolPlace_ = node.poolPlace_;
    pool.nodes.pop_back();
    node.poolPlace_ = 0;
}

void NodePool::KeepTargets(std::shared_ptr<const void> targets) {
    Pool& pool = ThePool();
    const std::scoped_lock guard(pool.lock);
    pool.targets.push_back(std::move(targets));
}

}  // namespace KM::Parsing
