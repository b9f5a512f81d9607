#include "Facet/StlCheck.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <filesystem>

#include "Facet/StlSamples.h"
#include "Support/TempFile.h"
#include "Support/TempFolder.h"

namespace KM {
namespace {

using namespace Test;

std::string FaultOfBytes(const std::string& bytes) {
    const TempFolder folder;
    folder.Write("a.stl", bytes);
    return STLFault(folder / "a.stl");
}

std::string Binary(std::uint32_t promised, std::size_t records, const std::string& more = {}) {
    return StlBinary("part", promised, std::vector(records, StlRecord({-1, 2, 3, 4, 5, 6, 7, 8, 9}))) + more;
}

TEST(STLFault, IsEmptyForWholeFiles) {
    EXPECT_EQ(FaultOfBytes(Binary(3, 3)), "");
    EXPECT_EQ(FaultOfBytes(Binary(3, 3, "xyz")), "");
    EXPECT_EQ(FaultOfBytes(Binary(2, 3)), "");
    EXPECT_EQ(FaultOfBytes("solid\nendsolid\n"), "");
    EXPECT_EQ(FaultOfBytes("solid\nvertex 0 0 0\nEndSolid of my part\n\n"), "");
    EXPECT_EQ(FaultOfBytes("endsolid" + std::string(1000, ' ')), "");
}

TEST(STLFault, TellsWhatIsNoFile) {
    const TempFolder folder;
    ASSERT_EQ(mkfifo((folder / "pipe").c_str(), 0600), 0);
    std::filesystem::create_symlink("nowhere", folder / "link");
    EXPECT_EQ(STLFault(folder / "missing.stl"), "no such file");
    EXPECT_EQ(STLFault(folder / "link"), "no such file");
    EXPECT_EQ(STLFault(""), "no such file");
    EXPECT_EQ(STLFault(folder / ""), "is a folder, not an STL file");
    EXPECT_EQ(STLFault(folder / "pipe"), "is no plain file");
    EXPECT_EQ(STLFault("/dev/null"), "is no plain file");
}

TEST(STLFault, TellsWhatIsCutShort) {
    const std::string cutText = "is cut short, or no STL file: it does not end with \"endsolid\"";
    EXPECT_EQ(FaultOfBytes(""), "is empty");
    EXPECT_EQ(FaultOfBytes("solid\nfacet normal 0 0 1\nvertex 0 0"), cutText);
    EXPECT_EQ(FaultOfBytes("endsolid" + std::string(1100, ' ')), cutText);
    EXPECT_EQ(FaultOfBytes(std::string(80, 'x') + "\x80\x01"), "is cut short within its header");
    EXPECT_EQ(FaultOfBytes(Binary(3, 2, "12345")), "is cut short: its header promises 3 triangles, and 2 are there");
    EXPECT_EQ(FaultOfBytes(Binary(0xFFFFFFFF, 1)),
              "is cut short: its header promises 4294967295 triangles, and 1 are there");
}

TEST(STLFault, TellsEveryCutOfABinaryFile) {
    const std::string whole = Binary(5, 5);
    const TempFile file;
    for (std::size_t size = 0; size < whole.size(); ++size) {
        file.Write(whole.substr(0, size));
        ASSERT_NE(STLFault(file.Name()), "") << size;
    }
}

}  // namespace
}  // namespace KM
