#include "Utils/U_IO/FileNames.h"

#include <gtest/gtest.h>

#include <filesystem>

#include "Support/TempFolder.h"

namespace KM::IO {
namespace {

using namespace FileNameManipulation;

TEST(ValidateFileName, MakesAFolderName) {
    const struct {
        std::string given, valid;
    } rows[] = {
        {"C:/a b /c", "C:\\a b\\c\\"},
        {"", "\\"},
        {"/", "\\"},
        {"\\", "\\"},
        {"a", "a\\"},
        {"a/", "a\\"},
        {"a\\", "a\\"},
        {"a/b/c", "a\\b\\c\\"},
        {"//server/share", "\\\\server\\share\\"},
        {"a //b", "a\\\\b\\"},
        {" a", " a\\"},
        {"a  /b", "a\\b\\"},
        {"a ", "a\\"},
        {"a \\", "a\\"},
        {" ", "\\"},
        {"a/ /b", "a\\\\b\\"},
        {"a b c", "a b c\\"},
        {"\"a\"/*?", "\"a\"\\*?\\"},
        {std::string("a\0/b", 4), std::string("a\0\\b\\", 5)},
    };
    for (const auto& row : rows) {
        std::string name = row.given;
        ValidateFileName(name);
        EXPECT_EQ(name, row.valid) << row.given;
        EXPECT_EQ(ValidateFileName(row.given), row.valid);
        EXPECT_EQ(ValidateFileName(row.valid), row.valid) << "a valid name stays";
    }
}

TEST(ValidateFileName, TakesPlainTexts) {
    EXPECT_EQ(ValidateFileName("a/b"), "a\\b\\");
    EXPECT_EQ(ValidateFileName(static_cast<const char*>(nullptr)), "\\");
}

TEST(ValidateFileName, IsLinearInTheLength) {
    std::string name(2'000'000, ' ');
    for (std::size_t i = 1; i < name.size(); i += 2) name[i] = '/';
    ValidateFileName(name);
    EXPECT_EQ(name, std::string(1'000'000, '\\'));
}

TEST(FileNameManipulation, TakesNamesApart) {
    const struct {
        const char *full, *path, *name, *extension;
    } rows[] = {
        {"C:\\a\\b.bin", "C:\\a\\", "b", "bin"},
        {"/a/b.tar.gz", "/a/", "b.tar", "gz"},
        {"a/b\\c/d.x", "a/b\\c/", "d", "x"},
        {"a.b/c", "a.b/", "c", ""},
        {"a.b\\c", "a.b\\", "c", ""},
        {"name", "", "name", ""},
        {"name.", "", "name", ""},
        {".hidden", "", "", "hidden"},
        {"folder/", "folder/", "", ""},
        {"", "", "", ""},
        {".", "", "", ""},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(Path(row.full), row.path) << row.full;
        EXPECT_EQ(Name(row.full), row.name) << row.full;
        EXPECT_EQ(Extension(row.full), row.extension) << row.full;
    }
}

class WorkingFolder : public testing::Test {
protected:
    WorkingFolder() { std::filesystem::current_path(temp_ / ""); }
    ~WorkingFolder() override { std::filesystem::current_path(before_); }

    KM::Test::TempFolder temp_;
    const std::filesystem::path before_ = std::filesystem::current_path();
};

TEST_F(WorkingFolder, EndsInABackSlash) { EXPECT_EQ(CurrentWorkingDirectory(), ValidateFileName(temp_ / "")); }

TEST_F(WorkingFolder, StandsBeforeRelativeNamesOnly) {
    for (const std::string relative : {"a.txt", "a/b", "..\\a", ".", "", "ab:c"}) {
        std::string name = relative;
        ConvertToAbsolutePath(name);
        EXPECT_EQ(name, CurrentWorkingDirectory() + relative);
    }
    for (const std::string absolute : {"C:\\a", "c:a", "//server/a", "\\\\server\\a", "/tmp/a", "\\tmp\\a", "/"}) {
        std::string name = absolute;
        ConvertToAbsolutePath(name);
        EXPECT_EQ(name, absolute);
    }
}

TEST_F(WorkingFolder, KeepsABlankAtTheEndOfAFolder) {
    std::filesystem::create_directories(temp_ / "a /b ");
    std::filesystem::current_path(temp_ / "a /b ");
    EXPECT_EQ(CurrentWorkingDirectory(), ValidateFileName(temp_ / "") + "a \\b \\");
    std::filesystem::current_path("/");
    EXPECT_EQ(CurrentWorkingDirectory(), "\\");
}

TEST_F(WorkingFolder, ThatIsGoneIsTheRoot) {
    std::filesystem::remove(temp_ / "");
    EXPECT_EQ(CurrentWorkingDirectory(), "\\");
}

}  // namespace
}  // namespace KM::IO
