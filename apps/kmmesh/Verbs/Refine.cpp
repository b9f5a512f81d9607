#include <algorithm>
#include <cmath>

#include "Failure.h"
#include "LongTask.h"
#include "Mesh/Algorithms/Refinement.h"
#include "Output.h"
#include "PartChange.h"
#include "PartFile.h"
#include "PartOutput.h"
#include "Verb.h"
#include "WorkingScale.h"

namespace KM::Tool {
namespace {

double LongestEdge(const PIN& mesh) {
    double longest = 0.0;
    for (const Edge& edge : mesh.edges) {
        if (edge.NE == -1) continue;
        const int end = mesh.edges[static_cast<std::size_t>(edge.NE)].P0;
        longest = std::max(longest, LengthSquared(mesh.points[static_cast<std::size_t>(end)] -
                                                  mesh.points[static_cast<std::size_t>(edge.P0)]));
    }
    return std::sqrt(longest);
}

std::string Refined(const std::string& file, PIN& mesh, double length) {
    const double scale = WorkingScale(mesh);
    Scale(mesh, scale);
    const double before = LongestEdge(mesh);
    LongTask task("Refining", 1.0);
    WatchedRefine(mesh, length * scale, [&task](double share) { task.At(share); });
    const double after = LongestEdge(mesh);
    // The library leaves a mesh as it is, or ends between two rounds, where there is no end in sight.
    constexpr double rounding = 1e-12;
    if (after > length * scale * (1.0 + rounding))
        throw Failure(file,
                      Format("cannot be refined to edges of %.9g: that takes more than 100 million triangles", length));
    Scale(mesh, 1.0 / scale);
    return Format("  %-16s%.9g\n", "length", length) +
           Format("  %-16s%.9g before, %.9g after\n", "longest edge", before / scale, after / scale);
}

void Run(const Values& values) {
    ChangeParts(values, [&](const std::string& file, PIN& mesh, const MeshReport&) {
        return Refined(file, mesh, values.Length("length", DiagonalOf(mesh)));
    });
}

const Verb verb{"refine",
                "halves edges until none is longer than a limit",
                {InputFiles(),
                 {"length", Kind::Length, "1%", "the longest edge: a length, or a share of the diagonal"},
                 OutputPath(),
                 AsText()},
                Run};
const Entry<verb> entry;

}  // namespace
}  // namespace KM::Tool
