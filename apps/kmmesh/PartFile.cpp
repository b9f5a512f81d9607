#include "PartFile.h"

#include <algorithm>
#include <cmath>
#include <filesystem>
#include <fstream>
#include <vector>

#include "Facet/StlCheck.h"
#include "Facet/StlFile.h"
#include "Failure.h"
#include "LongTask.h"
#include "Mesh/Core/Construction.h"
#include "Output.h"

namespace KM::Tool {
namespace {

using Point = TPoint<double>;

/// About how many triangles the file has, told from its beginning: a reader hands out triangles and tells no place.
double GuessedCount(const std::string& file) {
    constexpr std::size_t lookedAt = 65536;
    std::string begin(lookedAt, '\0');
    std::ifstream stream(file, std::ios::binary);
    stream.read(begin.data(), lookedAt);
    begin.resize(static_cast<std::size_t>(stream.gcount()));
    double facets = 0.0;
    for (std::size_t at = begin.find("endfacet"); at != std::string::npos; at = begin.find("endfacet", at + 1))
        ++facets;
    const double bytesEach = facets == 0.0 ? 50.0 : static_cast<double>(begin.size()) / facets;
    std::error_code error;
    return static_cast<double>(std::filesystem::file_size(file, error)) / bytesEach;
}

bool IsFinite(const double* nine) {
    return std::all_of(nine, nine + 9, [](double x) { return std::isfinite(x); });
}

/// Gathers what can become a mesh.
class Gatherer {
public:
    explicit Gatherer(Part& part) : part_(part) {}

    void Take(const double* v) {
        const Point a(v[0], v[1], v[2]), b(v[3], v[4], v[5]), c(v[6], v[7], v[8]);
        if (!IsFinite(v)) ++part_.infinite;
        else if (a == b || b == c || c == a) ++part_.equal;
        else soup_.insert(soup_.end(), {a, b, c});
    }

    const std::vector<Point>& Soup() const { return soup_; }

private:
    Part& part_;
    std::vector<Point> soup_;
};

}  // namespace

long long ReadTriangles(const std::string& file, const std::function<void(const double*)>& take) {
    const std::string fault = STLFault(file);
    if (!fault.empty()) throw Failure(file, fault);
    STLReader reader(file);
    if (!reader.IsOpen()) throw Failure(file, "cannot be opened");
    LongTask task("Reading", GuessedCount(file));
    long long count = 0;
    for (double nine[9] = {}; reader.Read(nine); ++count) {
        task.Step();
        take(nine);
    }
    if (count == 0) throw Failure(file, "holds no triangles");
    return count;
}

Part ReadPart(const std::string& file) {
    Part part;
    Gatherer gatherer(part);
    part.read = ReadTriangles(file, [&](const double* nine) { gatherer.Take(nine); });
    if (gatherer.Soup().empty()) throw Failure(file, "holds no triangles with three different corners");
    LongTask task("Joining", 1.0);
    AddTriangles_1(part.mesh, gatherer.Soup());
    task.At(1.0);
    if (!std::isfinite(DiagonalOf(part.mesh))) throw Failure(file, "is too large: its diagonal is no number");
    return part;
}

std::string Heading(const std::string& file, const Part& part) {
    std::string text = std::filesystem::path(file).filename().string();
    text += ": " + Count(part.read, "triangle") + " in the file\n";
    const auto addLeftOut = [&](long long count, const char* what) {
        if (count != 0) text += Format("  %-16s%s with %s\n", "left out", Count(count, "triangle").c_str(), what);
    };
    addLeftOut(part.equal, "two equal corners");
    addLeftOut(part.infinite, "a corner that is no number");
    return text;
}

bool IsClosed(const PIN& mesh) {
    return std::none_of(mesh.edges.begin(), mesh.edges.end(), [](const Edge& e) { return e.NE != -1 && e.TE == -1; });
}

double DiagonalOf(const PIN& mesh) {
    if (mesh.points.empty()) return 0.0;
    Point low = mesh.points.front();
    Point high = low;
    for (const Point& p : mesh.points) {
        low = {std::min(low.X, p.X), std::min(low.Y, p.Y), std::min(low.Z, p.Z)};
        high = {std::max(high.X, p.X), std::max(high.Y, p.Y), std::max(high.Z, p.Z)};
    }
    return Length(high - low);
}

}  // namespace KM::Tool
