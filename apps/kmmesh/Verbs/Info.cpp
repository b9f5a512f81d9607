#include <filesystem>

#include "MeshReport.h"
#include "Output.h"
#include "PartFile.h"
#include "Verb.h"

namespace KM::Tool {
namespace {

std::string LeftOut(const Part& part) {
    std::string text;
    if (part.equal != 0)
        text += Format("  %-16s%s with two equal corners\n", "left out", Count(part.equal, "triangle").c_str());
    if (part.infinite != 0)
        text +=
            Format("  %-16s%s with a corner that is no number\n", "left out", Count(part.infinite, "triangle").c_str());
    return text;
}

void Run(const Values& values) {
    const std::vector<std::string> files = values.Files("files");
    double done = 0.0;
    for (const std::string& file : files) {
        NextSlice(++done / static_cast<double>(files.size()));
        const Part part = ReadPart(file);
        const std::string name = std::filesystem::path(file).filename().string();
        Print((done == 1.0 ? "" : "\n") + name + ": " + Count(part.read, "triangle") + " in the file\n" +
              LeftOut(part) + TextOf(Measure(part.mesh)));
    }
}

const Verb verb{"info", "counts, extents, boundaries, solids, faults, area and volume of parts", {InputFiles()}, Run};
const Entry<verb> entry;

}  // namespace
}  // namespace KM::Tool
