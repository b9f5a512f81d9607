#include <filesystem>

#include "Failure.h"
#include "Output.h"
#include "OutputFile.h"
#include "PartFile.h"
#include "Verb.h"

namespace KM::Tool {
namespace {

using Point = TPoint<double>;

/// Where the text goes, or the binary file: the name of the input in the folder, or the file that was named.
std::string TargetOf(const std::string& input, const std::string& out) {
    std::error_code error;
    if (!std::filesystem::is_directory(out, error)) return out;
    return (std::filesystem::path(out) / std::filesystem::path(input).filename()).string();
}

void Run(const Values& values) {
    const std::vector<std::string> files = values.Files("files");
    const std::string out = values.Text("out");
    const bool isText = values.IsOn("text");
    if (files.size() > 1 && !std::filesystem::is_directory(out))
        throw Failure(out, "is no folder, and there are " + std::to_string(files.size()) + " files to convert");
    double done = 0.0;
    for (const std::string& file : files) {
        NextSlice(++done / static_cast<double>(files.size()));
        const std::string target = TargetOf(file, out);
        StlOutput output(target, isText);
        ReadTriangles(file, [&](const double* v) {
            output.Add(Point(v[0], v[1], v[2]), Point(v[3], v[4], v[5]), Point(v[6], v[7], v[8]));
        });
        output.Commit();
        Tell(target + ": " + Count(output.Triangles(), "triangle") + (isText ? ", text\n" : ", binary\n"));
    }
}

const Verb verb{"convert",
                "writes STL files anew, text or binary, triangle for triangle",
                {InputFiles(),
                 {"out", Kind::Path, "", "the file to write, or a folder that is there", true},
                 {"text", Kind::Switch, "N", "write text, with six decimals; otherwise binary"}},
                Run};
const Entry<verb> entry;

}  // namespace
}  // namespace KM::Tool
