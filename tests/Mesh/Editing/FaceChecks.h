#pragma once

#include <gtest/gtest.h>

#include <climits>
#include <vector>

#include "Geometry/Polygons.h"
#include "Mesh/Core/Loops.h"
#include "Support/BrokenMeshes.h"
#include "Support/MeshChecks.h"
#include "Support/Meshes.h"

// What the tests of faces have in common.

namespace KM::Test {

inline int EdgeCount(const PIN& mesh) { return static_cast<int>(mesh.edges.size()); }

/// The loops of a mesh as points, each from its lowest edge.
inline std::vector<Soup> FaceOutlines(const PIN& mesh) {
    std::vector<Soup> outlines;
    std::vector<char> visited(mesh.edges.size(), 0);
    for (int e = 0; e < EdgeCount(mesh); ++e) {
        if (visited[e] || mesh.edges[e].NE == -1) continue;
        Soup outline;
        for (const int edge : Loop(mesh, e)) {
            visited[edge] = 1;
            outline.push_back(mesh.points[mesh.edges[edge].P0]);
        }
        outlines.push_back(outline);
    }
    return outlines;
}

/// In XY, positive for a face that runs counter-clockwise.
inline double AreaOf(const Soup& outline) { return -0.5 * PointsUtils::SignedArea(outline); }

inline double AreaOf(const std::vector<Soup>& outlines) {
    double area = 0.0;
    for (const Soup& outline : outlines) area += AreaOf(outline);
    return area;
}

/// A sound mesh with loops of many lengths.
inline PIN RandomLoops(unsigned seed) {
    PIN mesh = seed % 3 == 0 ? Grid(6) : seed % 3 == 1 ? Sphere(3) : RandomMesh(seed, 40);
    return Dissolved(mesh, seed, 5 + static_cast<int>(seed % 60));
}

/// Expects that an edit, called as `edit(mesh, e)`, leaves a mesh as it is for what is no alive edge.
template <class Edit>
void ExpectRefusesWhatIsNoEdge(Edit edit) {
    PIN mesh = UnitSquare();
    mesh.edges[2] = Edge();
    const PIN before = mesh;
    for (const int e : {-1, -2, INT_MIN, INT_MAX, EdgeCount(mesh), 2}) {
        SCOPED_TRACE(testing::Message() << "edge " << e);
        edit(mesh, e);
        EXPECT_TRUE(SameRecords(mesh, before));
    }
}

/// Calls an edit on each edge of meshes with broken links: under the sanitizers that is a test of its own.
template <class Edit>
void ExpectSurvivesBrokenLinks(Edit edit) {
    for (unsigned seed = 0; seed < 150; ++seed) {
        SCOPED_TRACE(testing::Message() << "seed " << seed);
        const PIN loops = RandomLoops(seed);
        const PIN broken = seed % 2 == 0 ? Broken(loops, seed) : WithBrokenLinks(loops, seed);
        PIN edited = broken;
        for (int e = -1; e <= EdgeCount(broken); ++e) {
            edit(edited, e);
            ASSERT_LT(EdgeCount(edited), 20000);
        }
    }
}

}  // namespace KM::Test
