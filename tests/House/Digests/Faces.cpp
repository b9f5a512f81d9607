#include <cmath>
#include <string>
#include <utility>
#include <vector>

#include "Digest.h"
#include "Km.h"
#include "Support/HostilePoints.h"
#include "Support/Meshes.h"
#include "Support/Polygons.h"

namespace KM::Test {
namespace {

void PrintOutline(const std::string& name, const Outline& outline) {
    Digest filled;
    for (const int clockwise : {0, 1}) {
        PIN mesh = OneLoop(outline);
        TriangulatePolygon(mesh, clockwise, 1);
        filled.Add(mesh.edges);
        ToConvexPolygons(mesh, 5);
        filled.Add(mesh.edges);
    }
    Print(name + ": filled and merged", filled);

    Digest cut;
    for (const Outline& piece : ToConvexPolygons(outline)) cut.Add(piece);
    Print(name + ": convex pieces", cut);
}

void PrintRectangles() {
    Digest digest;
    for (unsigned seed = 0; seed < 20000; ++seed) {
        HostilePoints next(seed);
        Outline outline;
        for (unsigned i = 0; i < 4 + seed / 4 % 6; ++i) outline.push_back(next());
        PIN mesh = OneLoop(outline);
        TriangulateRectangle(mesh, 0, 0);
        digest.Add(mesh.edges);
    }
    Print("rectangles", digest);
}

void PrintQuadrilaterals() {
    Digest digest;
    for (unsigned seed = 0; seed < 20000; ++seed) {
        HostilePoints next(seed);
        PIN mesh = FromFacets({{next(), next(), next(), next()}, {0, 1, 2, 1, 0, 3}});
        std::vector<double> values = {1.0, 2.0, 3.0, 4.0};
        SplitQuadrilateral(mesh, values, 0);
        for (const P& p : mesh.points) values.insert(values.end(), {p.X, p.Y, p.Z});
        // The bits of a NaN depend on the order in which a compiler takes operands.
        for (double& x : values)
            if (std::isnan(x)) x = NaN;
        digest.Add(values);
    }
    Print("quadrilaterals", digest);
}

}  // namespace

void PrintFaceDigests() {
    const std::pair<std::string, Outline> outlines[] = {{"circle", Circle(500)},          {"spiral", Spiral(900, 7)},
                                                        {"tenths", Digitised(2000, 0.1)}, {"comb", Comb(100)},
                                                        {"holes", KeyHoles(6, 1e-3)},     {"star", StarShaped(4, 700)}};
    for (const auto& [name, outline] : outlines) PrintOutline("faces, " + name, outline);
    PrintRectangles();
    PrintQuadrilaterals();
}

}  // namespace KM::Test
