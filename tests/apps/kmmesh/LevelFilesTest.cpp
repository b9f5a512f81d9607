#include "LevelFiles.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>

#include "Support/Meshes.h"

namespace KM::Tool {
namespace {

using namespace Test;

/// Takes a level file apart, word by word, as a reader elsewhere would.
class LevelFile {
public:
    explicit LevelFile(const std::string& bytes) : bytes_(bytes) {}

    template <class T>
    T Next() {
        T value{};
        if (at_ + sizeof value > bytes_.size()) throw std::out_of_range("level file");
        std::memcpy(&value, bytes_.data() + at_, sizeof value);
        at_ += sizeof value;
        return value;
    }
    bool IsAtEnd() const { return at_ == bytes_.size(); }

private:
    const std::string& bytes_;
    std::size_t at_ = 8;
};

using Triangle = std::array<int, 3>;

std::vector<Triangle> Sorted(std::vector<Triangle> triangles) {
    for (Triangle& t : triangles) std::rotate(t.begin(), std::min_element(t.begin(), t.end()), t.end());
    std::sort(triangles.begin(), triangles.end());
    return triangles;
}

std::vector<Triangle> TrianglesOf(const PIN& mesh) {
    std::vector<Triangle> triangles;
    for (std::size_t e = 0; e < mesh.edges.size(); e += 3)
        triangles.push_back({mesh.edges[e].P0, mesh.edges[e + 1].P0, mesh.edges[e + 2].P0});
    return Sorted(triangles);
}

std::vector<Triangle> NextLevel(LevelFile& file, const Level& level) {
    EXPECT_EQ(file.Next<std::int32_t>(), static_cast<std::int32_t>(level.tolerance * 100000.0));
    EXPECT_EQ(file.Next<std::int32_t>(), level.words);
    std::vector<Triangle> triangles;
    const std::int32_t strips = file.Next<std::int32_t>();
    EXPECT_EQ(strips, level.strips);
    for (int s = 0; s < strips; ++s) {
        std::vector<int> nodes(static_cast<std::size_t>(file.Next<std::int32_t>()));
        for (int& node : nodes) node = file.Next<std::int32_t>();
        for (std::size_t i = 0; i + 2 < nodes.size(); ++i)
            triangles.push_back(i % 2 == 0 ? Triangle{nodes[i], nodes[i + 1], nodes[i + 2]}
                                           : Triangle{nodes[i], nodes[i + 2], nodes[i + 1]});
    }
    return Sorted(triangles);
}

TEST(Levels, FirstOneOfToleranceZeroIsTheWholeMesh) {
    PIN mesh = BumpySphere(12);
    const std::vector<Triangle> whole = TrianglesOf(mesh);
    const Levels levels(mesh, {0.0, 5.0});
    ASSERT_EQ(levels.All().size(), 2u);
    EXPECT_EQ(Sorted(levels.All()[0].triangles), whole);
    EXPECT_LT(levels.All()[1].triangles.size(), whole.size());
    EXPECT_EQ(levels.All()[1].number, 2);
}

TEST(Levels, AreInTheFileAsTheyAreInMemory) {
    PIN mesh = BumpySphere(12);
    const Levels levels(mesh, {0.0, 0.5, 5.0});
    const std::string bytes = levels.FileOf(mesh);
    EXPECT_TRUE(bytes.starts_with("KMLODS01"));
    LevelFile file(bytes);
    EXPECT_EQ(file.Next<std::int32_t>(), static_cast<std::int32_t>(mesh.points.size()));
    EXPECT_EQ(file.Next<std::int32_t>(), static_cast<std::int32_t>(levels.All().size()));
    file.Next<std::int32_t>();
    for (const TPoint<double>& p : mesh.points) {
        EXPECT_EQ(file.Next<double>(), p.X);
        EXPECT_EQ(file.Next<double>(), p.Y);
        EXPECT_EQ(file.Next<double>(), p.Z);
    }
    for (const Level& level : levels.All()) EXPECT_EQ(NextLevel(file, level), Sorted(level.triangles));
    EXPECT_TRUE(file.IsAtEnd());
}

TEST(Levels, LeaveOutThoseInWhichNothingWent) {
    PIN mesh = Cube();
    const Levels levels(mesh, {0.0, 0.0, 1e-9});
    EXPECT_EQ(levels.All().size(), 1u);
    EXPECT_EQ(levels.FileOf(mesh).size(), 8u + 12u + 8u * 24u + 4u * static_cast<unsigned>(levels.All()[0].words));
}

}  // namespace
}  // namespace KM::Tool
