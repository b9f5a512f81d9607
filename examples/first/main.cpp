#include <cstdio>

#include "Km.h"

int main() {
    // Four loose triangles, wound counter-clockwise as seen from outside, become one closed mesh of four nodes.
    const KM::TPoint<double> a(0, 0, 0), b(1, 0, 0), c(0, 1, 0), d(0, 0, 1);
    KM::PIN mesh;
    KM::AddTriangles_1(mesh, {a, c, b, a, b, d, b, c, d, c, a, d});

    std::vector<KM::StripFan> strips;
    const int words = KM::BuildStrips(mesh, strips);
    std::printf("%zu nodes, %zu edges, %zu strips in %d words\n", mesh.points.size(), mesh.edges.size(), strips.size(),
                words);
}
