#include "Mesh/Algorithms/SlabWriter.h"

#include <gtest/gtest.h>

#include <cstring>
#include <vector>

#include "Facet/StlFile.h"
#include "Support/TempFile.h"
#include "Support/TempFolder.h"

namespace KM {
namespace {

using namespace Test;

using P = TPoint<double>;

std::uint32_t CountIn(const std::string& bytes) {
    std::uint32_t count = 77;
    if (bytes.size() >= 84) std::memcpy(&count, bytes.data() + 80, sizeof count);
    return count;
}

const std::vector<P> Facet{P(0, 0, 0), P(1, 0, 0), P(0, 1, 0)};

TEST(SlabWriter, CountsItsTriangles) {
    const TempFile file;
    SlabWriter writer(file.Name(), 400);
    ASSERT_TRUE(writer.IsOpen());
    for (int i = 0; i < 3; ++i) writer.Add(Facet);
    EXPECT_TRUE(writer.Finish());
    EXPECT_EQ(file.Bytes().size(), 84u + 150u);
    EXPECT_EQ(CountIn(file.Bytes()), 3u);
}

TEST(SlabWriter, UnfinishedFileCountsNone) {
    const TempFile file;
    {
        SlabWriter writer(file.Name(), 400);
        for (int i = 0; i < 1000; ++i) writer.Add(Facet);
    }
    EXPECT_GT(file.Bytes().size(), 84u);
    EXPECT_EQ(CountIn(file.Bytes()), 0u);
}

TEST(SlabWriter, TakesThreePointsOnly) {
    const TempFile file;
    SlabWriter writer(file.Name(), 400);
    for (const std::size_t size : {0u, 1u, 2u, 4u, 5u})
        EXPECT_THROW(writer.Add(std::vector<P>(size)), IO::STL::XSizeMustBe3) << size;
    EXPECT_TRUE(writer.Finish());
    EXPECT_EQ(CountIn(file.Bytes()), 0u);
}

TEST(SlabWriter, WithoutAFileIsNotOpen) {
    const TempFolder temp;
    EXPECT_FALSE(SlabWriter("", 1).IsOpen());
    EXPECT_FALSE(SlabWriter(temp / "", 1).IsOpen());
    EXPECT_FALSE(SlabWriter(temp / "missing/file", 1).IsOpen());
}

TEST(SlabWriter, FullDiskIsTold) {
    SlabWriter writer("/dev/full", 400);
    ASSERT_TRUE(writer.IsOpen());
    EXPECT_FALSE(writer.HasFailed());
    for (int i = 0; i < 10000; ++i) writer.Add(Facet);
    EXPECT_TRUE(writer.HasFailed());
    EXPECT_FALSE(writer.Finish());
    SlabWriter small("/dev/full", 400);
    EXPECT_FALSE(small.Finish());  // a header that still waited
}

}  // namespace
}  // namespace KM
