#include "PartOutput.h"

#include <filesystem>

#include "Failure.h"
#include "LongTask.h"
#include "Triangles.h"

namespace KM::Tool {

namespace fs = std::filesystem;

Option OutputPath() { return {"out", Kind::Path, "", "file to write, or existing folder", true}; }

Option AsText() { return {"text", Kind::Switch, "N", "STL as text, with six decimals; else binary"}; }

std::vector<std::string> TargetsOf(const std::vector<std::string>& files, const std::string& out,
                                   const std::string& ending) {
    std::error_code error;
    const bool isFolder = fs::is_directory(out, error);
    if (files.size() > 1 && !isFolder)
        throw Failure(out, "is no folder, and there are " + std::to_string(files.size()) + " files to write");
    const auto nameOf = [&](const std::string& file) {
        if (!isFolder) return out;
        return ending.empty() ? (fs::path(out) / fs::path(file).filename()).string() : StemOf(out, file) + ending;
    };
    CheckOutputsDiffer(files, nameOf);
    std::vector<std::string> targets;
    for (const std::string& file : files) targets.push_back(nameOf(file));
    return targets;
}

std::string StemOf(const std::string& folder, const std::string& file) {
    return (fs::path(folder) / fs::path(file).stem()).string();
}

std::unique_ptr<StlOutput> WrittenPart(const std::string& name, const PIN& mesh, double factor, bool isText) {
    auto output = std::make_unique<StlOutput>(name, isText);
    LongTask task("Writing", static_cast<double>(mesh.edges.size()) / 3.0);
    const auto at = [&](int node) { return mesh.points[static_cast<std::size_t>(node)] * factor; };
    ForEachTriangle(mesh, [&](int a, int b, int c) {
        task.Step();
        output->Add(at(a), at(b), at(c));
    });
    output->Finish();
    return output;
}

}  // namespace KM::Tool
