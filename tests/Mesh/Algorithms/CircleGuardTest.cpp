#include "Mesh/Algorithms/CircleGuard.h"

#include <gtest/gtest.h>

namespace KM {
namespace {

TEST(CircleGuard, NeverSpeaksOnAPath) {
    CircleGuard guard;
    for (int e = 0; e < 100'000; ++e) ASSERT_FALSE(guard.IsMetAgain(e));
}

TEST(CircleGuard, SpeaksSoonOnACircle) {
    for (const int tail : {0, 1, 5, 100})
        for (const int circle : {1, 2, 3, 64, 1000}) {
            CircleGuard guard;
            int e = 0, steps = 0;
            while (!guard.IsMetAgain(e)) {
                ASSERT_LT(++steps, 4 * (tail + circle) + 4);
                e = e + 1 < tail + circle ? e + 1 : tail;
            }
            EXPECT_GE(e, tail);
        }
}

}  // namespace
}  // namespace KM
