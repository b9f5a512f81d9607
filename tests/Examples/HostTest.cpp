#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <random>
#include <sstream>
#include <string>
#include <vector>

#include "Facet/StlFile.h"

namespace {

namespace fs = std::filesystem;

const std::string Sample = KM_SOURCE_DIR "/samples/bearing-bracket.stl";

std::string TextOf(const fs::path& file) {
    std::ostringstream text;
    text << std::ifstream(file, std::ios::binary).rdbuf();
    return text.str();
}

void Write(const fs::path& file, const std::string& bytes) { std::ofstream(file, std::ios::binary) << bytes; }

/// A row of the table that is printed.
struct Row {
    int level = 0;
    double tolerance = 0.0;
    int triangles = 0;
    double share = 0.0;
    int strips = 0;
    double wordsPerTriangle = 0.0;
    double milliseconds = 0.0;
};

std::vector<Row> RowsOf(const std::string& output) {
    std::vector<Row> rows;
    std::istringstream lines(output);
    for (std::string line; std::getline(lines, line);) {
        Row r;
        const int read = std::sscanf(line.c_str(), "%d %lf %d %lf %% %d %lf %lf ms", &r.level, &r.tolerance,
                                     &r.triangles, &r.share, &r.strips, &r.wordsPerTriangle, &r.milliseconds);
        if (read == 7) rows.push_back(r);
    }
    return rows;
}

using Triangle = std::array<std::array<double, 3>, 3>;

/// The triangles of a file, each begun at its least corner, sorted.
std::vector<Triangle> TrianglesOf(const fs::path& file) {
    std::vector<Triangle> triangles;
    KM::STLReader reader(file.string());
    double v[9];
    while (reader.Read(v)) {
        Triangle t{{{v[0], v[1], v[2]}, {v[3], v[4], v[5]}, {v[6], v[7], v[8]}}};
        std::rotate(t.begin(), std::min_element(t.begin(), t.end()), t.end());
        triangles.push_back(t);
    }
    std::sort(triangles.begin(), triangles.end());
    return triangles;
}

/// Runs the program in a folder of its own, whose name has a blank.
class HostExample : public testing::Test {
protected:
    HostExample() {
        const std::string name = testing::UnitTest::GetInstance()->current_test_info()->name();
        folder = fs::temp_directory_path() / ("km host " + name + std::to_string(std::random_device()()));
        fs::create_directories(folder);
    }
    ~HostExample() override { fs::remove_all(folder); }

    /// `arguments` are words for the shell.
    int Run(const std::string& arguments) {
        const std::string command =
            "cd '" + folder.string() + "' && '" KM_HOST_EXAMPLE "' " + arguments + " >stdout 2>stderr";
        const int status = std::system(command.c_str());
        output = TextOf(folder / "stdout");
        errors = TextOf(folder / "stderr");
        return status >= 256 ? status / 256 : status;
    }

    void ExpectRefusal(const std::string& file, const std::string& why) {
        SCOPED_TRACE(why);
        EXPECT_EQ(Run("'" + file + "'"), 1);
        EXPECT_EQ(errors, "host: " + file + ": " + why + "\n");
        EXPECT_EQ(output, "");
        EXPECT_FALSE(fs::exists(folder / "out"));
    }

    fs::path folder;
    std::string output;
    std::string errors;
};

TEST_F(HostExample, ReducesTheSampleAndWritesOneFileALevel) {
    ASSERT_EQ(Run("'" + Sample + "' --out 'the levels' 0 0.0005 0.005"), 0) << errors;
    EXPECT_EQ(errors, "");
    const std::vector<Row> rows = RowsOf(output);
    ASSERT_EQ(rows.size(), 3u) << output;
    for (std::size_t i = 0; i < rows.size(); ++i) {
        SCOPED_TRACE(output);
        const fs::path file = folder / "the levels" / ("level-" + std::to_string(i + 1) + ".stl");
        EXPECT_EQ(rows[i].level, static_cast<int>(i) + 1);
        EXPECT_EQ(static_cast<int>(TrianglesOf(file).size()), rows[i].triangles);
        EXPECT_EQ(fs::file_size(file), 84u + 50u * static_cast<unsigned>(rows[i].triangles));
        EXPECT_NEAR(rows[i].share, 100.0 * rows[i].triangles / rows[0].triangles, 0.051);
        EXPECT_GT(rows[i].strips, 0);
        EXPECT_GT(rows[i].wordsPerTriangle, 1.0);
        EXPECT_LT(rows[i].wordsPerTriangle, 4.0);
        EXPECT_LT(rows[i].triangles, i == 0 ? 47733 : rows[i - 1].triangles);
    }
    EXPECT_LT(rows[2].share, 25.0);
    EXPECT_NE(output.find("The levels are in " + (folder / "the levels").string() + ":\n"), std::string::npos)
        << output;
}

TEST_F(HostExample, FirstLevelOfToleranceZeroIsTheWholePart) {
    ASSERT_EQ(Run("'" + Sample + "' 0"), 0) << errors;
    EXPECT_EQ(TrianglesOf(folder / "out/bearing-bracket/level-1.stl"), TrianglesOf(Sample));
}

TEST_F(HostExample, KeepsAClosedPartClosedAndItsVerticesOnThePart) {
    ASSERT_EQ(Run("'" + Sample + "' 0.002"), 0) << errors;
    std::vector<std::array<double, 3>> corners;
    for (const Triangle& t : TrianglesOf(Sample)) corners.insert(corners.end(), t.begin(), t.end());
    std::sort(corners.begin(), corners.end());
    std::vector<std::array<std::array<double, 3>, 2>> edges, reversed;
    for (const Triangle& t : TrianglesOf(folder / "out/bearing-bracket/level-1.stl"))
        for (std::size_t i = 0; i < 3; ++i) {
            EXPECT_TRUE(std::binary_search(corners.begin(), corners.end(), t[i]));
            edges.push_back({t[i], t[(i + 1) % 3]});
            reversed.push_back({t[(i + 1) % 3], t[i]});
        }
    std::sort(edges.begin(), edges.end());
    std::sort(reversed.begin(), reversed.end());
    EXPECT_EQ(edges, reversed);
}

TEST_F(HostExample, NamesLevelsInWhichNothingWent) {
    Write(folder / "one.stl", "solid\nvertex 0 0 0\nvertex 1 0 0\nvertex 0 1 0\nendsolid\n");
    ASSERT_EQ(Run("one.stl 0 0.001"), 0) << errors;
    EXPECT_EQ(RowsOf(output).size(), 1u);
    EXPECT_NE(output.find("  as the level before\n"), std::string::npos) << output;
    EXPECT_TRUE(fs::exists(folder / "out/one/level-1.stl"));
    EXPECT_FALSE(fs::exists(folder / "out/one/level-2.stl"));
}

TEST_F(HostExample, EndsWellOnAPartBeyondTheReachOfTolerances) {
    Write(folder / "far.stl", "solid\nvertex 0 0 0\nvertex 1e18 0 0\nvertex 0 1e18 0\nendsolid\n");
    EXPECT_EQ(Run("far.stl"), 0) << errors;
    EXPECT_GE(RowsOf(output).size(), 1u);
}

TEST_F(HostExample, LeavesOutTrianglesThatAreNone) {
    Write(folder / "odd.stl",
          "solid\n"
          "vertex 0 0 0\nvertex 1 0 0\nvertex 0 1 0\n"
          "vertex 0 0 0\nvertex 0 0 0\nvertex 0 1 0\n"
          "vertex nan 0 0\nvertex 1 0 0\nvertex 0 1 0\n"
          "vertex 0 0 0\nvertex inf 0 0\nvertex 0 1 0\n"
          "endsolid\n");
    ASSERT_EQ(Run("odd.stl"), 0) << errors;
    EXPECT_NE(output.find("odd.stl: 1 triangles, 3 vertices"), std::string::npos) << output;
    EXPECT_NE(output.find("left out: 3 triangles"), std::string::npos) << output;
}

TEST_F(HostExample, RefusesWhatIsNoWholeStlFileInOneLine) {
    fs::create_directory(folder / "a folder");
    Write(folder / "empty.stl", "");
    Write(folder / "bare.stl", "solid of nothing\nendsolid of nothing\n");
    Write(folder / "cut text.stl", "solid\nfacet normal 0 0 1\nouter loop\nvertex 0 0 0\nvertex 1 0");
    Write(folder / "cut.stl", TextOf(Sample).substr(0, 84 + 50 * 100 + 7));
    Write(folder / "endless.stl", "solid\nvertex 0 0 0\nvertex 1e300 0 0\nvertex 0 1e300 0\nendsolid\n");
    ExpectRefusal("endless.stl", "is too large: its diagonal is no number");
    ExpectRefusal("missing.stl", "no such file");
    ExpectRefusal("a folder", "is a folder, not an STL file");
    ExpectRefusal("empty.stl", "is empty");
    ExpectRefusal("bare.stl", "holds no triangles");
    ExpectRefusal("cut text.stl", "is cut short, or no STL file: it does not end with \"endsolid\"");
    ExpectRefusal("cut.stl", "is cut short: its header promises 47732 triangles, and 100 are there");
}

TEST_F(HostExample, SaysWhenItCannotWrite) {
    Write(folder / "one.stl", "solid\nvertex 0 0 0\nvertex 1 0 0\nvertex 0 1 0\nendsolid\n");
    EXPECT_EQ(Run("one.stl --out one.stl"), 1);
    EXPECT_EQ(errors, "host: one.stl: cannot make the folder one.stl\n");
    fs::create_directories(folder / "taken/level-1.stl");
    EXPECT_EQ(Run("one.stl --out taken"), 1);
    EXPECT_EQ(errors, "host: one.stl: cannot write taken/level-1.stl\n");
}

TEST_F(HostExample, ShowsItsUsageForWordsThatDoNotFit) {
    for (const char* words : {"", "--out", "--help", "a.stl b.stl", "a.stl -1", "-- a.stl -1", "a.stl nan", "a.stl inf",
                              "a.stl ''", "a.stl 0.1x", "--out x"}) {
        SCOPED_TRACE(words);
        EXPECT_EQ(Run(words), 2);
        EXPECT_EQ(errors.rfind("usage: host ", 0), 0u) << errors;
        EXPECT_EQ(output, "");
    }
}

}  // namespace
