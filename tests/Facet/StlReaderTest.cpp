#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/stat.h>

#include <cmath>
#include <cstring>
#include <filesystem>
#include <limits>
#include <memory>

#include "Facet/PlainStlReader.h"
#include "Facet/StlFile.h"
#include "Facet/StlSamples.h"
#include "Support/TempFile.h"

namespace KM {
namespace {

using namespace Test;  // a test's own base has that name as well

const NineDoubles OneToNine{1, 2, 3, 4, 5, 6, 7, 8, 9};
const std::string RecordOneToNine = StlRecord({1, 2, 3, 4, 5, 6, 7, 8, 9});

std::size_t CountTriangles(const std::string& bytes) {
    const TempFile file(bytes);
    STLReader reader(file.Name());
    return ReadAll(reader).size() - 1;
}

struct Closer {
    void operator()(STLReader* reader) const { KmSTLClose(reader); }
};

// A handle as a host gets it, with the header text.
struct Opened {
    explicit Opened(const char* name) : handle(KmSTLOpen(name, header)) {}
    char header[82] = "untouched";
    std::unique_ptr<STLReader, Closer> handle;
};

std::string HeaderOf(const std::string& bytes) {
    const TempFile file(bytes);
    return Opened(file.Name().c_str()).header;
}

TEST(STLReader, GivesTheTrianglesOfAText) {
    const TempFile file(
        "solid cube\n"
        "facet normal 0 0 1\n  outer loop\n"
        "    vertex 1 2 3\n    vertex 4 5 6\n    vertex 7 8 9\n"
        "  endloop\nendfacet\n"
        "facet normal 0 0 1\n  outer loop\n"
        "    vertex -1.5 2e3 0.25\n    VERTEX 4 5 6\n    Vertex 7 8 9\n"
        "  endloop\nendfacet\n"
        "endsolid cube\n");
    STLReader reader(file.Name());
    NineDoubles nine;
    ASSERT_TRUE(reader.IsOpen());
    ASSERT_TRUE(reader.Read(nine.data()));
    EXPECT_EQ(nine, OneToNine);
    ASSERT_TRUE(reader.Read(nine.data()));
    EXPECT_EQ(nine, (NineDoubles{-1.5, 2000, 0.25, 4, 5, 6, 7, 8, 9}));
    EXPECT_FALSE(reader.Read(nine.data()));
    EXPECT_FALSE(reader.Read(nine.data()));
    EXPECT_EQ(nine[0], -1.5) << "the end leaves the values as they were";
}

TEST(STLReader, NeedsNothingOfATextButItsVertices) {
    EXPECT_EQ(CountTriangles("\nvertex 1 2 3 vertex 4 5 6 vertex 7 8 9\n"), 1u);
    EXPECT_EQ(
        CountTriangles("anything\nvertex 1 2 3 vertex 4 5 6 vertex 7 8 9 vertex 1 2 3 vertex 4 5 6 vertex 7 8 9 "), 2u);
}

TEST(STLReader, ReadsLinesThatEndInTwoBytes) { EXPECT_EQ(CountTriangles(StlText(5, "\r\n")), 5u); }

TEST(STLReader, GivesTheTrianglesOfABinaryFile) {
    const TempFile file(
        StlBinary("part", 2, {RecordOneToNine, StlRecord({-0.0f, 0.1f, 1e38f, 0, 0, 0, 0, 0, 1e-45f})}));
    STLReader reader(file.Name());
    NineDoubles nine;
    ASSERT_TRUE(reader.Read(nine.data()));
    EXPECT_EQ(nine, OneToNine);
    ASSERT_TRUE(reader.Read(nine.data()));
    EXPECT_TRUE(std::signbit(nine[0]));
    EXPECT_EQ(nine[1], static_cast<double>(0.1f));
    EXPECT_EQ(nine[2], static_cast<double>(1e38f));
    EXPECT_EQ(nine[8], static_cast<double>(1e-45f));
    EXPECT_FALSE(reader.Read(nine.data()));
}

TEST(STLReader, GivesInfinityAndNaNOfABinaryFile) {
    const float inf = std::numeric_limits<float>::infinity();
    const TempFile file(StlBinary("", 1, {StlRecord({inf, -inf, std::nanf(""), 0, 0, 0, 0, 0, 0})}));
    STLReader reader(file.Name());
    NineDoubles nine;
    ASSERT_TRUE(reader.Read(nine.data()));
    EXPECT_EQ(nine[0], std::numeric_limits<double>::infinity());
    EXPECT_EQ(nine[1], -std::numeric_limits<double>::infinity());
    EXPECT_TRUE(std::isnan(nine[2]));
}

TEST(STLReader, IgnoresTheCountOfABinaryFile) {
    for (const std::uint32_t count : {0u, 1u, 3u, 0xFFFFFFFFu}) {
        SCOPED_TRACE(count);
        EXPECT_EQ(CountTriangles(StlBinary("part", count, {RecordOneToNine, RecordOneToNine})), 2u);
    }
}

TEST(STLReader, DropsATruncatedLastRecord) {
    const std::string whole = StlBinary("part", 2, {RecordOneToNine, RecordOneToNine});
    EXPECT_EQ(CountTriangles(whole.substr(0, whole.size() - 1)), 1u);
    EXPECT_EQ(CountTriangles(whole + "more"), 2u);
}

// 6000 records are more than one block of memory, and a record of 50 bytes lies across its end.
TEST(STLReader, ReadsABinaryFileOfManyBlocks) {
    std::vector<std::string> records;
    for (int i = 0; i < 6000; ++i) records.push_back(StlRecord({static_cast<float>(i), 2, 3, 4, 5, 6, 7, 8, 9}));
    const TempFile file(StlBinary("part", 6000, records));
    STLReader reader(file.Name());
    NineDoubles nine;
    for (int i = 0; i < 6000; ++i) {
        ASSERT_TRUE(reader.Read(nine.data()));
        ASSERT_EQ(nine[0], i);
        ASSERT_EQ(nine[8], 9.0);
    }
    EXPECT_FALSE(reader.Read(nine.data()));
}

TEST(STLReader, TellsBinaryByOneHighByteBehindOffset80) {
    std::string text = StlText(20);
    for (const std::size_t at : {std::size_t{80}, std::size_t{300}, std::size_t{591}}) {
        SCOPED_TRACE(at);
        std::string changed = text;
        changed[at] = '\x80';
        EXPECT_EQ(CountTriangles(changed), (text.size() - 84) / 50);
    }
    for (const std::size_t at : {std::size_t{0}, std::size_t{79}, std::size_t{592}}) {
        SCOPED_TRACE(at);
        std::string changed = text;
        changed[at] = '\x80';
        EXPECT_GE(CountTriangles(changed), 19u);
    }
}

TEST(STLReader, TakesLowBytesForText) {
    EXPECT_EQ(CountTriangles(StlBinary("part", 12, std::vector<std::string>(12, std::string(50, '\0')))), 0u);
    EXPECT_EQ(CountTriangles(StlBinary("solid", 2, {RecordOneToNine, RecordOneToNine})), 2u)
        << "solid in front means nothing";
}

TEST(STLReader, OfATextThatEndsWithinAFacetGivesWhatItCouldRead) {
    const TempFile file("solid\nvertex 1 2 3 vertex 4 5 6 vertex 7");
    STLReader reader(file.Name());
    NineDoubles nine;
    nine.fill(-1.0);
    EXPECT_TRUE(reader.Read(nine.data()));
    EXPECT_EQ(nine, (NineDoubles{1, 2, 3, 4, 5, 6, 7, -1, -1}));
    EXPECT_FALSE(reader.Read(nine.data()));
}

TEST(STLReader, GivesATextTriangleThatEndsWithTheFile) {
    EXPECT_EQ(CountTriangles("solid\nvertex 1 2 3 vertex 4 5 6 vertex 7 8 9"), 1u);
    EXPECT_EQ(CountTriangles("solid\nvertex 1 2 3 vertex 4 5 6 vertex 7 8 9\n"), 1u);
    EXPECT_EQ(CountTriangles("solid\nvertex "), 1u) << "the end is not seen before a number is asked for";
    EXPECT_EQ(CountTriangles("solid\nvertex"), 0u);
    EXPECT_EQ(CountTriangles("solid"), 0u);
}

TEST(STLReader, TakesALongFirstLineInPieces) {
    const std::string triangle = " vertex 1 2 3 a 4 5 6 b 7 8 9\n";
    EXPECT_EQ(CountTriangles(std::string(250, 'x') + triangle), 0u) << "the first 255 bytes hold the word's beginning";
    EXPECT_EQ(CountTriangles(std::string(255, 'x') + triangle), 1u);
    EXPECT_EQ(CountTriangles(std::string(255, 'x')), 0u);
}

TEST(STLReader, HasNoTrianglesWithoutAFile) {
    for (const char* name : {"", "/nowhere/at/all.stl"}) {
        STLReader reader(name);
        double nine[9];
        EXPECT_FALSE(reader.IsOpen());
        EXPECT_FALSE(reader.Read(nine));
        EXPECT_EQ(reader.ReadHeader(), "");
    }
    STLReader reader(static_cast<const char*>(nullptr));
    double nine[9];
    EXPECT_FALSE(reader.IsOpen());
    EXPECT_FALSE(reader.Read(nine));
}

// Folders have no bytes, devices no end, and a pipe cannot be read a second time.
TEST(STLReader, OpensPlainFilesOnly) {
    const std::string folder = std::filesystem::temp_directory_path().string();
    for (const std::string& name : {folder, std::string("/dev/null"), std::string("/dev/zero")}) {
        SCOPED_TRACE(name);
        STLReader reader(name);
        double nine[9];
        EXPECT_FALSE(reader.IsOpen());
        EXPECT_FALSE(reader.Read(nine));
        EXPECT_EQ(reader.ReadHeader(), "");
    }
}

TEST(STLReader, DoesNotWaitForAPipe) {
    const TempFile file;
    ASSERT_EQ(mkfifo(file.Name().c_str(), S_IRUSR | S_IWUSR), 0);
    EXPECT_FALSE(STLReader(file.Name()).IsOpen()) << "nobody writes to it";
}

TEST(STLReader, FollowsALinkToAPlainFile) {
    const TempFile file(StlText(2));
    const TempFile link;
    std::filesystem::create_symlink(file.Name(), link.Name());
    STLReader reader(link.Name());
    EXPECT_EQ(ReadAll(reader).size(), 3u);
}

// The limit refuses every user, root too, as a file without permissions does not.
TEST(STLReader, HasNoTrianglesInAFileThatIsRefused) {
    const TempFile file(StlText(1));
    rlimit before;
    ASSERT_EQ(getrlimit(RLIMIT_NOFILE, &before), 0);
    const rlimit none{0, before.rlim_max};
    ASSERT_EQ(setrlimit(RLIMIT_NOFILE, &none), 0);
    STLReader reader(file.Name());
    const Opened opened(file.Name().c_str());
    setrlimit(RLIMIT_NOFILE, &before);
    double nine[9];
    EXPECT_FALSE(reader.IsOpen());
    EXPECT_FALSE(reader.Read(nine));
    ASSERT_NE(opened.handle, nullptr);
    EXPECT_STREQ(opened.header, "");
}

TEST(STLReader, HasNoTrianglesInAnEmptyFile) { EXPECT_EQ(CountTriangles(""), 0u); }

TEST(STLReader, RefusesNullAndLosesNothingByIt) {
    const TempFile file(StlText(1));
    STLReader reader(file.Name());
    NineDoubles nine;
    EXPECT_FALSE(reader.Read(nullptr));
    EXPECT_TRUE(reader.Read(nine.data()));
}

TEST(STLReader, GivesTheSameTrianglesAfterTheHeaderIsReadAgain) {
    for (const std::string& bytes : {StlText(3), StlBinary("part", 1, {RecordOneToNine}), std::string("solid")}) {
        const TempFile file(bytes);
        STLReader reader(file.Name());
        const auto first = ReadAll(reader);
        reader.ReadHeader();
        EXPECT_TRUE(SameBits(ReadAll(reader), first));
    }
}

TEST(STLReader, ReadsEveryPrefixAsThePlainRulesDo) {
    const TempFile file;
    for (const std::string& bytes :
         {StlText(3), StlText(2, "\r\n"), StlBinary("part", 2, {RecordOneToNine, RecordOneToNine})})
        for (std::size_t size = 0; size <= bytes.size(); ++size) {
            SCOPED_TRACE(size);
            file.Write(bytes.substr(0, size));
            STLReader reader(file.Name());
            PlainStlReader plain(file.Name());
            EXPECT_TRUE(SameBits(ReadAll(reader), ReadAll(plain)));
            EXPECT_EQ(HeaderOf(bytes.substr(0, size)), plain.ReadHeader());
        }
}

TEST(KmSTLOpen, GivesTheHeaderOfABinaryFile) {
    EXPECT_EQ(HeaderOf(StlBinary("part", 1, {RecordOneToNine})), "part");
    EXPECT_EQ(HeaderOf(StlBinary(std::string(80, 'h'), 0xFFFFFFFF, {RecordOneToNine})), std::string(80, 'h'));
    EXPECT_EQ(HeaderOf(StlBinary("", 1, {RecordOneToNine})), "");
}

TEST(KmSTLOpen, EndsTheHeaderAtTheFirstHighByte) {
    EXPECT_EQ(HeaderOf(StlBinary("pa\xE4rt", 1, {RecordOneToNine})), "pa");
    EXPECT_EQ(HeaderOf(StlBinary("\xFF", 1, {RecordOneToNine})), "");
}

TEST(KmSTLOpen, GivesTheFirstLineOfAText) {
    EXPECT_EQ(HeaderOf("solid part\nfacet\n"), "solid part\n");
    EXPECT_EQ(HeaderOf("solid part\r\nfacet\n"), "solid part\r\n");
    EXPECT_EQ(HeaderOf("solid"), "solid");
    EXPECT_EQ(HeaderOf(""), "");
    EXPECT_EQ(HeaderOf("pa\xE4rt\n"), "pa\xE4rt\n") << "a high byte ends the header of a binary file only";
    EXPECT_EQ(HeaderOf(std::string("pa\0rt\n", 6)), "pa");
}

TEST(KmSTLOpen, CutsTheHeaderAt80) {
    EXPECT_EQ(HeaderOf(std::string(79, 'h') + "\nfacet"), std::string(79, 'h') + "\n");
    EXPECT_EQ(HeaderOf(std::string(80, 'h') + "\nfacet"), std::string(80, 'h'));
    EXPECT_EQ(HeaderOf(std::string(300, 'h') + "\nfacet"), std::string(80, 'h'));
}

TEST(KmSTLOpen, WritesNothingBehindItsRoomOf81) {
    const TempFile file(std::string(300, 'h'));
    char header[82];
    std::memset(header, '#', sizeof header);
    KmSTLClose(KmSTLOpen(file.Name().c_str(), header));
    EXPECT_EQ(header[80], '\0');
    EXPECT_EQ(header[81], '#');
}

TEST(KmSTLOpen, StandsOnTheFirstTriangle) {
    for (const std::string& bytes : {StlText(2), StlBinary("part", 2, {RecordOneToNine, RecordOneToNine})}) {
        const TempFile file(bytes);
        const Opened opened(file.Name().c_str());
        ASSERT_NE(opened.handle, nullptr);
        EXPECT_EQ(ReadAll(*opened.handle).size(), 3u);
    }
}

TEST(KmSTLOpen, GivesAHandleWithoutTrianglesIfTheFileCannotBeOpened) {
    const Opened opened("/nowhere/at/all.stl");
    ASSERT_NE(opened.handle, nullptr);
    EXPECT_FALSE(opened.handle->IsOpen());
    EXPECT_STREQ(opened.header, "");
    double nine[9];
    EXPECT_FALSE(opened.handle->Read(nine));
}

TEST(KmSTLOpen, RefusesANullName) {
    const Opened opened(nullptr);
    EXPECT_EQ(opened.handle, nullptr);
    EXPECT_STREQ(opened.header, "");
}

TEST(KmSTLOpen, CanDoWithoutTheHeader) {
    const TempFile file(StlText(1));
    std::unique_ptr<STLReader, Closer> handle(KmSTLOpen(file.Name().c_str(), nullptr));
    ASSERT_NE(handle, nullptr);
    double nine[9];
    EXPECT_TRUE(handle->Read(nine));
}

TEST(KmSTLClose, AcceptsNull) { KmSTLClose(nullptr); }

TEST(STLReader, TellsHowMuchOfTheFileItHasRead) {
    for (const bool isText : {false, true}) {
        const TempFile file(isText ? StlText(20000) : StlBinary("", 20000, {std::string(20000 * 50, '\xAA')}));
        STLReader reader(file.Name());
        double last = reader.ShareRead();
        EXPECT_LT(last, 0.5);
        for (double nine[9]; reader.Read(nine); last = reader.ShareRead()) ASSERT_GE(reader.ShareRead(), last);
        EXPECT_EQ(reader.ShareRead(), 1.0);
    }
    EXPECT_EQ(STLReader("").ShareRead(), 0.0);
}

}  // namespace
}  // namespace KM
