#include <gtest/gtest.h>

#include <string>

#include "Support/Allocations.h"
#include "Utils/U_Parser/ParsingSession.h"

namespace KM::Parsing {
namespace {

TEST(EvaluationCost, NumbersTakeNoMemory) {
    ParsingSession session;
    session.Process("#F{2, If3($P[0] > $P[1], R = $P[0], R = $P[1]), R}");
    for (const char* text : {"A * Sin(B) + Min(C, D) / 2 - (A > B) * 3",
                             "{X = 1, X += AUX[2], AUX[3] = Mod(X, 7), Swap(X, Y), F(X, Y) + 1}", "\"12\" * 2 + 1",
                             "$T == 0 || !0", "Bound(Morph(1, 2, Pi), 0, Inf) && IsNear(1, 2, Eps)"}) {
        const Expression* const tree = session.CreateExpression(text);
        tree->ToDouble();
        const std::size_t before = Bench::LiveBytes();
        Bench::ForgetPeak();
        for (int i = 0; i < 100; ++i) tree->ToDouble();
        EXPECT_EQ(Bench::PeakBytes(), before) << text;
    }
}

}  // namespace
}  // namespace KM::Parsing
