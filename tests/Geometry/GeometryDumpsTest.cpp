#include "Geometry/GeometryDumps.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <limits>
#include <type_traits>

#include "Support/CommaLocale.h"
#include "Support/Numbers.h"
#include "Support/TempFolder.h"

namespace KM {
namespace {

using Test::CommaLocale;
using Test::Numbers;
using Test::TempFolder;
using P = TPoint<double>;
using Points = std::vector<P>;
using Loops = std::vector<Points>;
using Groups = std::vector<Loops>;
using Names = std::vector<std::string>;

static_assert(std::is_same_v<decltype(&PartsPath), const std::string (*)()>);

const Points TwoPoints = {P(1, 2, 3), P(-0.5, 0.0000004, 1e6)};
const Points OnePoint = {P(4, 5, 6)};

const std::string PolylineOfTwo =
    "\n"
    "[kmSend,\"!CdLnPoly\"]\n"
    "[kmInitCmd,CdLnPoly,<15,1><28,0>]\n"
    "[kmSendEvtOpt,1,0,1,6,\"1.000000,2.000000,3.000000\"]\n"
    "[kmSendEvtOpt,1,0,-1,6,\"1.000000,2.000000,3.000000\"]\n"
    "[kmSendEvtOpt,1,0,1,6,\"-0.500000,0.000000,1000000.000000\"]\n"
    "[kmSendEvtOpt,1,0,-1,6,\"-0.500000,0.000000,1000000.000000\"]\n"
    "[kmSendEvtOpt,-1,0,1,2]\n";

const std::string PolylineOfOne =
    "\n"
    "[kmSend,\"!CdLnPoly\"]\n"
    "[kmInitCmd,CdLnPoly,<15,1><28,0>]\n"
    "[kmSendEvtOpt,1,0,1,6,\"4.000000,5.000000,6.000000\"]\n"
    "[kmSendEvtOpt,1,0,-1,6,\"4.000000,5.000000,6.000000\"]\n"
    "[kmSendEvtOpt,-1,0,1,2]\n";

const std::string NewFile =
    "\n\n"
    "[kmSend,\"$CdFileNew\"]\n"
    "[kmFormInitGlbl,UiFileNew,89]\n"
    "[kmSendEvt,\"UiFileNew\",-1,0,0]\n";

std::string WithConfig(const std::string& polylines) {
    return "MACRO main\n\n[kmConfigDefault,1900]\n" + polylines + "\n[kmConfigRestore]\n\nENDMACRO";
}

std::string WithoutGui(const std::string& polylines) {
    return "MACRO main\n\n\n[kmGuiOff]\n" + polylines + "\n\n[kmGuiOn]\n\nENDMACRO";
}

class GeometryDumps : public testing::Test {
protected:
    const char* Path() const { return path_.c_str(); }
    std::string Written() const { return folder_.Bytes("dump"); }

    const TempFolder folder_;

private:
    const std::string path_ = folder_ / "dump";
};

TEST(PartsPath, IsAFolder) { EXPECT_EQ(PartsPath(), "D:/HS/Parts/"); }

TEST_F(GeometryDumps, ListsPoints) {
    Pts2File(Path(), TwoPoints, "w");
    EXPECT_EQ(Written(), "1.000000, 2.000000, 3.000000\n-0.500000, 0.000000, 1000000.000000\n");
}

TEST_F(GeometryDumps, AppendsOrReplaces) {
    Pts2File(Path(), OnePoint, "w");
    Pts2File(Path(), OnePoint, "a");
    EXPECT_EQ(Written(), "4.000000, 5.000000, 6.000000\n4.000000, 5.000000, 6.000000\n");
    Pts2File(Path(), OnePoint, "w");
    EXPECT_EQ(Written(), "4.000000, 5.000000, 6.000000\n");
}

TEST_F(GeometryDumps, ListsLoops) {
    Ptss2File(Path(), {OnePoint, {}, OnePoint}, "w");
    EXPECT_EQ(Written(),
              "Loop #1\n4.000000, 5.000000, 6.000000\n\n"
              "Loop #2\n\n"
              "Loop #3\n4.000000, 5.000000, 6.000000\n\n");
}

TEST_F(GeometryDumps, ListsGroups) {
    Ptsss2File(Path(), {{OnePoint, OnePoint}, {}, {OnePoint}}, "w");
    EXPECT_EQ(Written(),
              "Loops #1\n"
              "Loop #1\n4.000000, 5.000000, 6.000000\n\n"
              "Loop #2\n4.000000, 5.000000, 6.000000\n\n"
              "\n"
              "Loops #2\n"
              "\n"
              "Loops #3\n"
              "Loop #1\n4.000000, 5.000000, 6.000000\n\n"
              "\n");
}

TEST_F(GeometryDumps, PrintsNumbersAsTheCLibraryDoes) {
    std::string expected;
    Points points;
    for (unsigned seed = 0; seed < 2000; ++seed) {
        Numbers numbers(seed);
        const P p = numbers.HostilePoint();
        char line[1200];
        std::snprintf(line, sizeof line, "%f, %f, %f\n", p.X, p.Y, p.Z);
        expected += line;
        points.push_back(p);
    }
    points.push_back(P(-std::numeric_limits<double>::max(), 0.0000005, 0.0000015));
    char line[1200];
    std::snprintf(line, sizeof line, "%f, %f, %f\n", points.back().X, points.back().Y, points.back().Z);
    Pts2File(Path(), points, "w");
    EXPECT_EQ(Written(), expected + line);
}

TEST_F(GeometryDumps, HaveAPointInEachLocale) {
    const CommaLocale comma;
    Pts2File(Path(), OnePoint, "w");
    EXPECT_EQ(Written(), "4.000000, 5.000000, 6.000000\n");
    Pts2Macro(Path(), OnePoint, false, true);
    EXPECT_EQ(Written(), WithConfig(PolylineOfOne));
}

TEST_F(GeometryDumps, DrawAPolyline) {
    Pts2Macro(Path(), TwoPoints, false, true);
    EXPECT_EQ(Written(), WithConfig(PolylineOfTwo));
    Pts2Macro(Path(), TwoPoints, false, false);
    EXPECT_EQ(Written(), WithoutGui(PolylineOfTwo));
    Pts2Macro(Path(), TwoPoints, true, true);
    EXPECT_EQ(Written(), WithConfig(NewFile + PolylineOfTwo));
    Pts2Macro(Path(), TwoPoints, true, false);
    EXPECT_EQ(Written(), WithoutGui(NewFile + PolylineOfTwo));
}

TEST_F(GeometryDumps, DrawOneOfTheLoops) {
    Pts2Macro(Path(), Loops{TwoPoints, OnePoint}, 1, true, false);
    EXPECT_EQ(Written(), WithoutGui(NewFile + PolylineOfOne));
}

TEST_F(GeometryDumps, DrawNoLoopThatIsNotThere) {
    for (const int index : {-1, 2, std::numeric_limits<int>::min(), std::numeric_limits<int>::max()})
        Pts2Macro(Path(), Loops{TwoPoints, OnePoint}, index, false, false);
    Pts2Macro(Path(), Loops{TwoPoints, {}}, 1, false, false);
    EXPECT_EQ(folder_.Names(), Names{});
}

TEST_F(GeometryDumps, DrawLoopsAndPassOverEmptyOnes) {
    Ptss2Macro(Path(), {TwoPoints, {}, OnePoint}, true, true);
    EXPECT_EQ(Written(), WithConfig(NewFile + PolylineOfTwo + PolylineOfOne));
    Ptss2Macro(Path(), {{}, {}}, false, false);
    EXPECT_EQ(Written(), WithoutGui(""));
}

TEST_F(GeometryDumps, DrawAMacroForEachLoop) {
    Ptss2Macros(Path(), {TwoPoints, {}, OnePoint}, true, false);
    EXPECT_EQ(folder_.Names(), (Names{"dump0.mac", "dump2.mac"}));
    EXPECT_EQ(folder_.Bytes("dump0.mac"), WithoutGui(NewFile + PolylineOfTwo));
    EXPECT_EQ(folder_.Bytes("dump2.mac"), WithoutGui(NewFile + PolylineOfOne));
}

TEST_F(GeometryDumps, DrawAllLoopsOfAllGroups) {
    Ptsss2Macro(Path(), {{TwoPoints, OnePoint}, {}, {{}, TwoPoints}}, false, true);
    EXPECT_EQ(Written(), WithConfig(PolylineOfTwo + PolylineOfOne + PolylineOfTwo));
}

TEST_F(GeometryDumps, MakeNoFileForNothing) {
    Pts2File(Path(), {}, "w");
    Ptss2File(Path(), {}, "w");
    Ptsss2File(Path(), {}, "w");
    Pts2Macro(Path(), Points{}, true, true);
    Pts2Macro(Path(), Loops{}, 0, true, true);
    Ptss2Macro(Path(), {}, true, true);
    Ptss2Macros(Path(), {}, true, true);
    Ptsss2Macro(Path(), {}, true, true);
    EXPECT_EQ(folder_.Names(), Names{});
}

TEST_F(GeometryDumps, IgnoreNullAndWhatCannotBeOpened) {
    const std::string nowhere = folder_ / "no/such/folder";
    for (const char* path : {static_cast<const char*>(nullptr), nowhere.c_str()}) {
        Pts2File(path, OnePoint, "w");
        Ptss2File(path, {OnePoint}, "w");
        Ptsss2File(path, {{OnePoint}}, "w");
        Pts2Macro(path, OnePoint, true, true);
        Pts2Macro(path, Loops{OnePoint}, 0, true, true);
        Ptss2Macro(path, {OnePoint}, true, true);
        Ptss2Macros(path, {OnePoint}, true, true);
        Ptsss2Macro(path, {{OnePoint}}, true, true);
    }
    Pts2File(Path(), OnePoint, nullptr);
    Pts2File(Path(), OnePoint, "no mode");
    Pts2File(Path(), OnePoint, "r");
    EXPECT_EQ(folder_.Names(), Names{});
}

}  // namespace
}  // namespace KM
