#include "Mesh/Algorithms/Decimation.h"

#include <algorithm>

#include "CachedResults.h"
#include "Deviation.h"
#include "Output.h"
#include "PartChange.h"
#include "PartFile.h"
#include "PartOutput.h"
#include "Triangles.h"
#include "Verb.h"
#include "WorkingScale.h"

namespace KM::Tool {
namespace {

double TrianglesOf(const PIN& mesh) {
    double count = 0.0;
    ForEachTriangle(mesh, [&](int, int, int) { ++count; });
    return count;
}

long long OpenEdges(const PIN& mesh) {
    return std::count_if(mesh.edges.begin(), mesh.edges.end(), [](const Edge& e) { return e.NE != -1 && e.TE == -1; });
}

/// Where nodes of a fold go, triangles collapse, and those beyond them lose their neighbours.
std::string TornText(long long more) {
    if (more <= 0) return "";
    return Format("  %-16s%s that had a neighbour have none; a smaller tolerance spares more\n", "torn",
                  Count(more, "edge").c_str());
}

Reduction Reduced(const PIN& part, double tolerance) {
    const double scale = WorkingScale(part);
    PIN before = part;
    Scale(before, scale);
    Reduction result{before, {}};
    TPinManipulationVisitor<TPoint<double>> nobody;
    DecimateNodes(result.mesh, tolerance * scale, nobody);
    Decimate(result.mesh, tolerance * scale, nobody);
    result.deviation = DeviationOf(before, result.mesh);
    result.deviation.ofNodes /= scale;
    result.deviation.ofEdges /= scale;
    Scale(result.mesh, 1.0 / scale);
    return result;
}

std::string LinesOf(const PIN& before, const Reduction& reduction, double tolerance) {
    return Format("  %-16s%.9g\n", "tolerance", tolerance) +
           Format("  %-16s%.1f %% of the triangles\n", "reduction",
                  100.0 * (1.0 - TrianglesOf(reduction.mesh) / TrianglesOf(before))) +
           Format("  %-16s%.6g at most, of nodes of the part from the result\n", "deviation",
                  reduction.deviation.ofNodes) +
           Format("  %-16s%.6g at most, of middles of edges of the result from the part\n", "deviation back",
                  reduction.deviation.ofEdges) +
           TornText(OpenEdges(reduction.mesh) - OpenEdges(before));
}

std::string Change(const std::string& file, CachedPart& part, double tolerance) {
    PIN& mesh = part.Value().mesh;
    Cached<Reduction> reduction("reduction", "of tolerance " + ExactText(tolerance), part,
                                [&] { return Reduced(mesh, tolerance); });
    reduction.Load();
    TellFound(file, {&part, &reduction});
    const std::string lines = LinesOf(mesh, reduction.Value(), tolerance);
    mesh = std::move(reduction.Value().mesh);
    return lines;
}

void Run(const Values& values) {
    ChangeKeptParts(values, [&](const std::string& file, CachedPart& part, const MeshReport&) {
        return Change(file, part, values.Length("tolerance", DiagonalOf(part.Value().mesh)));
    });
}

const Verb verb{"decimate",
                "takes out nodes that the surface can spare",
                {InputFiles(),
                 {"tolerance", Kind::Length, "0.01%", "a length, or a share of the diagonal"},
                 OutputPath(),
                 AsText(),
                 NoCache()},
                Run};
const Entry<verb> entry;

}  // namespace
}  // namespace KM::Tool
