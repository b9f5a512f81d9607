#include <unistd.h>

#include <filesystem>

#include "Facet/StlCheck.h"
#include "Failure.h"
#include "LongTask.h"
#include "Mesh/Algorithms/DomainDecomposition.h"
#include "Output.h"
#include "OutputFile.h"
#include "Utils/U_IO/FileNames.h"
#include "Utils/U_IO/Files.h"
#include "Utils/U_IO/ToFile.h"
#include "Verb.h"

namespace KM::Tool {
namespace {

namespace fs = std::filesystem;

std::string StemOf(const std::string& file) { return fs::path(file).stem().string(); }

/// A slip of the keyboard shall not fill a folder: more files than these are seldom open side by side.
constexpr int MostSlabs = 10000;

/// How a part is to be split.
struct Cuts {
    int slabs;
    int axes;
    double overlap;
};

/// A folder in that of the slabs, so that they appear all at once, whole, or not at all. It goes with all that is in it.
class Workshop {
public:
    explicit Workshop(const std::string& out) {
        std::error_code error;
        fs::create_directories(out, error);
        static int number = 0;
        const std::string name = ".kmmesh-" + std::to_string(getpid()) + '-' + std::to_string(++number) + ".tmp";
        folder_ = fs::path(out) / name;
        if (error || !fs::create_directory(folder_, error) || error)
            throw Failure(out, "cannot be written: " + (error ? error.message() : name + " is there already"));
    }
    Workshop(const Workshop&) = delete;
    Workshop& operator=(const Workshop&) = delete;
    ~Workshop() {
        std::error_code ignored;
        fs::remove_all(folder_, ignored);
    }

    std::string operator/(const std::string& name) const { return (folder_ / name).string(); }

private:
    fs::path folder_;
};

/// What has been made, under the names of the workshop.
std::vector<std::string> Made(const std::string& file, const std::string& base, const Cuts& cuts) {
    LongTask task("Splitting", 1.0);  // the library reports to it
    try {
        return DomainDecomposition(file, cuts.slabs, cuts.axes, cuts.overlap, base);
    } catch (const IO::XFileIOError&) {
        throw Failure(file, "could not be split: it cannot be read to its end, is too large, or the disk is full");
    } catch (int) {
        throw Failure(file, "could not be split: " + Count(cuts.slabs, "file") + " cannot be open side by side");
    }
}

std::string TableOf(const std::string& file, const std::vector<std::string>& slabs) {
    const char axis = slabs[0][slabs[0].rfind('[') - 1];
    std::string text = fs::path(file).filename().string() + ": " + Count(static_cast<long long>(slabs.size()), "slab") +
                       " along " + axis + "\n  slab  triangles\n";
    for (std::size_t i = 0; i < slabs.size(); ++i)
        text += Format("  %4zu  %9ju\n", i + 1, (fs::file_size(slabs[i]) - 84) / 50);
    return text;
}

void RunFile(const std::string& file, const std::string& out, const Cuts& cuts) {
    const std::string fault = STLFault(file);
    if (!fault.empty()) throw Failure(file, fault);
    const std::string folder = IO::FileNameManipulation::Path(file);
    if (!IO::CanIWriteInFolder(folder)) throw Failure(file, "lies in a folder that cannot be written");
    const Workshop workshop(out);
    const std::vector<std::string> made = Made(file, workshop / StemOf(file), cuts);
    const std::string table = TableOf(file, made);
    std::vector<fs::path> targets;
    for (const std::string& slab : made) {
        targets.push_back(fs::path(out) / fs::path(slab).filename());
        if (fs::is_directory(targets.back())) throw Failure(targets.back(), "cannot be written: it is a folder");
    }
    for (std::size_t i = 0; i < made.size(); ++i) fs::rename(made[i], targets[i]);
    Print(table);
    for (const fs::path& target : targets) Tell(target.string() + '\n');
}

void Run(const Values& values) {
    const std::vector<std::string> files = values.Files("files");
    const Cuts cuts{values.Whole("slabs"), values.Axes("axes"), values.Number("overlap")};
    CheckOutputsDiffer(files, StemOf);
    double done = 0.0;
    for (const std::string& file : files) {
        NextSlice(++done / static_cast<double>(files.size()));
        RunFile(file, values.Text("out"), cuts);
    }
}

const Verb verb{"split",
                "splits STL files of any size into slabs along an axis",
                {InputFiles(),
                 {"slabs", Kind::Whole, "2", "number of slabs, of equal thickness", false, {1, MostSlabs}},
                 {"axes", Kind::Axes, "xyz", "axes allowed; the one of greatest extent is taken"},
                 {"overlap", Kind::Number, "0", "length by which each slab grows, on both sides", false, {0}},
                 {"out", Kind::Path, ".", "folder for NAME.X[1 of 2].stl ..."}},
                Run};
const Entry<verb> entry;

}  // namespace
}  // namespace KM::Tool
