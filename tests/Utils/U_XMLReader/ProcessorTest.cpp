#include "Utils/U_XMLReader/Processor.h"

#include <gtest/gtest.h>

#include "Utils/U_XMLReader/Reader.h"

namespace KM::XML {
namespace {

TEST(Processor, DoesNothingWithWhatItDoesNotTake) {
    struct Counter : Processor {
        int attributes = 0;
        void OnAttribute(const std::string&, const std::string&) override { ++attributes; }
    } counter;
    ReadFromString("<?a?><!--b--><c d='1' e='2'>f<![CDATA[g]]></c>", counter, true);
    EXPECT_EQ(counter.attributes, 2);
    Processor deaf;
    ReadFromString("<?a?><!--b--><c d='1' e='2'>f<![CDATA[g]]></c>", deaf, true);
    deaf.OnAttributesEnd();
}

}  // namespace
}  // namespace KM::XML
