#include "Utils/U_App/Services.h"

#include <gtest/gtest.h>

#include <sstream>
#include <string>

namespace KM {
namespace {

using Application::Services;

class DumpStreamKept : public testing::Test {
protected:
    ~DumpStreamKept() override { Services::DumpStream(before_); }

private:
    std::ostream& before_ = Services::DumpStream();
};

using DumpStream = DumpStreamKept;

TEST(VoidStreamBuf, SwallowsAllThatItIsGiven) {
    VoidStreamBuf buffer;
    std::ostream out(&buffer);
    out << "text" << 12 << 'c' << std::string(100000, 'x') << std::endl;
    out.put(static_cast<char>(-1));  // the byte that looks like the end of a file
    EXPECT_TRUE(out.good());
    EXPECT_EQ(buffer.sputn("abc", 3), 3);
    EXPECT_NE(buffer.sputc('a'), std::char_traits<char>::eof());
}

TEST_F(DumpStream, SwallowsAtStart) {
    Services::DumpStream() << "nobody sees this" << std::flush;
    EXPECT_TRUE(Services::DumpStream().good());
    EXPECT_NE(dynamic_cast<VoidStreamBuf*>(Services::DumpStream().rdbuf()), nullptr);
}

TEST_F(DumpStream, GoesWhereItIsSet) {
    std::ostringstream out;
    Services::DumpStream(out);
    EXPECT_EQ(&Services::DumpStream(), &out);
    Services::DumpStream() << "line";
    EXPECT_EQ(out.str(), "line");
}

}  // namespace
}  // namespace KM
