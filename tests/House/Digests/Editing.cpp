#include <cmath>

#include "Digest.h"
#include "Km.h"
#include "Support/Meshes.h"
#include "Support/Numbers.h"

namespace KM::Test {
namespace {

using P = TPoint<double>;

/// NaNs all count as one: their bits depend on the order in which a compiler takes operands.
void Add(Digest& digest, double x) {
    if (std::isnan(x)) x = NaN;
    digest.Add(&x, 1);
}

void Add(Digest& digest, const PIN& mesh) {
    for (const P& p : mesh.points)
        for (const double x : {p.X, p.Y, p.Z}) Add(digest, x);
    digest.Add(mesh.edges);
    digest.Add(mesh.p2e);
}

/// The unit square with its four corners anywhere, split along its diagonal.
void PrintSplits() {
    Digest digest;
    for (unsigned seed = 0; seed < 20000; ++seed) {
        Numbers next(seed);
        PIN mesh = UnitSquare();
        for (P& p : mesh.points) p = seed % 4 == 0 ? next.HostilePoint() : next.PointBetween(-5.0, 5.0);
        std::vector<double> values;
        for (int i = 0; i < 4; ++i) values.push_back(next.Hostile());
        SplitEdge(mesh, values, 1);
        Add(digest, mesh);
        Add(digest, values.back());
    }
    Print("editing: splits with values", digest);
}

/// Removes what can be removed; which ear is cut depends on the last bits of angles.
void PrintRemovals() {
    Digest digest;
    for (unsigned seed = 0; seed < 100; ++seed) {
        Numbers next(seed);
        PIN mesh = seed % 2 == 0 ? BumpySphere(4) : RandomMesh(seed, 100);
        if (seed % 4 == 2)
            for (P& p : mesh.points) p = next.HostilePoint();
        for (int node = 0; node < static_cast<int>(mesh.points.size());)
            if (!RemoveNode(mesh, node)) ++node;
        Add(digest, mesh);
    }
    Print("editing: removal of nodes", digest);
}

}  // namespace

void PrintEditingDigests() {
    PrintSplits();
    PrintRemovals();
}

}  // namespace KM::Test
