#include <vector>

#include "Geometry/Calls.h"
#include "Geometry/GeometryBench.h"
#include "Km.h"
#include "Support/Numbers.h"

namespace KM::Bench {
namespace {

using P = TPoint<double>;

constexpr int PointCount = 1000000;

struct Case {
    Plane one, two, three;
    P p, q;
};

std::vector<Case> RandomCases() {
    Test::Numbers numbers(1);
    const auto plane = [&numbers] {
        const P normal = numbers.Direction();
        return Plane(normal, numbers.PointBetween(-10.0, 10.0));
    };
    const auto point = [&numbers] { return numbers.PointBetween(-10.0, 10.0); };
    std::vector<Case> cases;
    for (int i = 0; i < InputCount; ++i) cases.push_back({plane(), plane(), plane(), point(), point()});
    return cases;
}

void MeasureCalculations(Report& report, const std::vector<Case>& cases) {
    const std::string floor = "floor: distance, written out";
    MeasureCalls(report, floor, cases,
                 [](const Case& c) { return c.one.a * c.p.X + c.one.b * c.p.Y + c.one.c * c.p.Z + c.one.d; });
    MeasureCalls(
        report, "Plane, three points", cases,
        [](const Case& c) { return Plane(c.p, c.q, P(c.one.a, c.one.b, c.one.c)).d; }, floor);
    MeasureCalls(
        report, "Plane, normal and point", cases, [](const Case& c) { return Plane(c.p, c.q).d; }, floor);
    MeasureCalls(
        report, "Dist", cases, [](const Case& c) { return c.one.Dist(c.p); }, floor);
    MeasureCalls(
        report, "VerticalDist", cases, [](const Case& c) { return c.one.VerticalDist(c.p); }, floor);
    MeasureCalls(
        report, "CachedPoint", cases, [](const Case& c) { return c.one.CachedPoint().Z; }, floor);
    MeasureCalls(
        report, "NearestPtOnPlane", cases, [](const Case& c) { return NearestPtOnPlane(c.one, c.p).X; }, floor);
    MeasureCalls(
        report, "IsParallel", cases, [](const Case& c) { return IsParallel(c.one, c.two, 0.1); }, floor);
    MeasureCalls(
        report, "Intersect", cases, [](const Case& c) { return c.one.Intersect(c.p, c.q).X; }, floor);
    MeasureCalls(
        report, "IntersectSeg", cases,
        [](const Case& c) {
            P out;
            double t = 0.0;
            return c.one.IntersectSeg(c.p, c.q, out, t) + t;
        },
        floor);
    MeasureCalls(
        report, "Intersect2Planes", cases,
        [](const Case& c) {
            P point, direction;
            return Intersect2Planes(c.one, c.two, point, direction) + point.X;
        },
        floor);
    MeasureCalls(
        report, "Intersect3Planes", cases,
        [](const Case& c) {
            P point;
            return Intersect3Planes(c.one, c.two, c.three, point) + point.X;
        },
        floor);
}

void MeasureFits(Report& report) {
    Test::Numbers numbers(2);
    for (const int count : {4, 100, 1000000}) {
        std::vector<std::vector<P>> clouds(static_cast<std::size_t>(PointCount / count));
        for (auto& cloud : clouds)
            for (int i = 0; i < count; ++i) cloud.push_back(numbers.PointBetween(-10.0, 10.0));
        const Work work{"AveragePlane of " + std::to_string(count) + ", an item is a point",
                        static_cast<double>(PointCount)};
        report.Measure(work, [&] {
            double sum = 0.0;
            for (const auto& cloud : clouds) sum += AveragePlane(cloud, 100.0).Second.d;
            return sum;
        });
    }
    std::vector<Plane> planes;
    for (int i = 0; i < 10000; ++i) planes.push_back(Plane(numbers.Direction(), P()));
    report.Measure({"FindNonParallelPlanes of 10000, an item is a plane", 10000.0}, [&] {
        std::vector<long> indices;
        return FindNonParallelPlanes(planes, indices);
    });
}

}  // namespace

void MeasurePlanes() {
    Report report("planes (read \"triangle\" as call)");
    MeasureCalculations(report, RandomCases());
    MeasureFits(report);
}

}  // namespace KM::Bench
