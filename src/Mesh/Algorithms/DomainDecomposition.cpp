#include "Mesh/Algorithms/DomainDecomposition.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <filesystem>
#include <limits>

#include "Facet/StlCheck.h"
#include "Facet/StlFile.h"
#include "Platform/Files.h"
#include "SlabCut.h"
#include "SlabRow.h"
#include "SlabWriter.h"
#include "Utils/U_App/Progress.h"
#include "Utils/U_App/Services.h"
#include "Utils/U_Debug/Exceptions.h"
#include "Utils/U_Debug/Verbose.h"
#include "Utils/U_IO/FileNames.h"
#include "Utils/U_IO/Files.h"
#include "Utils/U_IO/ToFile.h"

namespace KM {
namespace {

using P = TPoint<double>;
using Verbose::EMessageType;

constexpr Axis Axes[] = {&P::X, &P::Y, &P::Z};
constexpr int AllAxes = 7;
/// The share of the first pass in the whole: the second one also writes.
constexpr double FirstPass = 0.3;
/// How many triangles all slabs together may collect before they write: three megabytes.
constexpr std::size_t MostWaiting = 60000;

[[noreturn]] void Refuse(const std::string& message) {
    Verbose::WriteMessage_1(EMessageType::Error, message);
    throw IO::XFileIOError();
}

[[noreturn]] void RefuseFile(const std::string& file, const std::string& why) {
    Refuse("File: \"" + file + "\": " + why + ". Execution aborted!");
}

[[noreturn]] void RefuseSlab(const std::string& name, const std::string& why) {
    Verbose::WriteMessage_1(EMessageType::Error, "File: \"" + name + "\" " + why + ". Execution aborted!");
    throw 1;
}

void Warn(const std::string& file, const std::string& what) {
    Verbose::WriteMessage_1(EMessageType::Warning, "File: \"" + file + "\": " + what);
}

void CheckInput(const std::string& file) {
    if (!IO::FileExist(file)) Refuse("File: \"" + file + "\" not found. Execution aborted!");
    const std::string folder = IO::FileNameManipulation::Path(file);
    if (!IO::CanIWriteInFolder(folder)) Refuse("I can't write on this path: \"" + folder + "\". Execution aborted!");
}

/// Looks for a stop, and tells the task of the caller how far the work is.
void Report(double fraction) {
    if (Application::Services::AbortEvent()()) throw XUserAbort();
    if (Progress::Auto* const task = Progress::Default().Last()) (*task)(fraction);
}

/// One pass over the file.
/// @param use     called with the nine coordinates of each triangle
/// @param report  called now and then, with the share of the file that has been read
template <class Use, class Pause>
void ForEachTriangle(const std::string& file, Use use, Pause report) {
    const std::string path = Platform::RealPath(file);
    STLReader reader(path);
    if (!reader.IsOpen()) RefuseFile(file, STLFault(path));
    constexpr int between = 1 << 14;  // about a millisecond
    double nine[9] = {};
    for (int untilReport = between; reader.Read(nine); --untilReport) {
        use(nine);
        if (untilReport != 1) continue;
        untilReport = between + 1;
        report(reader.ShareRead());
    }
}

/// What the first pass finds out.
struct Statistics {
    P min{1e20, 1e20, 1e20};
    P max{-1e20, -1e20, -1e20};
    long long triangles = 0;
    long long strange = 0;  ///< triangles with coordinates that are not finite

    void Add(const double* nine) {
        ++triangles;
        // One that is not finite spoils the sum; so can huge ones, which the closer look tells apart.
        const double sum = nine[0] + nine[1] + nine[2] + nine[3] + nine[4] + nine[5] + nine[6] + nine[7] + nine[8];
        if (!std::isfinite(sum)) return AddOneByOne(nine);
        for (int i = 0; i < 9; i += 3) Grow(P(nine[i], nine[i + 1], nine[i + 2]));
    }

private:
    void Grow(const P& p) {
        min = P(std::min(min.X, p.X), std::min(min.Y, p.Y), std::min(min.Z, p.Z));
        max = P(std::max(max.X, p.X), std::max(max.Y, p.Y), std::max(max.Z, p.Z));
    }

    /// An infinite box could not be split, and all sound triangles would be lost.
    void AddOneByOne(const double* nine) {
        bool isStrange = false;
        for (int i = 0; i < 9; ++i) {
            if (!std::isfinite(nine[i])) {
                isStrange = true;
                continue;
            }
            const Axis axis = Axes[i % 3];
            min.*axis = std::min(min.*axis, nine[i]);
            max.*axis = std::max(max.*axis, nine[i]);
        }
        if (isStrange) ++strange;
    }
};

Statistics Collect(const std::string& file) {
    Statistics statistics;
    ForEachTriangle(
        file, [&](const double* nine) { statistics.Add(nine); }, [](double share) { Report(FirstPass * share); });
    const std::string fault = STLFault(Platform::RealPath(file));
    if (!fault.empty()) Warn(file, fault);
    else if (statistics.triangles == 0) Warn(file, "has no triangles");
    if (statistics.strange != 0)
        Warn(file, std::to_string(statistics.strange) + " of its triangles have coordinates that are not finite");
    return statistics;
}

/// 0, 1 or 2. An axis that is not allowed still counts, with the least extent that a box can have; so without any
/// triangle, where the others have less, Z can be the answer all the same.
int AxisToSplit(int axes, const P& extent) {
    constexpr double none = -1e20;
    for (int k = 0; k < 3; ++k)
        if (axes == 1 << k) return k;
    const double x = (axes & 1) != 0 ? extent.X : none;
    const double y = (axes & 2) != 0 ? extent.Y : none;
    const double z = (axes & 4) != 0 ? extent.Z : none;
    const int longer = x > y ? 0 : 1;
    return z > (longer == 0 ? x : y) ? 2 : longer;
}

std::string NameOfSlab(const std::string& base, int axis, int number, int count) {
    const std::string digits = std::to_string(number);
    const bool isPadded = count >= 10 && digits.size() < 2;
    return base + "." + "XYZ"[axis] + "[" + (isPadded ? "0" : "") + digits + " of " + std::to_string(count) + "].stl";
}

/// The slabs with their files, and the second pass.
class Slabs {
public:
    Slabs(const std::string& input, int axis, const Statistics& statistics, double overlap)
        : input_(input),
          axis_(axis),
          min_(statistics.min.*Axes[axis]),
          extent_(statistics.max.*Axes[axis] - min_),
          overlap_(overlap) {
        if (!std::isfinite(extent_)) RefuseFile(input, "is too large to be split");
    }

    void Open(const std::string& base, int count) {
        for (int i = 0; i < count; ++i) {
            const std::string name = NameOfSlab(base, axis_, i + 1, count);
            names_.push_back(name);
            OpenWriter(name, count);
        }
        // Not before: so many files may be out of the question, and then so many limits are, too.
        row_ = SlabRow(min_, extent_, count, overlap_);
    }

    void Fill() {
        ForEachTriangle(
            input_, [this](const double* nine) { Add(nine); },
            [this](double share) {
                for (std::size_t i = 0; i < writers_.size(); ++i)
                    if (writers_[i].HasFailed()) RefuseUnwritten(names_[i]);
                Report(FirstPass + (1.0 - FirstPass) * share);
            });
    }

    void Finish() {
        for (std::size_t i = 0; i < writers_.size(); ++i)
            if (!writers_[i].Finish()) RefuseUnwritten(names_[i]);
    }

    const std::vector<std::string>& Names() const { return names_; }

private:
    void OpenWriter(const std::string& name, int count) {
        const std::string path = Platform::RealPath(name);
        std::error_code ignored;
        if (std::filesystem::equivalent(path, Platform::RealPath(input_), ignored))
            RefuseSlab(name, "is to be written, and is read as well");
        // Hundreds of slabs are open side by side; the few of a usual run get as much at a time as a disk likes.
        writers_.emplace_back(path, std::clamp<std::size_t>(MostWaiting / static_cast<std::size_t>(count), 200, 1300));
        if (!writers_.back().IsOpen()) RefuseSlab(name, "can't be opened for writing");
    }

    [[noreturn]] static void RefuseUnwritten(const std::string& name) {
        RefuseFile(name, "could not be written to its end");
    }

    void Add(const double* nine) {
        const AscendingCorners t = SortedAlong(Axes[axis_], nine);
        const double a = t[0].*Axes[axis_];
        const double c = t[2].*Axes[axis_];
        // The slabs that the triangle meets stand in a row. Behind the last one is one without limits, where the walk ends too.
        for (std::size_t i = row_.FirstReaching(a); row_[i].lo <= c; ++i)
            if (a >= row_[i].lo && row_[i].hi >= c) writers_[i].Add(t);
            else AddPart(t, row_[i], writers_[i]);
    }

    void AddPart(const AscendingCorners& t, const Slab& slab, SlabWriter& writer) {
        CutToSlab(Axes[axis_], t, slab, polygon_);
        // `TriangulateConvexPolygon` gives the same fan, in lists, and -1 for its middle where that is not finite.
        for (std::size_t i = 2; i < polygon_.size(); ++i)
            writer.Add(AscendingCorners{polygon_[0], polygon_[i - 1], polygon_[i]});
    }

    const std::string& input_;
    int axis_;
    double min_;
    double extent_;
    double overlap_;
    std::vector<std::string> names_;
    SlabRow row_;
    std::vector<SlabWriter> writers_;  // by slab
    std::vector<P> polygon_;           // kept for its memory only
};

}  // namespace

const std::vector<std::string> DomainDecomposition(const std::string& file, int domains, int axes, double overlap,
                                                   const std::string& outBase) {
    if ((axes & AllAxes) == 0) return {};
    if (!(overlap > -std::numeric_limits<double>::infinity())) {
        Verbose::WriteMessage_1(EMessageType::Error, "DomainDecomposition: the overlap is no length");
        return {};
    }
    CheckInput(file);
    const Verbose::Scope scope("DomainDecomposition");
    Verbose::WriteMessage_1(EMessageType::Info, "Collect statistic information.");
    const std::string base =
        outBase.empty() ? IO::FileNameManipulation::Path(file) + IO::FileNameManipulation::Name(file) : outBase;
    const Statistics statistics = Collect(file);
    const int axis = AxisToSplit(axes & AllAxes, statistics.max - statistics.min);
    Slabs slabs(file, axis, statistics, overlap);
    Verbose::WriteMessage_1(EMessageType::Info, "Split data in domains.");
    slabs.Open(base, domains);
    slabs.Fill();
    slabs.Finish();
    return slabs.Names();
}

}  // namespace KM
