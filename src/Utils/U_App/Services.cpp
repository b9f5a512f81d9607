#include "Utils/U_App/Services.h"

namespace KM::Application {
namespace {

std::ostream*& CurrentDumpStream() {
    static VoidStreamBuf swallow;
    static std::ostream silent(&swallow);
    static std::ostream* current = &silent;
    return current;
}

}  // namespace

std::ostream& Services::DumpStream() { return *CurrentDumpStream(); }

void Services::DumpStream(std::ostream& stream) { CurrentDumpStream() = &stream; }

}  // namespace KM::Application
