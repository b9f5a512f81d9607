#include <string>
#include <vector>

#include "Digest.h"
#include "Km.h"
#include "Support/Numbers.h"

namespace KM::Test {
namespace {

void AddPlane(Digest& digest, const Plane& plane) {
    digest.Add(plane.Normal());
    digest.Add(plane.d);
}

std::vector<TPoint<double>> RandomPoints(Numbers& numbers, bool isHostile) {
    std::vector<TPoint<double>> points;
    for (int i = 3 + numbers.Below(20); i > 0; --i)
        points.push_back(isHostile ? numbers.HostilePoint() : numbers.PointBetween(-10.0, 10.0));
    return points;
}

void PrintPlanes(const std::string& name, unsigned seed, bool isHostile) {
    Digest digest;
    Numbers numbers(seed);
    for (int round = 0; round < 1000; ++round) {
        const auto points = RandomPoints(numbers, isHostile);
        const Plane one(points[0], points[1], points[2]);
        const Plane other(points[1], points[2]);
        TPoint<double> point, direction;
        double t = 0.0;
        AddPlane(digest, one);
        AddPlane(digest, other);
        digest.Add(one.VerticalDist(points[2]));
        digest.Add(one.Intersect(points[1], points[2]));
        digest.Add(one.IntersectSeg(points[1], points[2], point, t));
        digest.Add(Intersect2Planes(one, other, point, direction));
        digest.Add(Intersect3Planes(one, other, Plane(1, 2, 3, 4), point));
        digest.Add(point);
        digest.Add(direction);
        digest.Add(t);
        const auto fit = AveragePlane(points, 1.0);
        digest.Add(&fit.First, 1);
        AddPlane(digest, fit.Second);
    }
    Print(name + ": planes", digest);
}

void AddRoots(Digest& digest, int count, const double* roots) {
    digest.Add(&count, 1);
    for (int i = 0; i < count; ++i) digest.Add(roots[i]);
}

void PrintRoots(const std::string& name, unsigned seed, bool isHostile) {
    Digest digest;
    Numbers numbers(seed);
    for (int round = 0; round < 10000; ++round) {
        double k[5];
        for (double& item : k) item = isHostile ? numbers.Hostile() : numbers.Between(-10.0, 10.0);
        double roots[4] = {};
        AddRoots(digest, Solver::Quadratic(k[0], k[1], k[2], roots), roots);
        AddRoots(digest, Solver::Cubic(k[0], k[1], k[2], k[3], roots), roots);
        AddRoots(digest, Solver::Quartic(k[0], k[1], k[2], k[3], k[4], roots), roots);
        digest.Add(Solver::Check(k[0], k[1], k[2], k[3], k[4], roots[0]));
    }
    Print(name + ": roots", digest);
}

void AddVector(Digest& digest, const std::vector<double>& items, double value) {
    digest.Add(value);
    for (const double item : items) digest.Add(item);
}

void PrintEigenVectors(const std::string& name, unsigned seed, bool isHostile) {
    Digest digest;
    Numbers numbers(seed);
    for (int round = 0; round < 200; ++round) {
        Matrix<double> A(2 + numbers.Below(4));
        for (int i = 0; i < A.Dimension(); ++i)
            for (int k = 0; k < A.Dimension(); ++k)
                A(i, k) = isHostile ? numbers.Hostile() : numbers.Between(-1.0, 1.0);
        double first, second, symmetric;
        const auto known = EigenVector(A, first);
        AddVector(digest, known, first);
        const auto next = EigenVector(A, known, first, second);
        AddVector(digest, next, second);
        const auto ofSymmetric = EigenVectorSym(A, symmetric);
        AddVector(digest, ofSymmetric, symmetric);

        std::vector<double> levels = known;
        Steps::CreateLevels(levels, 0.1, 0.01, -1.0, 1.0);
        AddVector(digest, levels, 0.0);
    }
    Print(name + ": eigenvectors and levels", digest);
}

}  // namespace

void PrintPlaneAndSolverDigests() {
    for (const bool isHostile : {false, true})
        for (unsigned seed = 0; seed < 5; ++seed) {
            const std::string name = (isHostile ? "hostile numbers " : "numbers ") + std::to_string(seed);
            PrintPlanes(name, seed, isHostile);
            PrintRoots(name, seed, isHostile);
            PrintEigenVectors(name, seed, isHostile);
        }
}

}  // namespace KM::Test
