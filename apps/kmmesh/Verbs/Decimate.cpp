#include "Mesh/Algorithms/Decimation.h"

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

std::string Reduced(PIN& mesh, double tolerance) {
    const double scale = WorkingScale(mesh);
    Scale(mesh, scale);
    const PIN before = mesh;
    TPinManipulationVisitor<TPoint<double>> nobody;
    DecimateNodes(mesh, tolerance * scale, nobody);
    Decimate(mesh, tolerance * scale, nobody);
    const Deviation deviation = DeviationOf(before, mesh);
    Scale(mesh, 1.0 / scale);
    return Format("  %-16s%.9g\n", "tolerance", tolerance) +
           Format("  %-16s%.1f %% of the triangles\n", "reduction",
                  100.0 * (1.0 - TrianglesOf(mesh) / TrianglesOf(before))) +
           Format("  %-16s%.6g at most, of nodes of the part from the result\n", "deviation",
                  deviation.ofNodes / scale) +
           Format("  %-16s%.6g at most, of middles of edges of the result from the part\n", "deviation back",
                  deviation.ofEdges / scale);
}

void Run(const Values& values) {
    ChangeParts(values, [&](const std::string&, PIN& mesh) {
        return Reduced(mesh, values.Length("tolerance", DiagonalOf(mesh)));
    });
}

const Verb verb{"decimate",
                "takes out nodes that the surface can spare",
                {InputFiles(),
                 {"tolerance", Kind::Length, "0.01%", "a length, or a share of the diagonal"},
                 OutputPath(),
                 AsText()},
                Run};
const Entry<verb> entry;

}  // namespace
}  // namespace KM::Tool
