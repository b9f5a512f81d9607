// Distances, intersections and circles: the time of one call, on points in a cube of 20.
// Usage: LinesBench [--benchmark_filter=REGEX]

#include <benchmark/benchmark.h>

#include <array>
#include <cstddef>

#include "Km.h"
#include "Support/HostilePoints.h"

namespace KM::Bench {
namespace {

using Test::P;

struct Input {
    P a, b, c, d;
    double radius;
};

/// More than a predictor of branches learns by heart, and little enough to stay in the cache.
const std::array<Input, 256>& Inputs() {
    static const auto inputs = [] {
        std::array<Input, 256> result;
        unsigned seed = 0;
        for (Input& input : result) {
            Test::HostilePoints next(seed);
            input = {next(), next(), next(), next(), next.Between(1.0, 8.0)};
            seed += 4;  // each fourth seed gives points without any trap
        }
        return result;
    }();
    return inputs;
}

template <class Call>
void OneCall(benchmark::State& state, Call call) {
    std::size_t i = 0;
    for (auto _ : state) {
        benchmark::DoNotOptimize(call(Inputs()[i]));
        i = (i + 1) % Inputs().size();
    }
}

double Side(const P& a, const P& b, const P& p) { return (b.X - a.X) * (p.Y - a.Y) - (b.Y - a.Y) * (p.X - a.X); }

/// Floor of the crossings: on which sides of one line the ends of the other lie.
bool AreCrossing(const Input& i) {
    return Side(i.a, i.b, i.c) * Side(i.a, i.b, i.d) < 0.0 && Side(i.c, i.d, i.a) * Side(i.c, i.d, i.b) < 0.0;
}

/// Where functions write to.
struct Output {
    double t[4] = {};
    P p, q;
};

/// What `call(output, input)` wrote.
template <class Call>
auto Written(Call call) {
    return [call](const Input& i) {
        Output out;
        call(out, i);
        return out;
    };
}

BENCHMARK_CAPTURE(OneCall, floor_LengthOfDifference, [](const Input& i) { return Length(i.b - i.a); });
BENCHMARK_CAPTURE(OneCall, DistPtLn_2D, [](const Input& i) { return DistPtLn(i.a, i.b, i.c, false); });
BENCHMARK_CAPTURE(OneCall, DistPtLn_3D, [](const Input& i) { return DistPtLn(i.a, i.b, i.c, true); });
BENCHMARK_CAPTURE(OneCall, DistPtSegm_2D, [](const Input& i) {
    double t = 0.0;
    return DistPtSegm(i.a, i.b, i.c, t, false, 0.0);
});
BENCHMARK_CAPTURE(OneCall, DistPtSegm_3D, [](const Input& i) {
    double t = 0.0;
    return DistPtSegm(i.a, i.b, i.c, t, true, 0.0);
});
BENCHMARK_CAPTURE(OneCall, DistToPlane, [](const Input& i) { return DistToPlane(i.a, i.b, i.c, i.d); });
BENCHMARK_CAPTURE(OneCall, DistPointToPlan, [](const Input& i) { return DistPointToPlan(i.a, i.b, i.c, i.d); });
BENCHMARK_CAPTURE(OneCall, DistPointAboveSegment, [](const Input& i) { return DistPointAboveSegment(i.a, i.b, i.c); });

BENCHMARK_CAPTURE(OneCall, NearestPtOnLn, [](const Input& i) { return NearestPtOnLn(i.a, i.b, i.c); });
BENCHMARK_CAPTURE(OneCall, FindNearestPointOnLine,
                  [](const Input& i) { return FindNearestPointOnLine(i.a, i.b, i.c); });
BENCHMARK_CAPTURE(OneCall, AreCollinears, [](const Input& i) { return AreCollinears(i.a, i.b, i.c, 1e-6); });
BENCHMARK_CAPTURE(OneCall, BisectorPoint, [](const Input& i) { return BisectorPoint(i.a, i.b, i.c); });
BENCHMARK_CAPTURE(OneCall, ClipSegmentToPlane, [](const Input& i) {
    P a = i.a, b = i.b;
    ClipSegmentToPlane(&a, &b, i.radius, 0, true);
    return b;
});

BENCHMARK_CAPTURE(OneCall, floor_FourSides, AreCrossing);
BENCHMARK_CAPTURE(OneCall, IntLineLine,
                  Written([](Output& out, const Input& i) { IntLineLine(out.t[0], out.t[1], i.a, i.b, i.c, i.d); }));
BENCHMARK_CAPTURE(OneCall, IntLineLine2,
                  Written([](Output& out, const Input& i) { IntLineLine2(out.t[0], out.t[1], i.a, i.b, i.c, i.d); }));
BENCHMARK_CAPTURE(OneCall, IntSegmSegm,
                  Written([](Output& out, const Input& i) { IntSegmSegm(out.t[0], out.t[1], i.a, i.b, i.c, i.d); }));
BENCHMARK_CAPTURE(OneCall, IntSegmSegm_BoxesApart, Written([](Output& out, const Input& i) {
                      IntSegmSegm(out.t[0], out.t[1], i.a, i.b, i.c + P(20, 0, 0), i.d + P(20, 0, 0));
                  }));
BENCHMARK_CAPTURE(OneCall, MinSegmentBetweenTwoLines, Written([](Output& out, const Input& i) {
                      MinSegmentBetweenTwoLines(out.p, out.q, i.a, i.b, i.c, i.d);
                  }));

BENCHMARK_CAPTURE(OneCall, IntSegmSphere,
                  Written([](Output& out, const Input& i) { IntSegmSphere(out.t, i.a, i.b, i.c, i.radius); }));
BENCHMARK_CAPTURE(OneCall, IntSegmCylinder,
                  Written([](Output& out, const Input& i) { IntSegmCylinder(out.t, i.a, i.b, i.c, i.d, i.radius); }));
BENCHMARK_CAPTURE(OneCall, IntSegmCylinderFinite, Written([](Output& out, const Input& i) {
                      IntSegmCylinderFinite(out.t, i.a, i.b, i.c, i.d, i.radius);
                  }));
BENCHMARK_CAPTURE(OneCall, Circle3P2D, [](const Input& i) { return Circle3P2D(i.a, i.b, i.c); });
BENCHMARK_CAPTURE(OneCall, Circle3P3D, [](const Input& i) { return Circle3P3D(i.a, i.b, i.c); });
BENCHMARK_CAPTURE(OneCall, GetSplinePoint, [](const Input& i) { return GetSplinePoint(i.a, i.b, i.c, i.d, 0.3); });
BENCHMARK_CAPTURE(OneCall, Simplify, [](const Input& i) { return Simplify(i.a, i.b, i.c, i.d, 0.1); });

}  // namespace
}  // namespace KM::Bench

BENCHMARK_MAIN();
