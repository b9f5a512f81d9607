#pragma once

#include <string>
#include <vector>

#include "Mesh/Core/Pin.h"

namespace KM::Tool {

/// The measures of one solid: a piece that hangs together by its edges.
struct SolidReport {
    long long triangles = 0;
    double area = 0.0;     ///< square units
    double volume = 0.0;   ///< cubic units; of no meaning for an open one
    bool isClosed = true;  ///< without boundary
};

/// The measures of a mesh that people ask for, whatever was done to it.
struct MeshReport {
    /// A height below this share of the longest side counts as none: about what single precision can hold.
    static constexpr double ThinShare = 1e-7;

    long long nodes = 0;  ///< with an edge
    long long triangles = 0;
    TPoint<double> low;  ///< of the nodes; both corners are zero for an empty mesh
    TPoint<double> high;
    std::vector<long long> boundaries;  ///< edges of each, longest first
    long long boundaryEdges = 0;
    long long solids = 0;            ///< pieces that hang together by their edges
    std::vector<SolidReport> each;   ///< of them, in the order of their lowest edges
    long long closedSolids = 0;      ///< without boundary
    long long insideOut = 0;         ///< closed, with a negative volume: a cavity, or turned over
    long long nonManifoldEdges = 0;  ///< segments between two nodes with more than two triangles
    long long clashingEdges = 0;     ///< segments that two triangles run in the same direction
    long long degenerate = 0;        ///< triangles without a height
    double area = 0.0;               ///< square units
    double volume = 0.0;             ///< cubic units, of the closed solids
};

/// Loops that are no triangles count as fans of them. Takes n log n time, reports progress and can be stopped.
MeshReport Measure(const PIN& mesh);

/// The lines of the report, each with its name, indented; they end with a line feed.
std::string TextOf(const MeshReport& report);

}  // namespace KM::Tool
