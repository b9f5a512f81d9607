#include "Output.h"
#include "PartFile.h"
#include "PartOutput.h"
#include "Verb.h"

namespace KM::Tool {
namespace {

using Point = TPoint<double>;

void Run(const Values& values) {
    const std::vector<std::string> files = values.Files("files");
    const std::vector<std::string> targets = TargetsOf(files, values.Text("out"));
    const bool isText = values.IsOn("text");
    for (std::size_t i = 0; i < files.size(); ++i) {
        NextSlice(static_cast<double>(i + 1) / static_cast<double>(files.size()));
        const std::string& target = targets[i];
        StlOutput output(target, isText);
        ReadTriangles(files[i], [&](const double* v) {
            output.Add(Point(v[0], v[1], v[2]), Point(v[3], v[4], v[5]), Point(v[6], v[7], v[8]));
        });
        output.Finish();
        output.Commit();
        Tell(target + ": " + Count(output.Triangles(), "triangle") + (isText ? ", text\n" : ", binary\n"));
    }
}

const Verb verb{"convert",
                "rewrites STL files as text or binary, triangle for triangle",
                {InputFiles(), OutputPath(), AsText()},
                Run};
const Entry<verb> entry;

}  // namespace
}  // namespace KM::Tool
