#include "MeshReport.h"
#include "Output.h"
#include "PartFile.h"
#include "Verb.h"

namespace KM::Tool {
namespace {

void Run(const Values& values) {
    const std::vector<std::string> files = values.Files("files");
    double done = 0.0;
    for (const std::string& file : files) {
        NextSlice(++done / static_cast<double>(files.size()));
        const Part part = ReadPart(file);
        const std::string report = TextOf(Measure(part.mesh));
        if (done != 1.0) Print("\n");
        Print(Heading(file, part) + report);
    }
}

const Verb verb{"info", "measures parts: extents, boundaries, solids, faults, volume", {InputFiles()}, Run};
const Entry<verb> entry;

}  // namespace
}  // namespace KM::Tool
