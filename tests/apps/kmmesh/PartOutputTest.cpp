#include "PartOutput.h"

#include <gtest/gtest.h>

#include "Failure.h"
#include "Support/TempFolder.h"
#include "ToolRun.h"

namespace KM::Tool {
namespace {

using namespace Test;
using Names = std::vector<std::string>;

TEST(TargetsOf, AreTheFileOrLieInTheFolder) {
    const TempFolder folder;
    const std::string here = folder / "";
    EXPECT_EQ(TargetsOf({"a/b.stl"}, "c.stl"), Names{"c.stl"});
    EXPECT_EQ(TargetsOf({"a/b.stl", "c.STL"}, here), (Names{here + "b.stl", here + "c.STL"}));
    EXPECT_EQ(TargetsOf({"a/b.stl"}, here, ".normals.txt"), Names{here + "b.normals.txt"});
    EXPECT_THROW(TargetsOf({"a.stl", "b.stl"}, "c.stl"), Failure);
    EXPECT_THROW(TargetsOf({"a.stl", "b/a.stl"}, here), Failure);
    EXPECT_THROW(TargetsOf({"a.stl", "a.STL"}, here, ".txt"), Failure);
}

TEST(WrittenPart, AppearsWhenItIsCommitted) {
    const TempFolder folder;
    const auto output = WrittenPart(folder / "cube.stl", Cube(), 2.0, false);
    EXPECT_FALSE(folder.Has("cube.stl"));
    output->Commit();
    Soup doubled = CubeFacets().AsSoup();
    for (TPoint<double>& p : doubled) p *= 2.0;
    EXPECT_EQ(CornersOf(folder / "cube.stl"), doubled);
}

}  // namespace
}  // namespace KM::Tool
