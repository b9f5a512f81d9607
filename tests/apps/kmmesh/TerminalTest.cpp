#include <gtest/gtest.h>

#include <filesystem>

#include "ToolRun.h"

namespace KM::Test {
namespace {

using Names = std::vector<std::string>;

bool Has(const std::string& text, const std::string& part) { return text.find(part) != std::string::npos; }

class OnATerminal : public testing::Test, public ToolRun {
protected:
    OnATerminal() { MakeEndlessStl(folder / "endless.stl"); }

    /// Types when this text has been shown.
    void ExpectStops(const std::vector<std::string>& arguments, const std::string& text, const std::string& keys) {
        TerminalRun run(*this, arguments);
        ASSERT_TRUE(run.ShowsSoon(text)) << run.Shown();
        run.Type(keys);
        EXPECT_EQ(run.Wait(), 1) << run.Shown();
        EXPECT_TRUE(Has(run.Shown(), ": stopped")) << run.Shown();
        EXPECT_TRUE(std::filesystem::is_empty(home / "tmp"));
    }
};

TEST_F(OnATerminal, DrawsProgressInPlaceAndWipesItOff) {
    folder.Write("ball.stl", BinaryStl(SphereFacets(60).AsSoup()));
    TerminalRun run(*this, {"info", "ball.stl"});
    EXPECT_EQ(run.Wait(), 0);
    const std::string& shown = run.Shown();
    EXPECT_TRUE(shown.starts_with("\r[")) << shown;
    EXPECT_TRUE(Has(shown, "\rball.stl: 28800 triangles in the file\r\n")) << shown;
    EXPECT_FALSE(Has(shown, "\x1b")) << shown;
    EXPECT_TRUE(Has(shown, "\r" + std::string(79, ' ') + "\r")) << shown;
}

TEST_F(OnATerminal, DrawsNoneWhenQuiet) {
    folder.Write("ball.stl", BinaryStl(SphereFacets(60).AsSoup()));
    TerminalRun run(*this, {"info", "ball.stl", "-q"});
    EXPECT_EQ(run.Wait(), 0);
    EXPECT_TRUE(run.Shown().starts_with("ball.stl: ")) << run.Shown();
}

TEST_F(OnATerminal, StopsOnCtrlC) { ExpectStops({"info", "endless.stl"}, " %  Reading", "\x03"); }

TEST_F(OnATerminal, StopsOnEscape) { ExpectStops({"info", "endless.stl"}, " %  Reading", "\x1b"); }

TEST_F(OnATerminal, LeavesNoHalfWrittenFileWhenStopped) {
    folder.Write("out.stl", "old");
    // At the first sign of life, since what it writes is no hole in a file.
    ExpectStops({"convert", "endless.stl", "--out", "out.stl"}, "[", "\x03");
    EXPECT_EQ(folder.Names(), (Names{"endless.stl", "out.stl"}));
    EXPECT_EQ(folder.Bytes("out.stl"), "old");
}

TEST_F(OnATerminal, WritesNoPartWhenItsChangeIsStopped) {
    for (const char* verb : {"decimate", "fill", "keep", "refine"}) {
        SCOPED_TRACE(verb);
        ExpectStops({verb, "endless.stl", "--out", "out.stl"}, " %  Reading", "\x03");
    }
    EXPECT_EQ(folder.Names(), Names{"endless.stl"});
}

// A million triangles. Where the first collapse has gone and the last has not, no file may appear.
TEST_F(OnATerminal, StopsWithinAReduction) {
    folder.Write("large.stl", BinaryStl(BumpySphereFacets(354).AsSoup()));
    ExpectStops({"lods", "large.stl", "--out", "."}, " 30 %", "\x1b");
    EXPECT_EQ(folder.Names(), (Names{"endless.stl", "large.stl"}));
}

TEST_F(OnATerminal, StopsWithinASearchForDistances) {
    folder.Write("large.stl", BinaryStl(BumpySphereFacets(200).AsSoup()));
    ExpectStops({"geodesic", "large.stl", "--from", "0", "--out", "distances.txt"}, "Searching", "\x03");
    EXPECT_EQ(folder.Names(), (Names{"endless.stl", "large.stl"}));
}

TEST_F(OnATerminal, ColoursFailuresAndTheLogUnlessToldNotTo) {
    TerminalRun failing(*this, {"info", "nowhere.stl"});
    EXPECT_EQ(failing.Wait(), 9);
    EXPECT_TRUE(Has(failing.Shown(), "\x1b[31mkmmesh: ")) << failing.Shown();
    TerminalRun log(*this, {"nowhere.xml"});
    EXPECT_EQ(log.Wait(), 3);
    EXPECT_TRUE(Has(log.Shown(), "\x1b[")) << log.Shown();
    environment.emplace("NO_COLOR", "1");
    for (const std::vector<std::string>& arguments : {Names{"info", "nowhere.stl"}, Names{"nowhere.xml"}}) {
        TerminalRun plain(*this, arguments);
        plain.Wait();
        EXPECT_FALSE(Has(plain.Shown(), "\x1b")) << plain.Shown();
    }
}

}  // namespace
}  // namespace KM::Test
