#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>

namespace {

namespace fs = std::filesystem;

std::string TextOf(const fs::path& file) {
    std::ostringstream text;
    text << std::ifstream(file).rdbuf();
    return text.str();
}

TEST(PublicHeaders, AreAllIncludedByTheUmbrella) {
    const fs::path root = KM_SOURCE_DIR;
    const std::string umbrella = TextOf(root / "pin/inc/Km.h");
    for (const char* folder : {"pin/inc", "tools/inc"})
        for (const auto& entry : fs::recursive_directory_iterator(root / folder)) {
            const std::string header = fs::relative(entry.path(), root / folder).generic_string();
            if (entry.path().extension() != ".h" || header == "Km.h") continue;
            EXPECT_NE(umbrella.find("#include \"" + header + "\""), std::string::npos) << header;
        }
}

TEST(Readme, ShowsTheProgramThatTheExamplesCompile) {
    const fs::path root = KM_SOURCE_DIR;
    const std::string program = TextOf(root / "examples/first/main.cpp");
    ASSERT_FALSE(program.empty());
    EXPECT_NE(TextOf(root / "README.md").find("```cpp\n" + program + "```\n"), std::string::npos);
}

}  // namespace
