#include "PartChange.h"

#include <gtest/gtest.h>

#include "Failure.h"
#include "PartOutput.h"
#include "ToolRun.h"
#include "Utils/U_Settings/Settings.h"

namespace KM::Tool {
namespace {

const Verb Probe{"part-change", "changes parts", {InputFiles(), OutputPath(), AsText()}, nullptr};

void Set(const std::string& option, const std::string& value) {
    Settings::ToXMLElement(Probe.SettingOf(option)).V(value);
}

TEST(ChangeParts, WritesWhatTheChangeMade) {
    const KM::Test::TempFolder folder;
    folder.Write("cube.stl", KM::Test::BinaryStl(KM::Test::CubeFacets().AsSoup()));
    Set("files", folder / "cube.stl");
    Set("out", folder / "out.stl");
    Set("text", "N");
    std::string name;
    testing::internal::CaptureStdout();
    ChangeParts(Values(Probe), [&](const std::string& file, PIN& mesh, const MeshReport& before) {
        name = file;
        EXPECT_EQ(before.triangles, 12);
        for (TPoint<double>& p : mesh.points) p *= 2.0;
        return std::string();
    });
    EXPECT_NE(testing::internal::GetCapturedStdout().find("12 triangles in the file"), std::string::npos);
    EXPECT_EQ(name, folder / "cube.stl");
    KM::Test::Soup expected = KM::Test::CubeFacets().AsSoup();
    for (TPoint<double>& p : expected) p *= 2.0;
    EXPECT_EQ(KM::Test::CornersOf(folder / "out.stl"), expected);
}

TEST(ChangeParts, WritesNothingOfAPartThatIsGone) {
    const KM::Test::TempFolder folder;
    folder.Write("cube.stl", KM::Test::BinaryStl(KM::Test::CubeFacets().AsSoup()));
    Set("files", folder / "cube.stl");
    Set("out", folder / "out.stl");
    EXPECT_THROW(ChangeParts(Values(Probe),
                             [](const std::string&, PIN& mesh, const MeshReport&) {
                                 mesh = PIN();
                                 return std::string();
                             }),
                 Failure);
    EXPECT_EQ(folder.Names(), std::vector<std::string>{"cube.stl"});
}

}  // namespace
}  // namespace KM::Tool
