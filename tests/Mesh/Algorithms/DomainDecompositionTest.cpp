#include "Mesh/Algorithms/DomainDecomposition.h"

#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cmath>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <initializer_list>
#include <utility>

#include "Facet/StlFile.h"
#include "PlainDecomposition.h"
#include "Support/InChild.h"
#include "Support/LogCapture.h"
#include "Support/Meshes.h"
#include "Support/Numbers.h"
#include "Support/TempFolder.h"
#include "Utils/U_App/Progress.h"
#include "Utils/U_App/ProgressClock.h"
#include "Utils/U_App/Services.h"
#include "Utils/U_Debug/Exceptions.h"
#include "Utils/U_IO/ToFile.h"

namespace KM {
namespace {

using namespace Test;

using P = TPoint<double>;
using Texts = std::vector<std::string>;
using Triangles = std::vector<Triangle>;
using Verbose::EMessageType;

const double Denormal = 5e-324;
const Triangles OneFacet{{P(0, 0, 0), P(4, 0, 0), P(0, 4, 0)}};

void WriteStl(const std::string& name, const Triangles& triangles, bool isText = false) {
    std::FILE* file = STLOpenWriter(name.c_str(), isText);
    for (const auto& [a, b, c] : triangles) STLWriteFacet(file, a, b, c, isText);
    STLCloseWriter(file, static_cast<int>(triangles.size()), isText);
}

Triangles Read(const std::string& name) {
    STLReader reader(name);
    Triangles triangles;
    for (double t[9]; reader.Read(t);)
        triangles.push_back({P(t[0], t[1], t[2]), P(t[3], t[4], t[5]), P(t[6], t[7], t[8])});
    return triangles;
}

std::uint32_t CountInHeader(const std::string& name) {
    std::ifstream stream(name, std::ios::binary);
    stream.seekg(80);
    std::uint32_t count = 0;
    stream.read(reinterpret_cast<char*>(&count), sizeof count);
    return count;
}

std::string BytesOf(const std::string& name) {
    std::ifstream stream(name, std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(stream), {});
}

double AreaOf(const Triangles& triangles) {
    double area = 0.0;
    for (const auto& [a, b, c] : triangles) area += 0.5 * Length(Cross(b - a, c - a));
    return area;
}

Triangles ToTriangles(const Soup& soup) {
    Triangles triangles;
    for (std::size_t i = 0; i + 2 < soup.size(); i += 3) triangles.push_back({soup[i], soup[i + 1], soup[i + 2]});
    return triangles;
}

/// Corners of a box as triangles without area, so that its extents are these.
Triangles Box(double x, double y, double z) { return {{P(0, 0, 0), P(x, y, z), P(x, 0, 0)}}; }

/// A folder with one file to split, "part.stl".
struct Part : TempFolder {
    explicit Part(const Triangles& triangles, bool isText = false) { WriteStl(Name(), triangles, isText); }
    explicit Part(const std::string& bytes) { TempFolder::Write("part.stl", bytes); }

    std::string Name() const { return *this / "part.stl"; }
    Texts Split(int domains, int axes, double overlap = 0.0) const {
        return DomainDecomposition(Name(), domains, axes, overlap, "");
    }
    Texts In(std::initializer_list<const char*> names) const {
        Texts full;
        for (const char* name : names) full.push_back(*this / name);
        return full;
    }
};

/// What the work throws, as a text.
template <class Work>
std::string Thrown(Work work) {
    try {
        work();
    } catch (const IO::XFileIOError&) {
        return "XFileIOError";
    } catch (const XUserAbort&) {
        return "XUserAbort";
    } catch (int number) {
        return std::to_string(number);
    }
    return "";
}

TEST(DomainDecomposition, WithoutAnAxisTouchesNothing) {
    const Part part(OneFacet);
    LogCapture log;
    for (const int axes : {0, 8, 16, -8}) {
        EXPECT_EQ(part.Split(2, axes), Texts());
        EXPECT_EQ(DomainDecomposition(part / "missing", 2, axes, 0.0, ""), Texts());
    }
    EXPECT_TRUE(log.Lines().empty());
    EXPECT_EQ(part.Names(), Texts{"part.stl"});
}

TEST(DomainDecomposition, MissingFileIsRefused) {
    const TempFolder temp;
    for (const std::string& file : {temp / "missing.stl", temp / "missing/part.stl", std::string()}) {
        LogCapture log;
        EXPECT_EQ(Thrown([&] { DomainDecomposition(file, 2, 1, 0.0, temp / "out"); }), "XFileIOError");
        EXPECT_EQ(log.Lines(), Texts{"<Error>File: \"" + file + "\" not found. Execution aborted!</Error>"});
    }
    EXPECT_TRUE(temp.Names().empty());
}

TEST(DomainDecomposition, FolderOfTheInputHasToBeWritable) {
    const TempFolder temp;
    LogCapture log;
    EXPECT_EQ(Thrown([&] { DomainDecomposition("/proc/version", 2, 1, 0.0, temp / "out"); }), "XFileIOError");
    EXPECT_EQ(log.Lines(), Texts{"<Error>I can't write on this path: \"/proc/\". Execution aborted!</Error>"});
    EXPECT_TRUE(temp.Names().empty());
}

TEST(DomainDecomposition, LogsItsTwoPasses) {
    const Part part(OneFacet);
    LogCapture log;
    part.Split(2, 1);
    ASSERT_EQ(log.Lines().size(), 5u);  // the last two end the scope, with its time
    EXPECT_EQ(log.Lines()[0], "<DomainDecomposition>");
    EXPECT_EQ(log.Lines()[1], "  <Info>Collect statistic information.</Info>");
    EXPECT_EQ(log.Lines()[2], "  <Info>Split data in domains.</Info>");
    EXPECT_EQ(log.Lines()[4], "</DomainDecomposition>");
}

TEST(DomainDecomposition, NamesTellAxisNumberAndCount) {
    const Part part(Box(1, 1, 1));
    EXPECT_EQ(part.Split(1, 1), part.In({"part.X[1 of 1].stl"}));
    EXPECT_EQ(part.Split(2, 2), part.In({"part.Y[1 of 2].stl", "part.Y[2 of 2].stl"}));
    const Texts nine = part.Split(9, 4);
    EXPECT_EQ(nine.back(), part / "part.Z[9 of 9].stl");
    const Texts twelve = part.Split(12, 2);
    ASSERT_EQ(twelve.size(), 12u);
    EXPECT_EQ(twelve.front(), part / "part.Y[01 of 12].stl");
    EXPECT_EQ(twelve.back(), part / "part.Y[12 of 12].stl");
    const Texts many = part.Split(120, 1);
    EXPECT_EQ(many[8], part / "part.X[09 of 120].stl");
    EXPECT_EQ(many[98], part / "part.X[99 of 120].stl");
    EXPECT_EQ(many.back(), part / "part.X[120 of 120].stl");
    for (const Texts& names : {nine, twelve, many})
        for (const std::string& name : names) EXPECT_TRUE(std::filesystem::exists(name)) << name;
}

TEST(DomainDecomposition, BaseIsTheInputWithoutExtensionOrWhatIsGiven) {
    const TempFolder temp;
    for (const char* name : {"a.b.stl", "bare", ".stl"}) WriteStl(temp / name, OneFacet);
    std::filesystem::create_directory(temp / "sub");
    EXPECT_EQ(DomainDecomposition(temp / "a.b.stl", 1, 1, 0.0, ""), Texts{temp / "a.b.X[1 of 1].stl"});
    EXPECT_EQ(DomainDecomposition(temp / "bare", 1, 1, 0.0, ""), Texts{temp / "bare.X[1 of 1].stl"});
    EXPECT_EQ(DomainDecomposition(temp / ".stl", 1, 1, 0.0, ""), Texts{temp / ".X[1 of 1].stl"});
    EXPECT_EQ(DomainDecomposition(temp / "bare", 1, 1, 0.0, temp / "sub/x.stl"),
              Texts{temp / "sub/x.stl.X[1 of 1].stl"});
    EXPECT_EQ(Read(temp / "sub/x.stl.X[1 of 1].stl").size(), 1u);
}

TEST(DomainDecomposition, TakesNamesWithBackSlashes) {
    const Part part(OneFacet);
    const std::string folder = part / "";
    const std::string bent = folder.substr(0, folder.size() - 1) + "\\";
    EXPECT_EQ(DomainDecomposition(bent + "part.stl", 1, 1, 0.0, ""), Texts{bent + "part.X[1 of 1].stl"});
    EXPECT_EQ(Read(part / "part.X[1 of 1].stl").size(), 1u);
}

TEST(DomainDecomposition, ChoosesTheGreatestExtentOfTheAxesAllowed) {
    const struct {
        Triangles triangles;
        int axes;
        char axis;
    } cases[] = {{Box(1, 1, 1), 1, 'X'},
                 {Box(1, 1, 1), 2, 'Y'},
                 {Box(1, 1, 1), 4, 'Z'},
                 {Box(1, 1, 9), 3, 'Y'},  // of the same extent, the later of X and Y
                 {Box(1, 1, 1), 7, 'Y'},
                 {Box(1, 1, 1), 6, 'Y'},
                 {Box(1, 1, 1), 5, 'X'},  // but not Z
                 {Box(2, 1, 1), 3, 'X'},
                 {Box(2, 1, 3), 3, 'X'},
                 {Box(2, 1, 3), 7, 'Z'},
                 {Box(3, 1, 2), 6, 'Z'},
                 {Box(1, 9, 2), 5, 'Z'},
                 {Box(2, 9, 1), 5, 'X'},
                 {Box(0, 0, 0), 7, 'Y'},
                 {Box(1, 2, 3), 8 + 1, 'X'},
                 {Box(1, 2, 3), -1, 'Z'},
                 // Without a triangle, allowed axes have less than others.
                 {{}, 3, 'Z'},
                 {{}, 7, 'Y'},
                 {{}, 5, 'Y'},
                 {{}, 1, 'X'}};
    for (const auto& c : cases) {
        const Part part(c.triangles);
        const Texts names = part.Split(1, c.axes);
        ASSERT_EQ(names.size(), 1u);
        EXPECT_EQ(names[0], part / (std::string("part.") + c.axis + "[1 of 1].stl")) << "axes " << c.axes;
    }
}

TEST(DomainDecomposition, OneDomainHasAllTrianglesSorted) {
    const Part part(Triangles{{P(3, 0, 1), P(1, 0, 2), P(2, 5, 3)}, {P(1, 0, 0), P(1, 1, 1), P(0, 0, 0)}});
    EXPECT_EQ(Read(part.Split(1, 1)[0]),
              (Triangles{{P(1, 0, 2), P(2, 5, 3), P(3, 0, 1)}, {P(0, 0, 0), P(1, 0, 0), P(1, 1, 1)}}));
}

TEST(DomainDecomposition, WithoutDomainsBothPassesRun) {
    for (const int domains : {0, -1, -2147483647 - 1}) {
        const Part part(OneFacet);
        LogCapture log;
        EXPECT_EQ(part.Split(domains, 1), Texts());
        EXPECT_EQ(log.Count(EMessageType::Info), 2);
        EXPECT_EQ(part.Names(), Texts{"part.stl"});
    }
}

TEST(DomainDecomposition, OverlapIsWrittenToBoth) {
    const Triangle inside{P(4.5, 0, 0), P(5, 1, 0), P(5.5, 0, 0)};
    const Part part(Triangles{{P(0, 0, 0), P(1, 1, 0), P(2, 0, 0)}, inside, {P(8, 0, 0), P(9, 1, 0), P(10, 0, 0)}});
    const Texts names = part.Split(2, 1, 1.0);
    EXPECT_EQ(Read(names[0]), (Triangles{{P(0, 0, 0), P(1, 1, 0), P(2, 0, 0)}, inside}));
    EXPECT_EQ(Read(names[1]), (Triangles{inside, {P(8, 0, 0), P(9, 1, 0), P(10, 0, 0)}}));
}

TEST(DomainDecomposition, InfiniteOverlapWritesAllToEach) {
    const Part part(Triangles{{P(0, 0, 0), P(1, 1, 0), P(9, 0, 0)}});
    for (const std::string& name : part.Split(3, 1, Infinity)) EXPECT_EQ(Read(name).size(), 1u);
}

TEST(DomainDecomposition, OverlapThatIsNoLengthIsRefused) {
    for (const double overlap : {NaN, -NaN, -Infinity}) {
        const Part part(OneFacet);
        LogCapture log;
        EXPECT_EQ(part.Split(2, 1, overlap), Texts());
        EXPECT_EQ(log.Texts(EMessageType::Error), Texts{"DomainDecomposition: the overlap is no length"});
        EXPECT_EQ(part.Names(), Texts{"part.stl"});
    }
}

TEST(DomainDecomposition, SingleVertexOnTheLimitGivesNoArea) {
    const Part part(Triangles{{P(0, 0, 0), P(1, 1, 0), P(2, 0, 0)}, {P(3, 0, 0), P(3.5, 1, 0), P(4, 0, 0)}});
    const Texts names = part.Split(2, 1);
    const Triangles second = Read(names[1]);
    ASSERT_EQ(second.size(), 2u);
    EXPECT_EQ(second[0], (Triangle{P(2, 0, 0), P(2, 0, 0), P(2, 0, 0)}));
    EXPECT_EQ(AreaOf({second[0]}), 0.0);
    EXPECT_EQ(Read(names[0]).size(), 1u);
}

TEST(DomainDecomposition, FanEndsWithATriangleWithoutArea) {
    const Part part(OneFacet);
    const Texts names = part.Split(2, 1);
    // The sorted corners are (0,0), (0,4), (4,0).
    EXPECT_EQ(Read(names[0]), (Triangles{{P(2, 0, 0), P(2, 2, 0), P(0, 4, 0)},
                                         {P(2, 0, 0), P(0, 4, 0), P(0, 0, 0)},
                                         {P(2, 0, 0), P(0, 0, 0), P(2, 0, 0)}}));
    // The upper limit goes through the corner (4,0), where both sides reach it.
    EXPECT_EQ(Read(names[1]), (Triangles{{P(2, 0, 0), P(4, 0, 0), P(4, 0, 0)},
                                         {P(2, 0, 0), P(4, 0, 0), P(2, 2, 0)},
                                         {P(2, 0, 0), P(2, 2, 0), P(2, 0, 0)}}));
    EXPECT_EQ(CountInHeader(names[0]), 3u);
    EXPECT_EQ(CountInHeader(names[1]), 3u);
}

/// Triangles that meet the limits of slabs, or lie anywhere, or have strange sizes.
Triangles RandomTriangles(Numbers& next, unsigned kind) {
    Triangles triangles;
    for (int count = 1 + next.Below(40); count > 0; --count) {
        Triangle t;
        for (P& p : t) {
            if (kind == 0) p = next.PointBetween(-7.0, 7.0);
            else if (kind == 1) p = P{1.0 * next.Below(7), 1.0 * next.Below(7), 0.5 * next.Below(3)};
            else p = next.HostilePoint(true);
            // A file holds what fits a float.
            p = P(static_cast<float>(std::clamp(p.X, -1e38, 1e38)), static_cast<float>(std::clamp(p.Y, -1e38, 1e38)),
                  static_cast<float>(std::clamp(p.Z, -1e38, 1e38)));
        }
        triangles.push_back(t);
    }
    return triangles;
}

TEST(DomainDecomposition, IsTheSameBytesAsThePlainForm) {
    for (unsigned seed = 0; seed < 600; ++seed) {
        SCOPED_TRACE(testing::Message() << "seed " << seed);
        Numbers next(seed);
        const Part part(RandomTriangles(next, seed % 3), seed % 5 == 0);
        const int domains = 1 + next.Below(13);
        const int axes = 1 + next.Below(7);
        const double overlaps[] = {0.0, 0.0, 1.0, next.Between(0.0, 3.0), -0.25, -next.Between(0.0, 3.0), Denormal};
        const double overlap = overlaps[next.Below(7)];
        const PlainDecomposition plain(Read(part.Name()), domains, axes, overlap);
        const Texts names = part.Split(domains, axes, overlap);
        ASSERT_EQ(names.size(), plain.slabs.size());
        for (std::size_t i = 0; i < names.size(); ++i) {
            // A name of its own: some file systems wait for the disk when a file is written anew.
            const std::string expected = "plain" + std::to_string(i);
            WriteStl(part / expected, plain.slabs[i]);
            ASSERT_EQ(names[i][names[i].rfind('[') - 1], "XYZ"[plain.axis]);
            ASSERT_TRUE(BytesOf(names[i]) == part.Bytes(expected)) << names[i];
        }
    }
}

TEST(DomainDecomposition, SlabsCoverTheAreaOfTheInput) {
    const Part part(ToTriangles(BumpySphereFacets(40).AsSoup()));
    const double area = AreaOf(Read(part.Name()));
    for (const int axes : {1, 2, 4})
        for (const int domains : {1, 2, 3, 7, 64}) {
            double sum = 0.0;
            for (const std::string& name : part.Split(domains, axes)) sum += AreaOf(Read(name));
            EXPECT_NEAR(sum, area, 1e-6 * area) << domains << " along " << axes;
        }
}

TEST(DomainDecomposition, SlabsStayWithinTheirLimits) {
    const Part part(ToTriangles(BumpySphereFacets(12).AsSoup()));
    double low = 1e20, high = -1e20;
    for (const Triangle& t : Read(part.Name()))
        for (const P& p : t) low = std::min(low, p.Z), high = std::max(high, p.Z);
    const Texts names = part.Split(5, 4, 2.0);
    for (int i = 0; i < 5; ++i)
        for (const Triangle& t : Read(names[static_cast<std::size_t>(i)]))
            for (const P& p : t) {
                EXPECT_GE(p.Z, low + (high - low) * i / 5 - 2.0 - 1e-4);
                EXPECT_LE(p.Z, low + (high - low) * (i + 1) / 5 + 2.0 + 1e-4);
            }
}

TEST(DomainDecomposition, WhatCannotBeReadIsRefused) {
    const TempFolder temp;
    std::filesystem::create_directory(temp / "folder");
    ASSERT_EQ(mkfifo((temp / "pipe").c_str(), 0600), 0);
    const std::pair<const char*, const char*> cases[] = {
        {"folder", "is a folder, not an STL file"},
        {"pipe", "is no plain file"},
        {"f*r", "no such file"}};  // a pattern, of which something is there
    for (const auto& [name, why] : cases) {
        LogCapture log;
        EXPECT_EQ(Thrown([&, n = name] { DomainDecomposition(temp / n, 2, 1, 0.0, temp / "out"); }), "XFileIOError");
        EXPECT_EQ(log.Texts(EMessageType::Error),
                  Texts{"File: \"" + temp / name + "\": " + why + ". Execution aborted!"});
    }
    EXPECT_EQ(temp.Names(), (Texts{"folder", "pipe"}));
}

TEST(DomainDecomposition, NameWithANulIsNoFile) {
    const Part part(OneFacet);
    const std::string nul(1, '\0');
    EXPECT_EQ(Thrown([&] { DomainDecomposition(part.Name() + nul, 1, 1, 0.0, ""); }), "XFileIOError");
    EXPECT_EQ(Thrown([&] { DomainDecomposition(part.Name(), 1, 1, 0.0, part / "a" + nul); }), "1");
    EXPECT_EQ(part.Names(), Texts{"part.stl"});
}

TEST(DomainDecomposition, FaultyFileIsReadAsFarAsItGoesWithAWarning) {
    const Part whole(Triangles{{P(-1, -2, 0), P(1, 0, 0), P(0, 1, 0)}, {P(2, 0, 0), P(3, -7, 0), P(2, 1, 0)}});
    const std::string bytes = BytesOf(whole.Name());
    const struct {
        std::string bytes, fault;
        std::size_t triangles;
    } cases[] = {
        {"", "is empty", 0},
        {bytes.substr(0, 40), "is cut short, or no STL file: it does not end with \"endsolid\"", 0},
        {bytes.substr(0, bytes.size() - 1), "is cut short: its header promises 2 triangles, and 1 are there", 1},
        {bytes.substr(0, 84), "is cut short, or no STL file: it does not end with \"endsolid\"", 0},
        {"solid\nendsolid\n", "has no triangles", 0},
        {std::string(5000, '\0'), "is cut short, or no STL file: it does not end with \"endsolid\"", 0}};
    for (const auto& c : cases) {
        const Part part(c.bytes);
        LogCapture log;
        const Texts names = part.Split(2, 2);
        EXPECT_EQ(log.Texts(EMessageType::Warning), Texts{"File: \"" + part.Name() + "\": " + c.fault});
        EXPECT_EQ(log.Count(EMessageType::Error), 0);
        ASSERT_EQ(names.size(), 2u);
        const bool isRead = Read(names[0]).size() + Read(names[1]).size() > 0;
        EXPECT_EQ(isRead, c.triangles > 0);
    }
}

TEST(DomainDecomposition, EachPrefixOfAFileEndsWell) {
    for (const bool isText : {false, true}) {
        const Part whole(Triangles{{P(-1, -2, 0), P(1, 0, 0), P(0, 1, 0)}, {P(2, 0, 0), P(3, -7, 0), P(2, 1, 0)}},
                         isText);
        const std::string bytes = BytesOf(whole.Name());
        const TempFolder temp;
        for (std::size_t size = 0; size <= bytes.size(); ++size) {
            temp.Write("part.stl", bytes.substr(0, size));
            EXPECT_EQ(DomainDecomposition(temp / "part.stl", 2, 7, 0.1, temp / std::to_string(size)).size(), 2u)
                << size;
        }
    }
}

TEST(DomainDecomposition, NumbersThatAreNotFiniteSpareTheOthers) {
    for (const double odd : {NaN, Infinity, -Infinity}) {
        const Triangle sound{P(-2, 0, 0), P(-1, 1, 0), P(-1, 0, 0)}, other{P(5, 0, 0), P(6, 1, 0), P(6, 0, 1)};
        const Part part(
            Triangles{sound, {P(odd, 0, 0), P(1, 1, 0), P(0, 0, 0)}, {P(0, 0, 0), P(1, odd, 0), P(2, 0, 0)}, other});
        LogCapture log;
        const Texts names = part.Split(4, 1);
        EXPECT_EQ(log.Texts(EMessageType::Warning),
                  Texts{"File: \"" + part.Name() + "\": 2 of its triangles have coordinates that are not finite"});
        EXPECT_EQ(Read(names.front()).at(0), sound);
        EXPECT_EQ(Read(names.back()).back(), other);
    }
}

TEST(DomainDecomposition, CutPartsThatAreNotFiniteStay) {
    const Triangle odd{P(0, NaN, 0), P(1, 1, 0), P(4, 0, 0)};
    const Part part(Triangles{odd});
    const Texts names = part.Split(2, 1);
    EXPECT_EQ(Read(names[0]).size(), 3u);
    EXPECT_EQ(Read(names[1]).size(), 3u);
    EXPECT_EQ(Read(names[0])[1][1], P(1, 1, 0));
}

TEST(DomainDecomposition, FullBuffersAreWrittenInOrder) {
    Triangles triangles;
    for (int i = 0; i < 5000; ++i) triangles.push_back({P(i, 0, 0), P(i + 0.25, 1, 0), P(i + 0.5, 0, 1)});
    const Part part(triangles);
    EXPECT_EQ(Read(part.Split(1, 1)[0]), triangles);
}

TEST(DomainDecomposition, ExtentBeyondAllNumbersIsRefused) {
    const Part part(std::string("solid\nvertex -1.7e308 0 0 vertex 1.7e308 0 0 vertex 0 1 0\nendsolid\n"));
    LogCapture log;
    EXPECT_EQ(Thrown([&] { part.Split(2, 1); }), "XFileIOError");
    EXPECT_EQ(log.Texts(EMessageType::Error),
              Texts{"File: \"" + part.Name() + "\": is too large to be split. Execution aborted!"});
    EXPECT_EQ(part.Split(2, 2).size(), 2u);
}

TEST(DomainDecomposition, SlabThatCannotBeMadeThrowsOneAndEarlierOnesStay) {
    const Part part(OneFacet);
    std::filesystem::create_directory(part / "part.X[2 of 3].stl");
    LogCapture log;
    EXPECT_EQ(Thrown([&] { part.Split(3, 1); }), "1");
    EXPECT_EQ(log.Texts(EMessageType::Error),
              Texts{"File: \"" + part / "part.X[2 of 3].stl" + "\" can't be opened for writing. Execution aborted!"});
    EXPECT_EQ(part.Names(), (Texts{"part.X[1 of 3].stl", "part.X[2 of 3].stl", "part.stl"}));
    EXPECT_EQ(part.Bytes("part.X[1 of 3].stl").size(), 84u);
    EXPECT_EQ(Thrown([&] { DomainDecomposition(part.Name(), 1, 1, 0.0, part / "missing/out"); }), "1");
}

TEST(DomainDecomposition, MoreSlabsThanFilesThrowOne) {
    const Part part(OneFacet);
    EXPECT_EQ(InChild([&] {
                  const rlimit few{40, 40};
                  setrlimit(RLIMIT_NOFILE, &few);
                  return Thrown([&] { part.Split(2147483647, 1); });
              }),
              "1");
}

TEST(DomainDecomposition, InputIsNeverOverwritten) {
    const TempFolder temp;
    const std::string input = temp / "part.X[1 of 1].stl";
    WriteStl(input, OneFacet);
    const std::string bytes = BytesOf(input);
    std::filesystem::create_symlink(input, temp / "soft.X[1 of 1].stl");
    std::filesystem::create_hard_link(input, temp / "hard.X[1 of 1].stl");
    for (const char* base : {"part", "soft", "hard", "./part"}) {
        LogCapture log;
        EXPECT_EQ(Thrown([&] { DomainDecomposition(input, 1, 1, 0.0, temp / base); }), "1") << base;
        EXPECT_EQ(log.Count(EMessageType::Error), 1);
        EXPECT_TRUE(BytesOf(input) == bytes) << base;
    }
    EXPECT_EQ(DomainDecomposition(input, 1, 1, 0.0, "").size(), 1u);
    EXPECT_TRUE(BytesOf(input) == bytes);
}

/// Wants to stop at the given look.
class StopAt : public Application::AbortEventPolicy {
public:
    explicit StopAt(int look) : left_(look) { Application::Services::AbortEvent(*this); }
    ~StopAt() override { Application::Services::AbortEvent(before_); }
    StopAt(const StopAt&) = delete;
    StopAt& operator=(const StopAt&) = delete;

    bool operator()() const override { return left_-- == 0; }
    int Left() const { return left_; }

private:
    const AbortEventPolicy& before_ = Application::Services::AbortEvent();
    mutable int left_;
};

TEST(DomainDecomposition, FullDiskIsRefusedBeforeTheEnd) {
    // So large that the disk is found full while there is much to read.
    for (const bool isLarge : {false, true}) {
        const Part part(isLarge ? Triangles(100000, OneFacet[0]) : OneFacet);
        std::filesystem::create_symlink("/dev/full", part / "part.X[1 of 1].stl");
        LogCapture log;
        const StopAt never(1000);
        EXPECT_EQ(Thrown([&] { part.Split(1, 1); }), "XFileIOError");
        EXPECT_EQ(log.Texts(EMessageType::Error), Texts{"File: \"" + part / "part.X[1 of 1].stl" +
                                                        "\": could not be written to its end. Execution aborted!"});
        EXPECT_EQ(log.Count(EMessageType::Info), 2);
        if (isLarge) {
            EXPECT_LT(1000 - never.Left(), 8 + 6);  // both passes would be twelve looks, beside those of the log
        }
    }
}

TEST(DomainDecomposition, CanBeStoppedInBothPassesAndCountsNothingThen) {
    const Part part(Triangles(50000, OneFacet[0]));
    int looks = 0;
    {
        const StopAt never(1000);
        part.Split(2, 1);
        looks = 1000 - never.Left();
    }
    ASSERT_GE(looks, 6);
    for (int look = 0; look < looks; ++look) {
        const TempFolder temp;
        const StopAt now(look);
        EXPECT_EQ(Thrown([&] { DomainDecomposition(part.Name(), 2, 1, 0.0, temp / "out"); }), "XUserAbort") << look;
        for (const std::string& name : temp.Names()) EXPECT_EQ(CountInHeader(temp / name), 0u);
        if (look == looks - 1) {
            EXPECT_EQ(temp.Names().size(), 2u);
        }
    }
}

/// Keeps all reports of progress, which else are one a second.
class Reports : public Application::StatusPolicy {
public:
    Reports() {
        Application::Services::Status(*this);
        Progress::SetSecondsClock([] {
            static long long second = 0;
            return ++second;
        });
    }
    ~Reports() override {
        Progress::SetSecondsClock(nullptr);
        Application::Services::Status(before_);
    }
    Reports(const Reports&) = delete;
    Reports& operator=(const Reports&) = delete;

    void operator()(double global, double, const std::string& text) const override {
        shares.push_back(global);
        EXPECT_EQ(text, "Split");
    }

    mutable std::vector<double> shares;

private:
    const StatusPolicy& before_ = Application::Services::Status();
};

TEST(DomainDecomposition, ReportsToTheTaskThatRuns) {
    for (const bool isText : {false, true}) {
        const Part part(Triangles(50000, OneFacet[0]), isText);
        const Reports reports;
        part.Split(2, 1);
        EXPECT_TRUE(reports.shares.empty());  // nobody runs
        Progress::Auto task("Split");
        task.SubTask(0.5);
        reports.shares.clear();
        part.Split(2, 1);
        EXPECT_EQ(reports.shares.size(), 6u);
        EXPECT_TRUE(std::is_sorted(reports.shares.begin(), reports.shares.end()));
        EXPECT_GT(reports.shares.front(), 0.0);
        EXPECT_GT(reports.shares.back(), 0.3);
        EXPECT_LE(reports.shares.back(), 0.5);
    }
}

/// Bytes of address space that this process has now.
rlim_t AddressSpace() {
    std::ifstream pages("/proc/self/statm");
    rlim_t count = 0;
    pages >> count;
    return count * static_cast<rlim_t>(sysconf(_SC_PAGESIZE));
}

constexpr rlim_t Mega = 1000000;

/// A binary file of so many blocks of 20,000 small triangles, which lie between 0 and 100 in X: a megabyte a block.
std::uint32_t WriteLargeFile(const std::string& name, std::uint32_t blocks) {
    Numbers next(1);
    Triangles triangles(20000);
    for (Triangle& t : triangles) {
        const P p = next.PointBetween(0.0, 100.0);
        t = {p, p + P(0.1, 0.0, 0.0), p + P(0.0, 0.1, 0.1)};
    }
    WriteStl(name, triangles);
    const std::string records = BytesOf(name).substr(84);
    std::FILE* file = STLOpenWriter(name.c_str(), false);
    for (std::uint32_t i = 0; i < blocks; ++i) std::fwrite(records.data(), 1, records.size(), file);
    STLCloseWriter(file, static_cast<int>(blocks * 20000), false);
    return blocks * 20000;
}

TEST(DomainDecomposition, AGigabyteNeedsNoMoreThanAHundredMegabytes) {
    const TempFolder temp;
    const std::string name = temp / "large.stl";
#ifdef __SANITIZE_ADDRESS__
    constexpr std::uint32_t blocks = 100;  // a tenth of the speed, and memory of its own that no limit counts
#else
    constexpr std::uint32_t blocks = 1000;
#endif
    const std::uint32_t triangles = WriteLargeFile(name, blocks);
    ASSERT_EQ(std::filesystem::file_size(name), 84u + 50u * std::uintmax_t{triangles}) << "no room on the disk?";
    EXPECT_EQ(InChild([&] {
                  // A program with a sanitizer has terabytes before it begins.
                  const rlim_t limit = std::max(100 * Mega, AddressSpace() + 20 * Mega);
                  const rlimit limits{limit, limit};
                  if (setrlimit(RLIMIT_AS, &limits) != 0) return std::string("no limit");
                  const std::string thrown = Thrown([&] { DomainDecomposition(name, 4, 1, 0.0, ""); });
                  return thrown.empty() ? "done" : thrown;
              }),
              "done");
    std::uint64_t sum = 0;
    for (const char* slab :
         {"large.X[1 of 4].stl", "large.X[2 of 4].stl", "large.X[3 of 4].stl", "large.X[4 of 4].stl"}) {
        const std::uint32_t count = CountInHeader(temp / slab);
        EXPECT_EQ(std::filesystem::file_size(temp / slab), 84u + 50u * std::uintmax_t{count});
        // The blocks are all the same, and so is what becomes of them.
        EXPECT_EQ(count % blocks, 0u);
        EXPECT_GT(count, triangles / 5);
        sum += count;
    }
    EXPECT_GE(sum, triangles);
}

}  // namespace
}  // namespace KM
