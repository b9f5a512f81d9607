#include "Utils/U_Parser/NodePool.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <utility>

namespace KM::Parsing {
namespace {

/// A node that tells when it is gone.
class Counted : public Expression {
public:
    explicit Counted(int& alive) : alive_(&alive) { ++*alive_; }
    Counted(const Counted&) = delete;
    ~Counted() override { --*alive_; }
    Expression* Clone() const override { return new Counted(*alive_); }
    double ToDouble() const override { return *alive_; }
    std::string Name() const override { return "Counted"; }

private:
    int* alive_;
};

// The pool here is the test's own. The library's nodes leave the library's pool by themselves; these are taken out by hand.

TEST(NodePool, LeavesNodesAliveUntilSomebodyDeletesThem) {
    static int alive = 0;
    Counted* const kept = NodePool::Make<Counted>(alive);
    EXPECT_EQ(alive, 1);
    EXPECT_EQ(kept->ToDouble(), 1.0);
    NodePool::Forget(*kept);
    EXPECT_EQ(alive, 1);
    delete kept;
    EXPECT_EQ(alive, 0);
}

TEST(NodePool, ForgetsNodesInAnyOrder) {
    static int alive = 0;
    const int orders[][3] = {{0, 1, 2}, {0, 2, 1}, {1, 0, 2}, {1, 2, 0}, {2, 0, 1}, {2, 1, 0}};
    for (const auto& order : orders) {
        Counted* nodes[3];
        for (Counted*& node : nodes) node = NodePool::Make<Counted>(alive);
        for (const int k : order) {
            NodePool::Forget(*nodes[k]);
            delete nodes[k];
        }
    }
    EXPECT_EQ(alive, 0);
}

TEST(NodePool, KeepsANodeOnceAndNullNotAtAll) {
    static int alive = 0;
    NodePool::Keep(nullptr);
    Counted node(alive);
    NodePool::Keep(&node);
    NodePool::Keep(&node);
    // If it stood there twice, the second place would be left to the node that comes next.
    NodePool::Forget(node);
    NodePool::Forget(node);
    Counted* const next = NodePool::Make<Counted>(alive);
    EXPECT_EQ(alive, 2);
    NodePool::Forget(*next);
    delete next;
    EXPECT_EQ(alive, 1);
}

TEST(NodePool, KeepsWhatNodesPointInto) {
    auto target = std::make_shared<const std::string>("text");
    const std::weak_ptr<const std::string> seen = target;
    NodePool::KeepTargets(std::move(target));
    ASSERT_FALSE(seen.expired());
    EXPECT_EQ(*seen.lock(), "text");
}

}  // namespace
}  // namespace KM::Parsing
