#include "Mesh/Core/Dumps.h"

#include <gtest/gtest.h>

#include <climits>
#include <iomanip>
#include <limits>
#include <sstream>
#include <string>

#include "Support/BrokenMeshes.h"
#include "Support/Meshes.h"

namespace KM {
namespace {

using namespace Test;

template <class T>
std::string Text(const T& value) {
    std::ostringstream text;
    text << value;
    return text.str();
}

TEST(EdgeDump, WritesTheThirdLabelWithALetter) {
    EXPECT_EQ(Text(Edge{4, -1, 7}), "Edge{NE = 4, TE = -1, PO = 7}");
    EXPECT_EQ(Text(Edge()), "Edge{NE = -1, TE = -1, PO = -1}");
    EXPECT_EQ(Text(Edge{INT_MAX, INT_MIN, 0}), "Edge{NE = 2147483647, TE = -2147483648, PO = 0}");
}

TEST(MeshDump, EmptyMesh) { EXPECT_EQ(Text(PIN()), "\nPIN{\n\n}"); }

TEST(MeshDump, Triangle) {
    EXPECT_EQ(Text(RightTriangle()),
              "\nPIN{\n"
              "    Node[0] = {Pt{X = 0, Y = 0, Z = 0}, AnEdgeIx = 0}\n"
              "    Node[1] = {Pt{X = 1, Y = 0, Z = 0}, AnEdgeIx = 1}\n"
              "    Node[2] = {Pt{X = 0, Y = 1, Z = 0}, AnEdgeIx = 2}\n"
              "\n"
              "    Edge[0] = {PE = 2, ME = 0, NE = 1, TE = -1, P0 = 0, P1 = 1}\n"
              "    Edge[1] = {PE = 0, ME = 1, NE = 2, TE = -1, P0 = 1, P1 = 2}\n"
              "    Edge[2] = {PE = 1, ME = 2, NE = 0, TE = -1, P0 = 2, P1 = 0}\n"
              "}");
}

TEST(MeshDump, PreviousEdgesOnLoopsOfOtherLengths) {
    PIN mesh;
    mesh.points.resize(2);
    mesh.p2e = {0, 1};
    mesh.edges = {{1, -1, 0}, {0, -1, 1}, {2, -1, 0}, {4, -1, 0}, {5, -1, 1}, {6, -1, 0}, {3, -1, 1}};
    const std::string text = Text(mesh);
    for (const char* line :
         {"Edge[0] = {PE = 1, ME = 0, NE = 1, TE = -1, P0 = 0, P1 = 1}", "Edge[1] = {PE = 0,", "Edge[2] = {PE = 2,",
          "Edge[3] = {PE = 6,", "Edge[4] = {PE = 3,", "Edge[6] = {PE = 5, ME = 6, NE = 3, TE = -1, P0 = 1, P1 = 0}"})
        EXPECT_NE(text.find(line), std::string::npos) << line << text;
}

TEST(MeshDump, DeadEdgeIsInvalidWhateverItsTwinHolds) {
    PIN mesh;
    mesh.edges = {{-1, -1, -1}, {-1, 5, 3}};
    EXPECT_EQ(Text(mesh), "\nPIN{\n\n    Edge[0] = Invalid\n    Edge[1] = Invalid\n}");
}

TEST(MeshDump, ZeroStandsInForMissingNodeEdges) {
    PIN mesh;
    mesh.points = {{1, 2, 3}, {4, 5, 6}};
    mesh.p2e = {-1};
    EXPECT_EQ(Text(mesh),
              "\nPIN{\n"
              "    Node[0] = {Pt{X = 1, Y = 2, Z = 3}, AnEdgeIx = -1}\n"
              "    Node[1] = {Pt{X = 4, Y = 5, Z = 6}, AnEdgeIx = 0}\n"
              "\n}");
    mesh.p2e = {7, 8, 9};
    EXPECT_NE(Text(mesh).find("AnEdgeIx = 8}\n\n}"), std::string::npos) << "an entry beyond the nodes is not written";
}

TEST(MeshDump, NumbersFollowTheStream) {
    PIN mesh;
    mesh.points = {{1.0 / 3.0, -0.0, std::numeric_limits<double>::infinity()}};
    mesh.p2e = {255};
    std::ostringstream text;
    text << std::fixed << std::setprecision(2) << std::hex << mesh;
    EXPECT_EQ(text.str(), "\nPIN{\n    Node[0] = {Pt{X = 0.33, Y = -0.00, Z = inf}, AnEdgeIx = ff}\n\n}");
}

TEST(MeshDump, AStreamThatShowsPlusSignsShowsThemAtEachNumber) {
    PIN mesh;
    mesh.points = {{1, 2, 3}};
    mesh.edges = {{-1, 0, 0}, {1, -1, 0}};
    std::ostringstream text;
    text << std::showpos << mesh;
    EXPECT_EQ(text.str(),
              "\nPIN{\n    Node[+0] = {Pt{X = +1, Y = +2, Z = +3}, AnEdgeIx = +0}\n\n"
              "    Edge[+0] = Invalid\n"
              "    Edge[+1] = {PE = +1, ME = +1, NE = +1, TE = -1, P0 = +0, P1 = +0}\n}");
}

TEST(MeshDump, LinksThatLeadNowhereReadMinusOne) {
    PIN mesh;
    mesh.edges = {{9, 9, 9}, {-2, -1, 0}, {3, -1, 0}, {-1, -1, -1}};
    EXPECT_EQ(Text(mesh),
              "\nPIN{\n\n"
              "    Edge[0] = {PE = -1, ME = 0, NE = 9, TE = 9, P0 = 9, P1 = -1}\n"
              "    Edge[1] = {PE = -1, ME = 1, NE = -2, TE = -1, P0 = 0, P1 = -1}\n"
              "    Edge[2] = {PE = -1, ME = 2, NE = 3, TE = -1, P0 = 0, P1 = -1}\n"
              "    Edge[3] = Invalid\n}");
}

TEST(MeshDump, BrokenMeshesComeToAnEnd) {
    for (unsigned seed = 0; seed < 100; ++seed) {
        SCOPED_TRACE(testing::Message() << "seed " << seed);
        EXPECT_TRUE(Text(Broken(RandomMesh(seed, 40), seed)).ends_with("}"));
    }
}

TEST(MeshDump, OneLoopOfAHundredThousandEdgesIsNoQuadraticWalk) {
    PIN mesh;
    const int count = 100000;
    mesh.points.resize(1);
    for (int e = 0; e < count; ++e) mesh.edges.push_back({(e + 1) % count, -1, 0});
    EXPECT_NE(Text(mesh).find("Edge[0] = {PE = 99999,"), std::string::npos);
}

}  // namespace
}  // namespace KM
