#pragma once

#include <vector>

#include "Mesh/Core/Pin.h"

// Meshes made in code, for tests and benchmarks. All are built from triangle soups or index triples by the public builders.

namespace KM::Test {

using Soup = std::vector<TPoint<double>>;

/// Points and index triples.
struct IndexedFacets {
    std::vector<TPoint<double>> points;
    std::vector<int> triples;

    Soup AsSoup() const;
};

//  2
//  | \      (0,0,0) (1,0,0) (0,1,0)
//  0 - 1
PIN RightTriangle();

//  3 - 2
//  | \ |    two triangles, (0,1,3) and (1,2,3), with one twin pair
//  0 - 1
PIN UnitSquare();

//  2       4
//  | \   / |   two triangles, (0,1,2) and (1,3,4), with nothing but node 1 in common: a node with two fans
//  0 - 1 - 3
PIN BowTie();

/// The unit cube, closed: 8 nodes, 12 triangles, normals outward.
IndexedFacets CubeFacets();
PIN Cube();

/// One loop of orphans through the points; edge i and node i begin at point i.
PIN OneLoop(const Soup& outline);

/// A flat open sheet of `n` by `n` unit squares, two triangles each, in walk order.
IndexedFacets GridFacets(int n);
PIN Grid(int n);

/// A closed sphere of radius 1: a subdivided octahedron with `n` segments along each of its edges, 8 n^2 triangles.
IndexedFacets SphereFacets(int n);
PIN Sphere(int n);

/// The sphere with bumps (a sum of sines moves each point along its radius), at radius about 100. `n` 354 gives 1,002,528
/// triangles.
IndexedFacets BumpySphereFacets(int n);
PIN BumpySphere(int n);

/// `count` triangles between random nodes: non-manifold, inconsistent, with degenerate and duplicate facets.
IndexedFacets RandomFacets(unsigned seed, int count);
PIN RandomMesh(unsigned seed, int count);

/// The same facets in a random order of triangles, each begun at a random corner; the winding stays.
IndexedFacets Shuffled(IndexedFacets facets, unsigned seed);

/// Takes out up to `count` random twin pairs that lie between two loops, so that loops of more than three edges come to
/// be. The mesh stays sound; the records of the pairs stay in it, dead.
PIN Dissolved(PIN mesh, unsigned seed, int count);

/// The mesh with one field in eight, of edges and of `p2e`, set to a wrong index: negative, far too large, or any edge.
PIN WithBrokenLinks(PIN mesh, unsigned seed);

PIN FromFacets(const IndexedFacets& facets);

}  // namespace KM::Test
