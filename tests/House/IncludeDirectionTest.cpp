#include <gtest/gtest.h>

#include "House/IncludeFloors.h"

namespace KM::Test {
namespace {

TEST(IncludeDirection, OfTheTreeIsDownOnly) {
    for (const std::string& fault : IncludeFaultsOfTree(KM_SOURCE_DIR)) ADD_FAILURE() << fault;
}

TEST(IncludeDirection, CheckFailsWhereThereIsNoTree) {
    EXPECT_EQ(IncludeFaultsOfTree(KM_SOURCE_DIR "/docs").size(), 1u);
}

TEST(IncludeDirection, CheckFindsAFloorForEachFolder) {
    EXPECT_EQ(FloorOf("src/Platform/Posix/Files.cpp"), FloorOf("tools/inc/KmTools.h"));
    const char* upwards[] = {"src/Host/List.cpp",      "src/Utils/U_App/Services.cpp", "pin/inc/Geometry/Point.h",
                             "src/Mesh/Core/Fans.cpp", "src/Mesh/Editing/Flip.cpp",    "src/Mesh/Algorithms/Refine.cpp",
                             "pin/inc/Facet/Strips.h", "examples/host/main.cpp"};
    for (std::size_t i = 1; i < std::size(upwards); ++i)
        EXPECT_LT(FloorOf(upwards[i - 1]), FloorOf(upwards[i])) << upwards[i];
    EXPECT_EQ(FloorOf("src/Facet/StlReader.cpp"), FloorOf("Geometry/Point.h"));
    EXPECT_EQ(FloorOf("src/Mesh/Loose.cpp"), -1);
    EXPECT_EQ(FloorOf("src/Elsewhere/A.cpp"), -1);
}

TEST(IncludeDirection, CheckAcceptsWhatPointsDownOrSideways) {
    const struct {
        const char *path, *line;
    } fine[] = {
        {"src/Facet/Strips.cpp", "#include \"Facet/Strips.h\""},
        {"src/Facet/Strips.cpp", "#include \"Mesh/Core/Loops.h\""},
        {"src/Mesh/Algorithms/Split.cpp", "#include \"Facet/StlFile.h\""},
        {"src/Mesh/Core/Compaction.cpp", "#include \"PointMerging.h\""},
        {"src/Mesh/Core/Construction.cpp", "#include \"Utils/U_App/Services.h\""},
        {"src/Host/Memory.cpp", "#include <cstdlib>"},
        {"tools/inc/KmTools.h", "#include <stdint.h>"},
        {"src/Platform/Posix/Files.cpp", "#include <sys/stat.h>"},
        {"examples/c/main.c", "#include <dlfcn.h>"},
        {"src/Mesh/Core/Fans.cpp", "int includes = 0;  // #include \"Facet/Strips.h\""},
    };
    for (const auto& f : fine) EXPECT_EQ(IncludeFault(f.path, f.line), "") << f.path << " " << f.line;
}

TEST(IncludeDirection, CheckRefusesWhatPointsUp) {
    const struct {
        const char *path, *line;
    } wrong[] = {
        {"src/Mesh/Core/Fans.cpp", "#include \"Facet/Strips.h\""},
        {"src/Mesh/Core/Fans.cpp", "  #  include \"Mesh/Editing/Flip.h\"  // why not"},
        {"src/Mesh/Editing/Flip.cpp", "#include \"Mesh/Algorithms/Refine.h\""},
        {"src/Geometry/Plane.cpp", "#include \"Mesh/Core/Pin.h\""},
        {"src/Facet/StlReader.cpp", "#include \"Mesh/Core/Pin.h\""},
        {"src/Utils/U_Debug/Verbose.cpp", "#include \"Geometry/Point.h\""},
        {"src/Platform/Posix/Files.cpp", "#include \"Utils/U_Debug/Verbose.h\""},
        {"pin/inc/Facet/Strips.h", "#include \"Km.h\""},
    };
    for (const auto& w : wrong) EXPECT_EQ(IncludeFault(w.path, w.line), "points up") << w.path << " " << w.line;
}

TEST(IncludeDirection, CheckRefusesTheSystemOutsideThePlatformLayer) {
    for (const char* line :
         {"#include <unistd.h>", "#include <sys/stat.h>", "#include <windows.h>", "#include <dlfcn.h>"})
        for (const char* path : {"src/Host/Memory.cpp", "src/Utils/U_IO/Files.cpp", "pin/inc/Facet/Strips.h"})
            EXPECT_EQ(IncludeFault(path, line), "is no header of the language") << path << " " << line;
}

TEST(IncludeDirection, CheckRefusesStrangersAndHiddenPartsOfTheFramework) {
    EXPECT_EQ(IncludeFault("src/Facet/Strips.cpp", "#include \"Elsewhere/A.h\""), "lies on no floor");
    EXPECT_NE(IncludeFault("src/Mesh/Core/Fans.cpp", "#include \"Utils/U_Settings/Settings.h\""), "");
    EXPECT_EQ(IncludeFault("src/Utils/U_App/Run.cpp", "#include \"Utils/U_Settings/Settings.h\""), "");
}

}  // namespace
}  // namespace KM::Test
