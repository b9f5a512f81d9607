#include <gtest/gtest.h>

#include <filesystem>
#include <sstream>

#include "ToolRun.h"

namespace KM::Test {
namespace {

using Names = std::vector<std::string>;

bool Has(const std::string& text, const std::string& part) { return text.find(part) != std::string::npos; }

struct Row {
    TPoint<double> point;
    std::string distance;
};

std::vector<Row> RowsOf(const std::string& table) {
    std::vector<Row> rows;
    for (const std::string& line : Lines(table)) {
        if (line.starts_with('#')) continue;
        std::istringstream words(line);
        int node = 0;
        Row row;
        words >> node >> row.point.X >> row.point.Y >> row.point.Z >> row.distance;
        EXPECT_EQ(node, static_cast<int>(rows.size()));
        rows.push_back(row);
    }
    return rows;
}

Soup Sized(Soup soup, double factor) {
    for (TPoint<double>& p : soup) p *= factor;
    return soup;
}

TEST(Geodesic, ListsADistanceForEachNode) {
    const ToolRun tool;
    tool.folder.Write("plate.stl", BinaryStl(GridFacets(4).AsSoup()));
    const ToolResult result = tool.Run({"geodesic", "plate.stl", "--from", "0,0,0"});
    EXPECT_EQ(result.exitCode, 0) << result.errors;
    EXPECT_TRUE(
        result.output.starts_with("# plate.stl: 32 triangles in the file\n"
                                  "#   source          node 0 at 0 0 0\n"
                                  "#   reached         25 of 25 nodes\n"
                                  "#   farthest        5.65685425, node 24 at 4 4 0\n"
                                  "# node x y z distance\n"
                                  "0 0 0 0 0\n"))
        << result.output;
    const std::vector<Row> rows = RowsOf(result.output);
    ASSERT_EQ(rows.size(), 25u);
    for (const Row& row : rows) EXPECT_NEAR(std::stod(row.distance), Length(row.point), 1e-7);
}

TEST(Geodesic, MeasuresInAnyUnitFromSeveralSources) {
    for (const double size : {1e-6, 1e9}) {
        SCOPED_TRACE(size);
        const ToolRun tool;
        tool.folder.Write("plate.stl", BinaryStl(Sized(GridFacets(4).AsSoup(), size)));
        const ToolResult result =
            tool.Run({"geodesic", "plate.stl", "--from", size < 1.0 ? "0 9e-6,9e-6,0 0 0,0,0" : "0 9e9,9e9,0 0 0,0,0"});
        EXPECT_EQ(result.exitCode, 0) << result.errors;
        EXPECT_TRUE(Has(result.output, "source          node 24 at ")) << result.output;
        for (const Row& row : RowsOf(result.output)) {
            const TPoint<double> far = TPoint<double>(4, 4, 0) * size;
            const double expected = std::min(Length(row.point), Length(far - row.point));
            EXPECT_NEAR(std::stod(row.distance) / size, expected / size, 1e-5);
        }
    }
}

TEST(Geodesic, GoesAlongEdgesIfAsked) {
    const ToolRun tool;
    tool.folder.Write("cube.stl", BinaryStl(Sized(CubeFacets().AsSoup(), 3)));
    const std::string faces = tool.Run({"geodesic", "cube.stl", "--from", "0,0,0"}).output;
    const std::string edges = tool.Run({"geodesic", "cube.stl", "--from", "0,0,0", "--dijkstra"}).output;
    EXPECT_TRUE(Has(faces, "farthest        6.70820393, node ")) << faces;
    EXPECT_TRUE(Has(edges, "farthest        9, node ")) << edges;
}

TEST(Geodesic, SaysWhatIsNotReached) {
    Soup two = CubeFacets().AsSoup();
    for (const TPoint<double>& p : CubeFacets().AsSoup()) two.push_back(p + TPoint<double>(5, 0, 0));
    for (const bool isAlongEdges : {false, true}) {
        const ToolRun tool;
        tool.folder.Write("two.stl", BinaryStl(two));
        Names arguments{"geodesic", "two.stl", "--from", "0", "--out", "d.txt"};
        if (isAlongEdges) arguments.push_back("--dijkstra");
        const ToolResult result = tool.Run(arguments);
        EXPECT_TRUE(Has(result.output, "  reached         8 of 16 nodes\n")) << result.output;
        EXPECT_TRUE(Has(result.output, "\n  not reached                    6   50.0 %")) << result.output;
        int unreached = 0;
        for (const Row& row : RowsOf(tool.folder.Bytes("d.txt"))) unreached += row.distance == "inf" ? 1 : 0;
        EXPECT_EQ(unreached, 8);
    }
}

TEST(Geodesic, WritesTextAndPicture) {
    const ToolRun tool;
    tool.folder.Write("ball.stl", BinaryStl(SphereFacets(12).AsSoup()));
    std::filesystem::create_directory(tool.folder / "out");
    const ToolResult result = tool.Run({"geodesic", "ball.stl", "--from", "0,0,9", "--out", "out", "--picture", "out",
                                        "--view", "-x", "--bands", "3"});
    EXPECT_EQ(result.exitCode, 0) << result.errors;
    EXPECT_TRUE(Has(result.output, "  distance                    area   share\n  0 .. 2 ")) << result.output;
    EXPECT_TRUE(result.output.ends_with(tool.folder / "out/ball.distances.txt\n" + (tool.folder / "out/ball.svg\n")));
    EXPECT_TRUE(tool.folder.Bytes("out/ball.svg").starts_with("<svg "));
    const std::string table = tool.Run({"geodesic", "ball.stl", "--from", "0,0,9"}).output;
    EXPECT_EQ(tool.folder.Bytes("out/ball.distances.txt"), table);
    const ToolResult alone = tool.Run({"geodesic", "ball.stl", "--from", "0", "--picture", "p.svg", "-q"});
    EXPECT_TRUE(alone.output.starts_with("ball.stl: ")) << alone.output;
    EXPECT_FALSE(Has(alone.output, "p.svg"));
    EXPECT_TRUE(tool.folder.Has("p.svg"));
}

TEST(Geodesic, RefusesWhatDoesNotFit) {
    const ToolRun tool;
    tool.folder.Write("cube.stl", BinaryStl(CubeFacets().AsSoup()));
    const struct {
        Names words;
        int exitCode;
        std::string why;
    } refused[] = {
        {{}, 3, "--from: is needed; see kmmesh geodesic --help"},
        {{"--from", "here"},
         4,
         "--from: \"here\": is neither the number of a node, such as 12, nor a point, such as 10,0,2.5; see kmmesh "
         "geodesic --help"},
        {{"--from", "0", "--view", "0,0,0"}, 4, "--view: \"0,0,0\": is no direction; see kmmesh geodesic --help"},
        {{"--from", "0", "--bands", "x"}, 4, "--bands: \"x\" is no whole number; see kmmesh geodesic --help"},
        {{"--from", "0", "--bands", "0"}, 4, "--bands: 0 is not from 1 to 100; see kmmesh geodesic --help"},
        {{"--from", "0 8"}, 9, (tool.folder / "cube.stl") + ": has no node 8; the last one is 7"},
        {{"--from", "0", "cube.stl"},
         9,
         (tool.folder / "cube.stl") + ": is one file too many; nodes are those of one part"},
    };
    for (const auto& [words, exitCode, why] : refused) {
        Names arguments{"geodesic", "cube.stl"};
        arguments.insert(arguments.end(), words.begin(), words.end());
        const ToolResult result = tool.Run(arguments);
        EXPECT_EQ(result.exitCode, exitCode);
        EXPECT_EQ(result.errors, "kmmesh: " + why + '\n');
        EXPECT_EQ(result.output, "");
    }
    EXPECT_EQ(tool.folder.Names(), Names{"cube.stl"});
}

}  // namespace
}  // namespace KM::Test
