#include <filesystem>
#include <set>

#include "Failure.h"
#include "LevelFiles.h"
#include "Output.h"
#include "OutputFile.h"
#include "PartFile.h"
#include "Utils/U_App/Progress.h"
#include "Verb.h"

namespace KM::Tool {
namespace {

/// The beginning of the names of all files that are made of an input.
std::string StemOf(const std::string& folder, const std::string& file) {
    return (std::filesystem::path(folder) / std::filesystem::path(file).stem()).string();
}

void CheckStemsDiffer(const std::vector<std::string>& files) {
    std::set<std::string> stems;
    for (const std::string& file : files)
        if (!stems.insert(StemOf("", file)).second)
            throw Failure(file,
                          "another file has this name, and its levels would have the same names; run them one by one");
}

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

void WriteLevel(const std::string& name, const PIN& mesh, const Level& level, bool isText) {
    StlOutput output(name, isText);
    for (const std::array<int, 3>& t : level.triangles)
        output.Add(mesh.points[static_cast<std::size_t>(t[0])], mesh.points[static_cast<std::size_t>(t[1])],
                   mesh.points[static_cast<std::size_t>(t[2])]);
    output.Commit();
    Tell(name + '\n');
}

void WriteFiles(const std::string& stem, const PIN& mesh, const Levels& levels, bool isText) {
    Progress::Auto progress("Writing");
    int done = 0;
    for (const Level& level : levels.All()) {
        WriteLevel(stem + ".level" + std::to_string(level.number) + ".stl", mesh, level, isText);
        progress(++done, static_cast<int>(levels.All().size()));
    }
    const std::string stream = stem + ".levels.bin";
    OutputFile(stream).Write(levels.FileOf(mesh));
    Tell(stream + '\n');
}

Levels Reduced(PIN& mesh, const std::vector<double>& tolerances) {
    const Progress::Auto progress("Reducing");
    return {mesh, tolerances};
}

/// @param begin,end  the slice of the whole progress that this file has
void RunFile(const std::string& file, const Values& values, double begin, double end) {
    NextSlice(begin + 0.4 * (end - begin));
    Part part = ReadPart(file);
    const auto triangles = static_cast<long long>(part.mesh.edges.size()) / 3;
    NextSlice(begin + 0.9 * (end - begin));
    const Levels levels = Reduced(part.mesh, values.Distances("tolerances", DiagonalOf(part.mesh)));
    Print(TableOf(file, triangles, levels.All()));
    NextSlice(end);
    WriteFiles(StemOf(values.Text("out"), file), part.mesh, levels, values.IsOn("text"));
}

void Run(const Values& values) {
    const std::vector<std::string> files = values.Files("files");
    CheckStemsDiffer(files);
    values.Distances("tolerances", 1.0);  // before anything is read, so that a slip costs no time
    const auto count = static_cast<double>(files.size());
    for (std::size_t i = 0; i < files.size(); ++i)
        RunFile(files[i], values, static_cast<double>(i) / count, static_cast<double>(i + 1) / count);
}

const Verb verb{
    "lods",
    "levels of detail: one STL file each, and the level stream",
    {InputFiles(),
     {"tolerances", Kind::Distances, "0,0.01%,0.05%,0.2%,1%", "one level each: lengths, or shares of the diagonal"},
     {"out", Kind::Path, ".", "folder for NAME.level1.stl ... and NAME.levels.bin"},
     {"text", Kind::Switch, "N", "write STL files as text, with six decimals; otherwise binary"}},
    Run};
const Entry<verb> entry;

}  // namespace
}  // namespace KM::Tool
