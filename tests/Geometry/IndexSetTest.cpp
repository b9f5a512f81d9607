#include "Geometry/IndexSet.h"

#include <gtest/gtest.h>

#include <set>

#include "Support/Numbers.h"

namespace KM {
namespace {

int FindRound(const std::set<int>& members, int index) {
    if (members.empty()) return -1;
    const auto found = members.lower_bound(index);
    return found != members.end() ? *found : *members.begin();
}

TEST(IndexSet, FindsTheNextMemberRoundAndRound) {
    for (const int bound : {1, 2, 63, 64, 65, 4096, 4097, 300000}) {
        SCOPED_TRACE(testing::Message() << "bound " << bound);
        IndexSet indices(bound);
        std::set<int> plain;
        KM::Test::Numbers random(static_cast<unsigned>(bound));
        EXPECT_EQ(indices.FindRound(bound - 1), -1);
        for (int i = 0; i < 3000; ++i) {
            const int index = random.Below(bound);
            if (random.Below(i < 1500 ? 3 : 2) != 0) {
                indices.Insert(index);
                plain.insert(index);
            } else {
                const int member = FindRound(plain, index);
                indices.Erase(member == -1 ? index : member);
                plain.erase(member);
            }
            const int from = random.Below(bound);
            ASSERT_EQ(indices.FindRound(from), FindRound(plain, from)) << "from " << from;
        }
    }
}

}  // namespace
}  // namespace KM
