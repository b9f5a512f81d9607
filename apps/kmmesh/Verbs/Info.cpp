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
    bool isFirst = true;
    for (const std::string& file : values.Files("files")) {
        const Part part = ReadPart(file);
        const std::string name = std::filesystem::path(file).filename().string();
        Print((isFirst ? "" : "\n") + name + ": " + Count(part.read, "triangle") + " in the file\n" + LeftOut(part) +
              TextOf(Measure(part.mesh)));
        isFirst = false;
    }
}

const Verb verb{"info", "counts, extents, boundaries, solids, faults, area and volume of parts", {InputFiles()}, Run};
const Entry<verb> entry;

}  // namespace
}  // namespace KM::Tool
