#include "PartChange.h"

#include "Comparison.h"
#include "Failure.h"
#include "Output.h"
#include "PartFile.h"
#include "PartOutput.h"

namespace KM::Tool {
namespace {

/// The share of the whole progress that a file has.
struct Slice {
    double begin;
    double end;

    double At(double share) const { return begin + share * (end - begin); }
};

void ChangePart(const std::string& file, const std::string& target, bool isText, const PartChange& change,
                const Slice& slice) {
    NextSlice(slice.At(0.4));
    Part part = ReadPart(file);
    NextSlice(slice.At(0.6));
    const MeshReport before = Measure(part.mesh);
    const std::string lines = change(file, part.mesh);
    NextSlice(slice.end);
    const MeshReport after = Measure(part.mesh);
    if (after.triangles == 0) throw Failure(file, "would be left without a triangle");
    const auto output = WrittenPart(target, part.mesh, 1.0, isText);
    output->Commit();
    Print(Heading(file, part) + lines + Comparison({{"before", before}, {"after", after}}));
    Tell(target + '\n');
}

}  // namespace

void ChangeParts(const Values& values, const PartChange& change) {
    const std::vector<std::string> files = values.Files("files");
    const std::vector<std::string> targets = TargetsOf(files, values.Text("out"));
    const auto count = static_cast<double>(files.size());
    for (std::size_t i = 0; i < files.size(); ++i)
        ChangePart(files[i], targets[i], values.IsOn("text"), change,
                   {static_cast<double>(i) / count, static_cast<double>(i + 1) / count});
}

}  // namespace KM::Tool
