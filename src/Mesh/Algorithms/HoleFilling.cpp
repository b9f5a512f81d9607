#include "Mesh/Algorithms/HoleFilling.h"

#include "Mesh/Algorithms/HoleCloser.h"
#include "Mesh/Core/EdgesMap.h"
#include "Mesh/Core/FanWalk.h"
#include "Utils/U_App/Services.h"
#include "Utils/U_Debug/Verbose.h"

namespace KM {
namespace {

using Loops = std::vector<std::vector<int>>;

bool IsWaiting(EdgesMap& map, int start, int end) {
    const int e = map.UseEdge(end, start);
    if (e != -1) map.AddEdge(e, start, end);
    return e != -1;
}

/// Makes twins of opposite orphans. Of orphans that run the same way only the first waits for its opposite.
///
/// @return  true if there are such that run the same way
bool JoinOpposites(PIN& mesh, const Loops& loops) {
    bool hasDoubles = false;
    EdgesMap waiting;
    for (const std::vector<int>& loop : loops)
        for (const int e : loop) {
            const int start = mesh.edges[e].P0;
            const int end = EndNode(mesh, e);
            if (IsWaiting(waiting, start, end)) {
                Application::Services::DumpStream() << "x";
                hasDoubles = true;
            } else if (const int opposite = waiting.UseEdge(start, end); opposite != -1) {
                Application::Services::DumpStream() << "X";
                JoinTwins(mesh, opposite, e);
            } else {
                waiting.AddEdge(e, start, end);
            }
        }
    return hasDoubles;
}

/// Reports opposite orphans that are left on one and the same border. All reports read the same, so it does not matter which
/// border comes first.
void ReportOpposites(const PIN& mesh, const Loops& loops) {
    for (const std::vector<int>& loop : loops) {
        EdgesMap waiting;
        for (const int e : loop) {
            const int start = mesh.edges[e].P0;
            const int end = EndNode(mesh, e);
            if (IsWaiting(waiting, start, end)) continue;
            if (IsWaiting(waiting, end, start))
                Verbose::WriteMessage_1(Verbose::EMessageType::Error, "PIN.ExtraHill: Can't arrive here!");
            else waiting.AddEdge(e, start, end);
        }
    }
}

/// Joins orphans that meet after the holes have been closed.
void ExtraHill(PIN& mesh) {
    // Without doubles each orphan has met its opposite, if there is one.
    if (JoinOpposites(mesh, AllOrphanLoops(mesh))) ReportOpposites(mesh, AllOrphanLoops(mesh));
}

}  // namespace

void FillHoles(PIN& mesh, int maxEdges) {
    Loops loops = AllOrphanLoops(mesh);
    std::erase_if(loops, [&](const std::vector<int>& loop) { return loop.size() > static_cast<unsigned>(maxEdges); });

    // Growth by doubling would take three times the memory of a mesh for a few holes.
    std::size_t count = mesh.edges.size();
    for (const std::vector<int>& loop : loops)
        if (loop.size() > 2) count += 3 * (loop.size() - 2);
    mesh.edges.reserve(count);

    HoleCloser closer(mesh);
    for (const std::vector<int>& loop : loops) closer.Close(loop);
    mesh.p2e.clear();
    ExtraHill(mesh);
}

}  // namespace KM
