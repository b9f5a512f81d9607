#include "Tools/KmPinDraw.h"

#include <gtest/gtest.h>

#include <sstream>
#include <string>
#include <vector>

#include "KmHost.h"
#include "Mesh/Core/PinDrawing.h"
#include "Utils/U_Debug/Exceptions.h"

namespace KM {
namespace {

constexpr double LabelHeight = 0.014999999664723873;

/// Listens to the drawing services, and writes each call as one line.
class DrawLog {
public:
    DrawLog() {
        KmDrawListener listener{};
        listener.user = this;
        listener.setLineColour = [](void* user, int colour) { return Of(user).Write("line colour ", colour); };
        listener.displayLine = [](void* user, const double from[3], const double to[3]) {
            return Of(user).Write("line", Text(from), Text(to));
        };
        listener.setPointColour = [](void* user, int colour) { return Of(user).Write("point colour ", colour); };
        listener.setPointType = [](void* user, int type) { return Of(user).Write("point type ", type); };
        listener.addPoint = [](void* user, const double at[3]) { return Of(user).Write("point", Text(at)); };
        listener.displayAnnotation = [](void* user, const double at[3], const char* text, double height, int colour) {
            EXPECT_EQ(height, LabelHeight);
            Of(user).Write(text, Text(at), " colour ", colour);
            return Of(user).labelCode;
        };
        KmHostSetDrawListener(&listener);
    }
    ~DrawLog() { KmHostSetDrawListener(nullptr); }
    DrawLog(const DrawLog&) = delete;
    DrawLog& operator=(const DrawLog&) = delete;

    std::vector<std::string> lines;
    int labelCode = 0;  ///< what the host answers to a label

private:
    static DrawLog& Of(void* user) { return *static_cast<DrawLog*>(user); }

    static std::string Text(const double at[3]) {
        std::ostringstream text;
        text << " (" << at[0] << ", " << at[1] << ", " << at[2] << ")";
        return text.str();
    }

    template <class... Parts>
    int Write(const Parts&... parts) {
        std::ostringstream line;
        (line << ... << parts);
        lines.push_back(line.str());
        return 0;
    }
};

using Lines = std::vector<std::string>;

Lines Drawn(const PIN& mesh, const DrawSwitches& show) {
    const DrawLog log;
    PinDrawing(mesh, mesh.points).Draw(show);
    return log.lines;
}

//  3 - 2
//  | \ |    edges 0 (0-1), 1 (1-3), 2 (3-0) and 3 (1-2), 4 (2-3), 5 (3-1): 1 and 5 are twins
//  0 - 1
PIN Square() {
    PIN mesh;
    mesh.points = {{0, 0, 0}, {4, 0, 0}, {4, 4, 0}, {0, 4, 0}};
    mesh.edges = {{1, -1, 0}, {2, 5, 1}, {0, -1, 3}, {4, -1, 1}, {5, -1, 2}, {3, 1, 3}};
    mesh.p2e = {0, 3, 4, 2};
    return mesh;
}

TEST(Draw, ShowsNothingWhileTheSwitchesAreOff) {
    const DrawLog log;
    const PIN mesh = Square();
    appl::Draw(mesh);
    appl::Draw(mesh, mesh.points);
    appl::Draw(mesh, {});
    appl::Draw(PIN());
    EXPECT_EQ(log.lines, Lines());
}

TEST(PinDrawing, LabelsAloneShowNothing) {
    DrawSwitches show;
    show.nodeLabels = true;
    show.edgeLabels = true;
    EXPECT_EQ(Drawn(Square(), show), Lines());
}

TEST(PinDrawing, SwitchesStandInTheirOrder) {
    const auto [nodes, nodeLabels, boundaryEdges, innerEdges, edgeLabels] =
        DrawSwitches{true, false, true, false, true};
    EXPECT_TRUE(nodes && boundaryEdges && edgeLabels);
    EXPECT_FALSE(nodeLabels || innerEdges);
}

TEST(PinDrawing, DrawsNodes) {
    PIN mesh = Square();
    mesh.points.resize(2);
    DrawSwitches show;
    show.nodes = true;
    const Lines expected = {"point colour 2", "point type 6", "point (0, 0, 0)",
                            "point colour 2", "point type 6", "point (4, 0, 0)"};
    EXPECT_EQ(Drawn(mesh, show), expected);
}

TEST(PinDrawing, LabelsNodesWithTheirIndices) {
    PIN mesh = Square();
    mesh.points.resize(2);
    DrawSwitches show;
    show.nodes = true;
    show.nodeLabels = true;
    const Lines expected = {"point colour 2", "point type 6", "point (0, 0, 0)", "v0 (0, 0, 0) colour 2",
                            "point colour 2", "point type 6", "point (4, 0, 0)", "v1 (4, 0, 0) colour 2"};
    EXPECT_EQ(Drawn(mesh, show), expected);
}

TEST(PinDrawing, DrawsBoundaryEdges) {
    DrawSwitches show;
    show.boundaryEdges = true;
    const Lines expected = {"line colour 5", "line (0, 0, 0) (4, 0, 0)", "line colour 5", "line (0, 4, 0) (0, 0, 0)",
                            "line colour 5", "line (4, 0, 0) (4, 4, 0)", "line colour 5", "line (4, 4, 0) (0, 4, 0)"};
    EXPECT_EQ(Drawn(Square(), show), expected);
}

TEST(PinDrawing, DrawsInnerEdgesFromBothSidesAndLabelsThemNearTheirStarts) {
    DrawSwitches show;
    show.innerEdges = true;
    show.edgeLabels = true;
    const Lines expected = {"line colour 6", "line (4, 0, 0) (0, 4, 0)", "e1 (3, 1, 0) colour 2",
                            "line colour 6", "line (0, 4, 0) (4, 0, 0)", "e5 (1, 3, 0) colour 2"};
    EXPECT_EQ(Drawn(Square(), show), expected);
}

TEST(PinDrawing, DrawsEverythingNodesFirst) {
    const Lines lines = Drawn(Square(), {true, true, true, true, true});
    ASSERT_EQ(lines.size(), 4U * 4 + 6 * 3);
    EXPECT_EQ(lines[16], "line colour 5");
    EXPECT_EQ(lines[18], "e0 (1, 0, 0) colour 2");
    EXPECT_EQ(lines[19], "line colour 6");
}

TEST(PinDrawing, TakesThePlacesThatItIsGiven) {
    const DrawLog log;
    const PIN mesh = Square();
    DrawSwitches show;
    show.innerEdges = true;
    const std::vector<TPoint<double>> places = {{0, 0, 9}, {1, 1, 1}, {0, 0, 9}, {2, 2, 2}};
    PinDrawing(mesh, places).Draw(show);
    const Lines expected = {"line colour 6", "line (1, 1, 1) (2, 2, 2)", "line colour 6", "line (2, 2, 2) (1, 1, 1)"};
    EXPECT_EQ(log.lines, expected);
}

TEST(PinDrawing, PassesOverDeadEdgesAndEdgesWithoutPlaces) {
    PIN mesh = Square();
    mesh.edges[0].NE = -1;  // dead
    mesh.edges[2].P0 = 4;   // no such node
    mesh.edges[3].NE = 6;   // no such edge
    mesh.edges[4].P0 = -1;  // no node at all; the twins 1 and 5 run between 1 and 3, but 1 ends at the lost node of 2
    DrawSwitches show{false, false, true, true, true};
    const Lines expected = {"line colour 6", "line (0, 4, 0) (4, 0, 0)", "e5 (1, 3, 0) colour 2"};
    EXPECT_EQ(Drawn(mesh, show), expected);
}

TEST(PinDrawing, ThrowsWhenTheLabelOfAnEdgeFails) {
    DrawLog log;
    log.labelCode = 3;
    const PIN mesh = Square();
    try {
        PinDrawing(mesh, mesh.points).Draw({false, false, true, false, true});
        FAIL() << "nothing was thrown";
    } catch (const KmException& failure) {
        EXPECT_EQ(failure.File(), "pin/inc/Tools/KmPinDraw");
        EXPECT_EQ(failure.Line(), 127U);
        EXPECT_STREQ(failure.what(), "Unknown exception");
    }
    EXPECT_EQ(log.lines.size(), 3U) << "the first label ends it";
}

TEST(PinDrawing, GoesOnWhenTheLabelOfANodeFails) {
    DrawLog log;
    log.labelCode = 3;
    const PIN mesh = Square();
    PinDrawing(mesh, mesh.points).Draw({true, true, false, false, false});
    EXPECT_EQ(log.lines.size(), 16U);
}

TEST(PinDrawing, DrawsNothingOfAnEmptyMesh) { EXPECT_EQ(Drawn(PIN(), {true, true, true, true, true}), Lines()); }

}  // namespace
}  // namespace KM
