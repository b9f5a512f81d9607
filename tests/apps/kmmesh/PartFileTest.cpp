#include "PartFile.h"

#include <gtest/gtest.h>

#include "Failure.h"
#include "Support/MeshChecks.h"
#include "Support/TempFolder.h"
#include "ToolRun.h"

namespace KM::Tool {
namespace {

using namespace Test;

std::string FaultOf(const std::string& file) {
    try {
        ReadPart(file);
    } catch (const Failure& failure) {
        return failure.what();
    }
    return "";
}

TEST(ReadPart, JoinsEqualCorners) {
    const TempFolder folder;
    folder.Write("cube.stl", BinaryStl(CubeFacets().AsSoup()));
    const Part part = ReadPart(folder / "cube.stl");
    EXPECT_EQ(part.read, 12);
    EXPECT_EQ(part.mesh.points.size(), 8u);
    EXPECT_EQ(part.mesh.edges.size(), 36u);
    EXPECT_DOUBLE_EQ(DiagonalOf(part.mesh), std::sqrt(3.0));
}

TEST(ReadPart, LeavesOutWhatIsNoTriangle) {
    const TempFolder folder;
    folder.Write("odd.stl",
                 "solid\n"
                 "vertex 0 0 0\nvertex 1 0 0\nvertex 0 1 0\n"
                 "vertex 0 0 0\nvertex 0 0 0\nvertex 0 1 0\n"
                 "vertex nan 0 0\nvertex 1 0 0\nvertex 0 1 0\n"
                 "vertex 0 0 0\nvertex inf 0 0\nvertex 0 1 0\n"
                 "endsolid\n");
    const Part part = ReadPart(folder / "odd.stl");
    EXPECT_EQ(part.read, 4);
    EXPECT_EQ(part.equal, 1);
    EXPECT_EQ(part.infinite, 2);
    EXPECT_EQ(part.mesh.edges.size(), 3u);
}

TEST(ReadPart, RefusesInOneLineWhatItCannotUse) {
    const TempFolder folder;
    folder.Write("empty.stl", "");
    folder.Write("bare.stl", "solid\nendsolid\n");
    folder.Write("thin.stl", "solid\nvertex 0 0 0\nvertex 0 0 0\nvertex 0 1 0\nendsolid\n");
    folder.Write("huge.stl", "solid\nvertex 0 0 0\nvertex 1e300 0 0\nvertex 0 1e300 0\nendsolid\n");
    const std::pair<const char*, const char*> refused[] = {
        {"missing.stl", "no such file"},
        {"", "is a folder, not an STL file"},
        {"empty.stl", "is empty"},
        {"bare.stl", "holds no triangles"},
        {"thin.stl", "holds no triangles with three different corners"},
        {"huge.stl", "is too large: its diagonal is no number"},
    };
    for (const auto& [name, why] : refused) EXPECT_EQ(FaultOf(folder / name), (folder / name) + ": " + why);
}

TEST(ReadTriangles, GivesAllInOrder) {
    const TempFolder folder;
    const Soup soup = SphereFacets(40).AsSoup();  // more than stand between two looks for a stop
    folder.Write("a.stl", BinaryStl(soup));
    std::size_t next = 0;
    const long long count = ReadTriangles(folder / "a.stl", [&](const double* v) {
        ASSERT_EQ(v[0], static_cast<float>(soup[next].X));
        next += 3;
    });
    EXPECT_EQ(count, 12800);
    EXPECT_EQ(next, soup.size());
}

TEST(DiagonalOf, IsZeroForNothing) { EXPECT_EQ(DiagonalOf(PIN()), 0.0); }

}  // namespace
}  // namespace KM::Tool
