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

void ChangePart(const std::string& file, const std::string& target, const Values& values, bool isCacheUsed,
                const KeptPartChange& change, const Slice& slice) {
    NextSlice(slice.At(0.4));
    CachedPart part(file, isCacheUsed);
    part.Load();
    const PIN& mesh = part.Value().mesh;
    NextSlice(slice.At(0.6));
    const MeshReport before = Measure(mesh);
    const std::string lines = change(file, part, before);
    NextSlice(slice.end);
    const MeshReport after = Measure(mesh);
    if (after.triangles == 0) throw Failure(file, "would be left without a triangle");
    const auto output = WrittenPart(target, mesh, 1.0, values.IsOn("text"));
    output->Commit();
    Print(Heading(file, part.Value()) + lines + Comparison({{"before", before}, {"after", after}}));
    Tell(target + '\n');
}

void ChangeAll(const Values& values, bool isCacheUsed, const KeptPartChange& change) {
    const std::vector<std::string> files = values.Files("files");
    const std::vector<std::string> targets = TargetsOf(files, values.Text("out"));
    const auto count = static_cast<double>(files.size());
    for (std::size_t i = 0; i < files.size(); ++i)
        ChangePart(files[i], targets[i], values, isCacheUsed, change,
                   {static_cast<double>(i) / count, static_cast<double>(i + 1) / count});
}

}  // namespace

void ChangeParts(const Values& values, const PartChange& change) {
    ChangeAll(values, false, [&](const std::string& file, CachedPart& part, const MeshReport& before) {
        return change(file, part.Value().mesh, before);
    });
}

void ChangeKeptParts(const Values& values, const KeptPartChange& change) {
    ChangeAll(values, !values.IsOn("no-cache"), change);
}

}  // namespace KM::Tool
