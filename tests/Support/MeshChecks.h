#pragma once

#include <array>
#include <string>
#include <vector>

#include "Mesh/Core/Pin.h"

namespace KM::Test {

/// The first thing that is wrong with a mesh, as text, or an empty text. A mesh with dead records can be sound; a compact
/// one has none, and no dead nodes, besides.
template <class Mesh>
std::string FirstUnsoundness(const Mesh& mesh);
template <class Mesh>
std::string FirstUncompactness(const Mesh& mesh);

/// All that `CheckIntegrity` finds, one a line, or an empty text. Coordinates that are not finite do not count: hostile
/// numbers must leave the links sound.
std::string IntegrityFaults(const PIN& mesh);

/// Bit for bit the same points, edges and `p2e`.
template <class Mesh>
bool SameRecords(const Mesh& a, const Mesh& b);

/// Triangles as node triples, each begun at its lowest node (the winding stays), sorted. Dead records are skipped.
template <class Mesh>
std::vector<std::array<int, 3>> TrianglesOf(const Mesh& mesh);

int OrphanCount(const PIN& mesh);

/// Nodes minus edges (a twin pair counts once) plus loops.
int EulerCharacteristic(const PIN& mesh);

}  // namespace KM::Test

/// For tests: names the first broken link.
#define ExpectSound(mesh) EXPECT_EQ(::KM::Test::FirstUnsoundness(mesh), "")
/// For tests: names everything that is wrong. An empty `p2e` is allowed.
#define ExpectIntact(mesh) EXPECT_EQ(::KM::Test::IntegrityFaults(mesh), "")
#define ExpectCompact(mesh) EXPECT_EQ(::KM::Test::FirstUncompactness(mesh), "")
