#include "Mesh/Algorithms/Normals.h"

#include "LongTask.h"
#include "NodeTable.h"
#include "Output.h"
#include "PartFile.h"
#include "PartOutput.h"
#include "Verb.h"
#include "WorkingScale.h"

namespace KM::Tool {
namespace {

/// Multiplied for the moment: a triangle of a part in metres would count as one without a normal.
std::vector<TPoint<double>> NormalsOf(PIN& mesh, bool isWeighted) {
    const double scale = WorkingScale(mesh);
    std::vector<TPoint<double>> normals;
    Scale(mesh, scale);
    Normals(mesh, normals, isWeighted);
    Scale(mesh, 1.0 / scale);
    return normals;
}

std::string TableOf(const std::string& file, bool isWeighted) {
    Part part = ReadPart(file);
    const std::vector<TPoint<double>> normals = NormalsOf(part.mesh, isWeighted);
    LongTask task("Listing", static_cast<double>(normals.size()));
    NodeTable table(Heading(file, part), "nx ny nz");
    for (std::size_t i = 0; i < normals.size(); ++i) {
        task.Step();
        table.Add(static_cast<int>(i), part.mesh.points[i], {normals[i].X, normals[i].Y, normals[i].Z});
    }
    return table.Text();
}

void Run(const Values& values) {
    const std::vector<std::string> files = values.Files("files");
    const std::string out = values.Text("out");
    const std::vector<std::string> targets =
        out.empty() ? std::vector<std::string>() : TargetsOf(files, out, ".normals.txt");
    for (std::size_t i = 0; i < files.size(); ++i) {
        NextSlice(static_cast<double>(i + 1) / static_cast<double>(files.size()));
        const std::string table = TableOf(files[i], values.IsOn("weighted"));
        if (out.empty()) {
            Print(table);
        } else {
            WriteFile(targets[i], table);
            Tell(targets[i] + '\n');
        }
    }
}

const Verb verb{"normals",
                "lists a normal vector for each node, as text",
                {InputFiles(),
                 {"weighted", Kind::Switch, "N", "triangles count with their area seen along z"},
                 {"out", Kind::Path, "", "file to write, or existing folder; else standard output"}},
                Run};
const Entry<verb> entry;

}  // namespace
}  // namespace KM::Tool
