#include <algorithm>
#include <filesystem>
#include <memory>

#include "CachedResults.h"
#include "LevelFiles.h"
#include "LongTask.h"
#include "Output.h"
#include "PartFile.h"
#include "PartOutput.h"
#include "Verb.h"

namespace KM::Tool {
namespace {

std::string TableOf(const std::string& file, long long triangles, const std::vector<Level>& levels) {
    const std::string name = std::filesystem::path(file).filename().string();
    std::string text =
        name + ": " + Count(triangles, "triangle") + "\n  level  tolerance  triangles    share   strips    words\n";
    for (const Level& level : levels) {
        const auto count = static_cast<double>(level.triangles.size());
        text +=
            Format("  %5d  %9.4g  %9zu  %5.1f %%  %7d  %7d\n", level.number, level.tolerance, level.triangles.size(),
                   100.0 * count / static_cast<double>(triangles), level.strips, level.words);
    }
    return text;
}

using StlOutputs = std::vector<std::unique_ptr<StlOutput>>;

std::unique_ptr<StlOutput> Written(const std::string& name, const PIN& mesh, const Level& level, bool isText,
                                   LongTask& task) {
    auto output = std::make_unique<StlOutput>(name, isText);
    for (const std::array<int, 3>& t : level.triangles) {
        task.Step();
        output->Add(mesh.points[static_cast<std::size_t>(t[0])], mesh.points[static_cast<std::size_t>(t[1])],
                    mesh.points[static_cast<std::size_t>(t[2])]);
    }
    output->Finish();
    return output;
}

StlOutputs WriteLevels(const std::string& stem, const PIN& mesh, const std::vector<Level>& levels, bool isText) {
    double triangles = 0.0;
    for (const Level& level : levels) triangles += static_cast<double>(level.triangles.size());
    LongTask task("Writing", triangles);
    StlOutputs outputs;
    for (const Level& level : levels)
        outputs.push_back(Written(stem + ".level" + std::to_string(level.number) + ".stl", mesh, level, isText, task));
    return outputs;
}

Levels Reduced(PIN& mesh, const std::vector<double>& tolerances) {
    LongTask task("Reducing", 1.0);
    return {mesh, tolerances, [&task](double share) { task.At(share); }};
}

bool AreWithin(const PIN& mesh, const std::vector<Level>& levels) {
    const auto isNode = [&](int node) { return node >= 0 && static_cast<std::size_t>(node) < mesh.points.size(); };
    return std::all_of(levels.begin(), levels.end(), [&](const Level& level) {
        return std::all_of(level.triangles.begin(), level.triangles.end(),
                           [&](const auto& nodes) { return std::all_of(nodes.begin(), nodes.end(), isNode); });
    });
}

std::string InputsOf(const std::vector<double>& tolerances) {
    std::string text = "of tolerances";
    for (const double tolerance : tolerances) text += ' ' + ExactText(tolerance);
    return text;
}

/// @param begin,end  the slice of the whole progress that this file has
void RunFile(const std::string& file, const Values& values, double begin, double end) {
    NextSlice(begin + 0.3 * (end - begin));
    CachedPart part(file, !values.IsOn("no-cache"));
    part.Load();
    PIN& mesh = part.Value().mesh;
    const auto triangles = static_cast<long long>(mesh.edges.size()) / 3;
    const std::string stem = StemOf(values.Text("out"), file);
    const std::string streamName = stem + ".levels.bin";
    OutputFile stream(streamName);  // ahead of the work, which would be lost in a folder that cannot be written
    NextSlice(begin + 0.7 * (end - begin));
    const std::vector<double> tolerances = values.Distances("tolerances", DiagonalOf(mesh));
    Cached<Levels> reduced(
        "levels", InputsOf(tolerances), part, [&] { return Reduced(mesh, tolerances); },
        [&](const Levels& found) { return AreWithin(mesh, found.All()); });
    reduced.Load();
    const Levels& levels = reduced.Value();
    NextSlice(end);
    const StlOutputs outputs = WriteLevels(stem, mesh, levels.All(), values.IsOn("text"));
    stream.Write(levels.FileOf(mesh));

    // All or none: levels of two runs side by side would not fit each other.
    for (const auto& output : outputs) output->Commit();
    stream.Commit();
    TellFound(file, {&part, &reduced});
    Print(TableOf(file, triangles, levels.All()));
    for (const auto& output : outputs) Tell(output->Name() + '\n');
    Tell(streamName + '\n');
}

void Run(const Values& values) {
    const std::vector<std::string> files = values.Files("files");
    CheckOutputsDiffer(files, [](const std::string& file) { return StemOf("", file); });
    values.Distances("tolerances", 1.0);  // before anything is read, so that a slip costs no time
    const auto count = static_cast<double>(files.size());
    for (std::size_t i = 0; i < files.size(); ++i)
        RunFile(files[i], values, static_cast<double>(i) / count, static_cast<double>(i + 1) / count);
}

const Verb verb{"lods",
                "makes levels of detail: STL files, and the level stream",
                {InputFiles(),
                 {"tolerances", Kind::Distances, "0,0.01%,0.05%,0.2%,1%", "lengths, or shares of the diagonal"},
                 {"out", Kind::Path, ".", "folder for NAME.level1.stl ... and NAME.levels.bin"},
                 AsText(),
                 NoCache()},
                Run};
const Entry<verb> entry;

}  // namespace
}  // namespace KM::Tool
