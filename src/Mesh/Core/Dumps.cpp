#include "Mesh/Core/Dumps.h"

#include <ostream>

#include "Mesh/Core/FanWalk.h"
#include "Mesh/Core/PreviousEdges.h"

namespace KM {
namespace {

void WriteNode(std::ostream& out, const PIN& mesh, int node) {
    const TPoint<double>& at = mesh.points[node];
    out << "    Node[" << node << "] = {Pt{X = " << at.X << ", Y = " << at.Y << ", Z = " << at.Z
        << "}, AnEdgeIx = " << (static_cast<std::size_t>(node) < mesh.p2e.size() ? mesh.p2e[node] : 0) << "}\n";
}

void WriteEdge(std::ostream& out, const PIN& mesh, int e, PreviousEdges<PIN>& previous) {
    const Edge& edge = mesh.edges[e];
    out << "    Edge[" << e << "] = ";
    if (IsMarkedDead(edge)) {
        out << "Invalid\n";
        return;
    }
    out << "{PE = " << previous.Of(e) << ", ME = " << e << ", NE = " << edge.NE << ", TE = " << edge.TE
        << ", P0 = " << edge.P0 << ", P1 = " << EndNode(mesh, e) << "}\n";
}

}  // namespace

std::ostream& operator<<(std::ostream& out, const Edge& edge) {
    return out << "Edge{NE = " << edge.NE << ", TE = " << edge.TE << ", PO = " << edge.P0 << "}";
}

std::ostream& operator<<(std::ostream& out, const PIN& mesh) {
    PreviousEdges<PIN> previous(mesh);
    out << "\nPIN{\n";
    for (int node = 0; IsNode(mesh, node); ++node) WriteNode(out, mesh, node);
    out << "\n";
    for (int e = 0; IsEdge(mesh, e); ++e) WriteEdge(out, mesh, e, previous);
    return out << "}";
}

}  // namespace KM
