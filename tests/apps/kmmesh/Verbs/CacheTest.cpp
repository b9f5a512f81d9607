#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>

#include "ToolRun.h"

namespace KM::Test {
namespace {

namespace fs = std::filesystem;
using Names = std::vector<std::string>;

bool Has(const std::string& text, const std::string& part) { return text.find(part) != std::string::npos; }

/// Runs of the tool that keep their results however quick they are made: a configuration says so.
class KeepingTool {
public:
    KeepingTool() {
        tool.keepsResults = true;
        tool.folder.Write("ball.stl", BinaryStl(BumpySphereFacets(10).AsSoup()));
        Settle();
        tool.home.Write("keep.xml",
                        "<S><Cache><IsPersistableProcessingTime>-1</IsPersistableProcessingTime></Cache></S>");
    }

    /// As if the part had been there for long.
    void Settle() const {
        fs::last_write_time(tool.folder / "ball.stl", fs::file_time_type::clock::now() - std::chrono::hours(1));
    }

    /// What `words` do, with the results kept.
    void Keep(Names words) const {
        words.insert(words.end(), {"--save", tool.home / "run.xml"});
        EXPECT_EQ(tool.Run(words).exitCode, 0);
        EXPECT_EQ(tool.Run({tool.home / "keep.xml", tool.home / "run.xml"}).exitCode, 0);
    }

    std::string Cache() const { return tool.home / "cache/km/Cache/"; }

    /// The files of results, without those of the framework.
    Names Kept() const {
        Names names;
        std::error_code error;
        for (const auto& entry : fs::directory_iterator(Cache(), error))
            if (entry.path().filename().string().starts_with("$")) names.push_back(entry.path().string());
        std::sort(names.begin(), names.end());
        return names;
    }

    /// The only one of this kind.
    std::string KeptOf(const std::string& kind) const {
        Names names = Kept();
        std::erase_if(names, [&](const std::string& name) { return !Has(name, "$kmmesh-" + kind + '.'); });
        EXPECT_EQ(names.size(), 1u) << kind;
        return names.empty() ? "" : names.front();
    }

    ToolRun tool;
};

struct Case {
    Names words;        ///< without the outputs
    Names otherOption;  ///< with which the result is another one
    std::string kind;
    Names outputs;
};

std::vector<Case> Cases() {
    return {{{"lods", "ball.stl", "--tolerances", "0,1%"},
             {"--tolerances", "0,1.0000000001%"},
             "levels",
             {"ball.level1.stl", "ball.level2.stl", "ball.levels.bin"}},
            {{"geodesic", "ball.stl", "--from", "0 7", "--picture", "d.svg", "--out", "d.txt"},
             {"--from", "7 0"},
             "distances",
             {"d.txt", "d.svg"}},
            {{"decimate", "ball.stl", "--tolerance", "1%", "--out", "less.stl"},
             {"--tolerance", "1.0000000001%"},
             "reduction",
             {"less.stl"}}};
}

Names With(Names words, const Names& more) {
    words.insert(words.end(), more.begin(), more.end());
    return words;
}

/// With another value for an option that is there.
Names Exchanged(Names words, const Names& option) {
    *(std::find(words.begin(), words.end(), option[0]) + 1) = option[1];
    return words;
}

Names BytesOf(const ToolRun& tool, const Names& files) {
    Names bytes;
    for (const std::string& file : files) bytes.push_back(tool.folder.Bytes(file));
    return bytes;
}

std::string FoundLine(const KeepingTool& keeping, const std::string& kinds) {
    return "kmmesh: " + (keeping.tool.folder / "ball.stl") + ": found in the cache: " + kinds + '\n';
}

TEST(Cache, GivesTheVerySameBytes) {
    for (const Case& c : Cases()) {
        SCOPED_TRACE(c.kind);
        const KeepingTool keeping;
        const ToolResult fresh = keeping.tool.Run(With(c.words, {"--no-cache"}));
        EXPECT_EQ(fresh.exitCode, 0);
        EXPECT_EQ(fresh.errors, "");
        const Names bytes = BytesOf(keeping.tool, c.outputs);
        keeping.Keep(c.words);
        EXPECT_EQ(BytesOf(keeping.tool, c.outputs), bytes);
        EXPECT_EQ(keeping.Kept().size(), 2u);

        const ToolResult found = keeping.tool.Run(c.words);
        EXPECT_EQ(found.exitCode, 0);
        EXPECT_EQ(found.output, fresh.output);
        EXPECT_EQ(found.errors, FoundLine(keeping, "mesh, " + c.kind));
        EXPECT_EQ(BytesOf(keeping.tool, c.outputs), bytes);
        EXPECT_EQ(keeping.tool.Run(With(c.words, {"-q"})).errors, "");
        EXPECT_EQ(keeping.tool.Run(With(c.words, {"--no-cache"})).errors, "");
    }
}

TEST(Cache, GivesNothingForOtherInputs) {
    for (const Case& c : Cases()) {
        SCOPED_TRACE(c.kind);
        const KeepingTool keeping;
        keeping.Keep(c.words);
        EXPECT_EQ(keeping.tool.Run(Exchanged(c.words, c.otherOption)).errors, FoundLine(keeping, "mesh"));

        std::string bytes = keeping.tool.folder.Bytes("ball.stl");
        bytes[84 + 12] ^= 1;  // of the first coordinate
        keeping.tool.folder.Write("ball.stl", bytes);
        EXPECT_EQ(keeping.tool.Run(c.words).errors, "");
        const Names changed = BytesOf(keeping.tool, c.outputs);
        keeping.tool.Run(With(c.words, {"--no-cache"}));
        EXPECT_EQ(BytesOf(keeping.tool, c.outputs), changed);
    }
}

TEST(Cache, TakesNoPartWhereItIsSwitchedOff) {
    for (const Case& c : Cases()) {
        const KeepingTool keeping;
        keeping.Keep(With(c.words, {"--no-cache"}));
        EXPECT_EQ(keeping.Kept(), Names()) << c.kind;
    }
}

TEST(Cache, KeepsNothingThatWasQuicklyMade) {
    const KeepingTool keeping;
    EXPECT_EQ(keeping.tool.Run({"geodesic", "ball.stl", "--from", "0"}).exitCode, 0);
    EXPECT_EQ(keeping.Kept(), Names());
}

TEST(Cache, ReplacesWhatIsUnsound) {
    for (const Case& c : Cases()) {
        SCOPED_TRACE(c.kind);
        const KeepingTool keeping;
        keeping.Keep(c.words);
        const ToolResult sound = keeping.tool.Run(c.words);
        const Names bytes = BytesOf(keeping.tool, c.outputs);
        const std::string name = keeping.KeptOf(c.kind);
        const std::string file = "cache/km/Cache/" + fs::path(name).filename().string();
        const std::string whole = keeping.tool.home.Bytes(file);
        std::string damaged = whole;
        damaged[whole.size() / 2] ^= 4;
        for (const std::string& unsound : {std::string(), whole.substr(0, 31), whole.substr(0, whole.size() - 1),
                                           damaged, whole + whole, std::string("<Settings/>")}) {
            keeping.tool.home.Write(file, unsound);
            const ToolResult anew = keeping.tool.Run(c.words);
            EXPECT_EQ(anew.exitCode, 0);
            EXPECT_EQ(anew.output, sound.output);
            const Names told = Lines(anew.errors);
            ASSERT_EQ(told.size(), 2u) << anew.errors;
            EXPECT_TRUE(told[0].starts_with("kmmesh: " + name + ": is ")) << told[0];
            EXPECT_EQ(told[1] + '\n', FoundLine(keeping, "mesh"));
            EXPECT_EQ(BytesOf(keeping.tool, c.outputs), bytes);
            EXPECT_EQ(keeping.tool.home.Bytes(file), whole);
        }
        EXPECT_EQ(keeping.tool.Run(c.words).errors, sound.errors);
    }
}

TEST(Cache, IsDoneWithoutWhereItCannotBeWritten) {
    const KeepingTool keeping;
    const Names words = {"geodesic", "ball.stl", "--from", "0"};
    const ToolResult fresh = keeping.tool.Run(With(words, {"--save", keeping.tool.home / "run.xml"}));
    fs::remove_all(keeping.tool.home / "cache");
    keeping.tool.home.Write("cache", "a file");
    const ToolResult other = keeping.tool.Run(words);
    EXPECT_EQ(other.exitCode, 0);
    EXPECT_EQ(other.output, fresh.output);
    const ToolResult kept = keeping.tool.Run({keeping.tool.home / "keep.xml", keeping.tool.home / "run.xml"});
    EXPECT_EQ(kept.exitCode, 0);
    EXPECT_EQ(Lines(kept.errors).size(), 2u) << kept.errors;
    EXPECT_TRUE(Has(kept.errors, ": cannot be written; the result is not kept for later runs\n")) << kept.errors;
}

TEST(Cache, StaysSoundWhenSeveralMakeTheSame) {
    const KeepingTool keeping;
    const ToolRun& tool = keeping.tool;
    std::string command = "cd '" + (tool.folder / "") + "'";
    for (const auto& [name, value] : tool.environment) command += " && export " + name + "='" + value + '\'';
    std::string waits;
    for (const std::string number : {"1", "2", "3", "4"}) {
        tool.Run({"geodesic", "ball.stl", "--from", "0", "--out", "d" + number, "--save", number + ".xml", "-q"});
        fs::remove(tool.folder / ("d" + number));
        command += " && { '" KM_TOOL "' '" + (tool.home / "keep.xml") + "' " + number + ".xml >/dev/null 2>errors" +
                   number + " & p" + number + "=$!; }";
        waits += " && wait $p" + number;
    }
    EXPECT_EQ(std::system((command + waits).c_str()), 0);
    for (const std::string number : {"1", "2", "3", "4"}) {
        EXPECT_EQ(tool.folder.Bytes("d" + number), tool.folder.Bytes("d1"));
        EXPECT_FALSE(Has(tool.folder.Bytes("errors" + number), "anew"));
    }
    EXPECT_EQ(keeping.Kept().size(), 2u) << "nothing is left over";
    EXPECT_EQ(tool.Run({"cache", "--verify"}).exitCode, 0);
}

TEST(Cache, IsListedNewestFirst) {
    const KeepingTool keeping;
    EXPECT_EQ(keeping.tool.Run({"cache"}).output, keeping.Cache() + ": 0 results, 0 bytes\n");
    keeping.Keep({"geodesic", "ball.stl", "--from", "0 7"});
    const Names kept = keeping.Kept();
    ASSERT_EQ(kept.size(), 2u);
    const auto now = fs::file_time_type::clock::now();
    fs::last_write_time(kept[0], now - std::chrono::hours(50));
    fs::last_write_time(kept[1], now - std::chrono::minutes(30));
    const ToolResult result = keeping.tool.Run({"cache"});
    EXPECT_EQ(result.errors, "");
    const Names lines = Lines(result.output);
    ASSERT_EQ(lines.size(), 4u);
    EXPECT_EQ(lines[0], keeping.Cache() + ": 2 results, " +
                            std::to_string(fs::file_size(kept[0]) + fs::file_size(kept[1])) + " bytes");
    EXPECT_EQ(lines[1], "  result            bytes       age  made from");
    const std::string part = "mesh of " + (keeping.tool.folder / "ball.stl") + ", ";
    EXPECT_TRUE(lines[2].starts_with("  mesh "));
    EXPECT_TRUE(Has(lines[2], "30 min  " + part)) << lines[2];
    EXPECT_TRUE(Has(lines[3], "2 days  distances over faces from 0 7; " + part)) << lines[3];
    EXPECT_TRUE(Has(lines[3], "; kmmesh ")) << lines[3];
}

TEST(Cache, IsVerified) {
    const KeepingTool keeping;
    keeping.Keep({"geodesic", "ball.stl", "--from", "0"});
    const ToolResult sound = keeping.tool.Run({"cache", "--verify"});
    EXPECT_EQ(sound.exitCode, 0) << sound.errors;
    const std::string name = fs::path(keeping.Kept().front()).filename().string();
    std::string bytes = keeping.tool.home.Bytes("cache/km/Cache/" + name);
    bytes.back() ^= 1;
    keeping.tool.home.Write("cache/km/Cache/" + name, bytes);
    EXPECT_EQ(keeping.tool.Run({"cache"}).exitCode, 0) << "a list reads no data";
    const ToolResult damaged = keeping.tool.Run({"cache", "--verify"});
    EXPECT_EQ(damaged.exitCode, 9);
    EXPECT_TRUE(Has(damaged.output, "  " + name + " is damaged\n")) << damaged.output;
    EXPECT_EQ(damaged.errors,
              "kmmesh: " + keeping.Cache() + ": 1 of 2 results cannot be used; kmmesh cache --clean damaged\n");
    EXPECT_EQ(keeping.tool.Run({"cache", "--clean", "damaged"}).output,
              keeping.Cache() + ": deleted 1 result, " + std::to_string(bytes.size()) + " bytes\n");
    EXPECT_EQ(keeping.Kept().size(), 1u);
    EXPECT_EQ(keeping.tool.Run({"cache", "--verify"}).exitCode, 0);
}

TEST(Cache, IsCleanedOfTheToolsOwnPlainFilesOnly) {
    const KeepingTool keeping;
    keeping.Keep({"geodesic", "ball.stl", "--from", "0"});
    const auto path = [&](const char* name) { return "cache/km/Cache/" + std::string(name); };
    const Names others = {"$other.0.Data", "$kmmesh-mesh.0.Info", "notes.txt", "$kmmesh-new.Data.1-1.tmp"};
    for (const std::string& name : others) keeping.tool.home.Write(path(name.c_str()), "x");
    keeping.tool.home.Write(path("$kmmesh-old.Data.1-1.tmp"), "x");
    fs::last_write_time(keeping.tool.home / path("$kmmesh-old.Data.1-1.tmp"),
                        fs::file_time_type::clock::now() - std::chrono::hours(2));
    keeping.tool.home.Write("outside.Data", "x");
    fs::create_symlink(keeping.tool.home / "outside.Data", keeping.Cache() + "$kmmesh-link.Data");
    fs::create_directory(keeping.Cache() + "$kmmesh-folder.Data");
    keeping.tool.home.Write(path("$kmmesh-folder.Data/$kmmesh-inner.Data"), "x");

    EXPECT_TRUE(Has(keeping.tool.Run({"cache", "--clean", "all"}).output, ": deleted 3 results, "));
    for (const std::string& name : others) EXPECT_TRUE(fs::exists(keeping.Cache() + name)) << name;
    EXPECT_TRUE(fs::exists(keeping.Cache() + "Cache.Info"));
    EXPECT_TRUE(fs::is_symlink(keeping.Cache() + "$kmmesh-link.Data"));
    EXPECT_TRUE(fs::exists(keeping.tool.home / "outside.Data"));
    EXPECT_TRUE(fs::exists(keeping.Cache() + "$kmmesh-folder.Data/$kmmesh-inner.Data"));
    EXPECT_EQ(keeping.Kept().size(), 5u);
    EXPECT_TRUE(Has(keeping.tool.Run({"cache", "--clean", "damaged"}).output, ": deleted 0 results, 0 bytes"));
}

TEST(Cache, LiesWhereTheConfigurationSays) {
    const KeepingTool keeping;
    keeping.tool.home.Write("keep.xml",
                            "<S><Cache><Folder>" + (keeping.tool.home / "elsewhere/") +
                                "</Folder><IsPersistableProcessingTime>-1</IsPersistableProcessingTime></Cache></S>");
    keeping.Keep({"geodesic", "ball.stl", "--from", "0"});
    EXPECT_EQ(keeping.Kept(), Names());
    keeping.tool.Run({"cache", "--clean", "all", "--save", keeping.tool.home / "run.xml"});
    EXPECT_TRUE(Has(keeping.tool.Run({keeping.tool.home / "keep.xml", keeping.tool.home / "run.xml"}).output,
                    (keeping.tool.home / "elsewhere/") + ": deleted 2 results, "));
}

TEST(Cache, RefusesOtherWordsToClean) {
    const ToolRun tool;
    const ToolResult result = tool.Run({"cache", "--clean", "some"});
    EXPECT_EQ(result.exitCode, 9);
    EXPECT_EQ(result.output, "");
    EXPECT_EQ(result.errors, "kmmesh: Actions.Mesh.Cache.Clean: \"some\" is neither \"all\" nor \"damaged\"\n");
    EXPECT_EQ(tool.Run({"cache", "a.stl"}).exitCode, 4);
}

}  // namespace
}  // namespace KM::Test
