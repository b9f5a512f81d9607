// A tool of which two parts want the same key: it ends while it is loaded.

#include "Utils/U_App/ToolMain.h"

namespace {

[[maybe_unused]] const bool isLogging = [] {
    KM::Test::LogToStandardOutput();
    return true;
}();

// The end of a process by an exception writes nothing out.
[[maybe_unused]] const bool isUnbuffered = [] {
    std::cout << std::unitbuf;
    return true;
}();

void Nothing() {}

const KM::Factory::FactorySubscriber first("Test.Twice", "1", Nothing, "", "", "", "");
const KM::Factory::FactorySubscriber second("Test.Twice", "2", Nothing, "", "", "", "");

}  // namespace

int main() { return 0; }
