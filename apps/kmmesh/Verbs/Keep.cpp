#include <algorithm>
#include <numeric>

#include "Failure.h"
#include "Mesh/Algorithms/ConnectedSolids.h"
#include "Mesh/Algorithms/LargestSolids.h"
#include "Output.h"
#include "PartChange.h"
#include "PartOutput.h"
#include "Verb.h"

namespace KM::Tool {
namespace {

constexpr int Automatic = -1;

/// Follows the solid of each edge through compaction.
class SolidOfEdges : public TPinManipulationVisitor<TPoint<double>> {
public:
    explicit SolidOfEdges(const PIN& mesh) : solids_(mesh.edges.size()) {
        std::vector<std::vector<int>> solids;
        CollectSolids(mesh, solids);
        for (std::size_t i = 0; i < solids.size(); ++i)
            for (const int e : solids[i]) solids_[static_cast<std::size_t>(e)] = i;
    }

    void MoveEdge(const Edge&, int from, int to) override {
        solids_[static_cast<std::size_t>(to)] = solids_[static_cast<std::size_t>(from)];
    }

    std::size_t operator[](std::size_t edge) const { return solids_[edge]; }

private:
    std::vector<std::size_t> solids_;
};

/// Which of the solids are there still.
std::vector<bool> KeptSolids(PIN& mesh, int count, std::size_t solids) {
    SolidOfEdges solidOf(mesh);
    Keep(mesh, count, solidOf);
    std::vector<bool> isKept(solids, false);
    for (std::size_t e = 0; e < mesh.edges.size(); ++e) isKept[solidOf[e]] = true;
    return isKept;
}

std::string TableOf(const std::vector<SolidReport>& solids, const std::vector<bool>& isKept) {
    std::vector<std::size_t> order(solids.size());
    std::iota(order.begin(), order.end(), std::size_t{0});
    std::stable_sort(order.begin(), order.end(),
                     [&](std::size_t a, std::size_t b) { return solids[a].triangles > solids[b].triangles; });
    std::string text = "   solid  triangles            area          volume  result\n";
    std::size_t number = 0;
    for (const std::size_t i : order) {
        const SolidReport& solid = solids[i];
        const std::string volume = solid.isClosed ? Format("%.9g", solid.volume) : "open";
        text += Format("  %6zu  %9lld  %14.9g  %14s  %s\n", ++number, solid.triangles, solid.area, volume.c_str(),
                       isKept[i] ? "kept" : "erased");
    }
    const long long kept = std::count(isKept.begin(), isKept.end(), true);
    return text + Format("  kept %lld of %s\n", kept, Count(static_cast<long long>(solids.size()), "solid").c_str());
}

void Run(const Values& values) {
    const int count = values.Whole("count");
    if (count < 1 && count != Automatic)
        throw Failure(values.SettingOf("count"), std::to_string(count) + " is neither a number of solids nor -1");
    ChangeParts(values, [&](const std::string& file, PIN& mesh, const MeshReport& before) {
        const std::vector<bool> isKept = KeptSolids(mesh, count, before.each.size());
        if (mesh.edges.empty())
            throw Failure(file, "none of its " + std::to_string(before.each.size()) +
                                    " solids has a twentieth of the edges; --count says how many to keep");
        return TableOf(before.each, isKept);
    });
}

const Verb verb{
    "keep",
    "keeps the largest solids of parts and erases the others",
    {InputFiles(), {"count", Kind::Whole, "-1", "so many; -1: those with 5 % of the edges"}, OutputPath(), AsText()},
    Run};
const Entry<verb> entry;

}  // namespace
}  // namespace KM::Tool
