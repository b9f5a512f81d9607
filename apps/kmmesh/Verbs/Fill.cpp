#include <algorithm>

#include "FlatHoles.h"
#include "LongTask.h"
#include "Mesh/Algorithms/HoleFilling.h"
#include "Mesh/Core/Compaction.h"
#include "Mesh/Core/Loops.h"
#include "Output.h"
#include "PartChange.h"
#include "PartOutput.h"
#include "Verb.h"
#include "WorkingScale.h"

namespace KM::Tool {
namespace {

struct Hole {
    std::vector<int> border;
    double perimeter = 0.0;
    bool isTaken = false;  ///< not longer than wanted
    bool isFlat = false;   ///< filled within its plane
    std::size_t left = 0;  ///< edges that are open at the end
};

std::size_t OpenEdges(const PIN& mesh, const std::vector<int>& border) {
    return static_cast<std::size_t>(std::count_if(
        border.begin(), border.end(), [&](int e) { return mesh.edges[static_cast<std::size_t>(e)].TE == -1; }));
}

/// The longest first.
std::vector<Hole> HolesOf(const PIN& mesh, int mostEdges) {
    std::vector<Hole> holes;
    for (std::vector<int>& border : AllOrphanLoops(mesh)) {
        Hole hole;
        hole.perimeter = LoopLength(mesh, border);
        hole.isTaken = mostEdges < 0 || border.size() <= static_cast<std::size_t>(mostEdges);
        hole.border = std::move(border);
        holes.push_back(std::move(hole));
    }
    std::stable_sort(holes.begin(), holes.end(),
                     [](const Hole& a, const Hole& b) { return a.border.size() > b.border.size(); });
    return holes;
}

void Fill(PIN& mesh, std::vector<Hole>& holes, int mostEdges) {
    LongTask task("Filling", static_cast<double>(holes.size()) + 1.0);
    const double scale = WorkingScale(mesh);
    Scale(mesh, scale);
    FlatHoles flat(mesh);
    double done = 0.0;
    for (Hole& hole : holes) {
        task.At(++done / (static_cast<double>(holes.size()) + 1.0));
        if (!hole.isTaken) continue;
        flat.Fill(hole.border);
        hole.isFlat = OpenEdges(mesh, hole.border) == 0;
    }
    FillHoles(mesh, mostEdges);
    task.At(1.0);
    for (Hole& hole : holes) hole.left = OpenEdges(mesh, hole.border);
    Scale(mesh, 1.0 / scale);
    RebuildNodeEdges(mesh);
}

std::string ResultOf(const Hole& hole, int mostEdges) {
    if (hole.left == 0 && hole.isFlat) return "closed, flat";
    if (hole.left == 0) return hole.isTaken ? "closed" : "closed by its neighbours";
    const std::string left =
        hole.left == hole.border.size() ? "left" : "left in part, " + Count(static_cast<long long>(hole.left), "edge");
    if (!hole.isTaken) return left + ": more than " + Count(mostEdges, "edge");
    if (hole.border.size() == 1) return left + ": one edge alone spans nothing";
    return left + ": its border has no corner that could be cut off";
}

std::string TableOf(const std::vector<Hole>& holes, int mostEdges) {
    if (holes.empty()) return "  holes           none\n";
    std::string text = "    hole   edges     perimeter  result\n";
    std::size_t number = 0;
    std::size_t closed = 0;
    for (const Hole& hole : holes) {
        text += Format("  %6zu  %6zu  %12.6g  %s\n", ++number, hole.border.size(), hole.perimeter,
                       ResultOf(hole, mostEdges).c_str());
        closed += hole.left == 0 ? 1 : 0;
    }
    return text + Format("  closed %zu of %s\n", closed, Count(static_cast<long long>(holes.size()), "hole").c_str());
}

void Run(const Values& values) {
    const int mostEdges = values.Whole("edges");
    ChangeParts(values, [&](const std::string&, PIN& mesh, const MeshReport&) {
        std::vector<Hole> holes = HolesOf(mesh, mostEdges);
        Fill(mesh, holes, mostEdges);
        return TableOf(holes, mostEdges);
    });
}

const Verb verb{
    "fill",
    "closes holes, and tells which and which not",
    {InputFiles(), {"edges", Kind::Whole, "100", "the most edges a hole may have; -1 for any"}, OutputPath(), AsText()},
    Run};
const Entry<verb> entry;

}  // namespace
}  // namespace KM::Tool
