#include "Utils/U_App/Services.h"

#include <new>

namespace KM::Application {
namespace {

struct Silence {
    VoidStreamBuf buffer;
    std::ostream stream{&buffer};
};

std::ostream*& CurrentDumpStream() {
    // In a room of its own, so that it is never destroyed: static objects may write their last line after it would be
    // gone.
    alignas(Silence) static unsigned char room[sizeof(Silence)];
    static std::ostream* current = &(new (room) Silence)->stream;
    return current;
}

}  // namespace

std::ostream& Services::DumpStream() { return *CurrentDumpStream(); }

void Services::DumpStream(std::ostream& stream) { CurrentDumpStream() = &stream; }

}  // namespace KM::Application
