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

// Policies that are never destroyed, for the same reason.
const StatusPolicy*& CurrentStatus() {
    static const StatusPolicy& standard = *new StatusPolicy;
    static const StatusPolicy* current = &standard;
    return current;
}

const AbortEventPolicy*& CurrentAbortEvent() {
    static const AbortEventPolicy& standard = *new AbortEventPolicy;
    static const AbortEventPolicy* current = &standard;
    return current;
}

}  // namespace

std::ostream& Services::DumpStream() { return *CurrentDumpStream(); }

void Services::DumpStream(std::ostream& stream) { CurrentDumpStream() = &stream; }

const StatusPolicy& Services::Status() { return *CurrentStatus(); }

void Services::Status(const StatusPolicy& policy) { CurrentStatus() = &policy; }

const AbortEventPolicy& Services::AbortEvent() { return *CurrentAbortEvent(); }

void Services::AbortEvent(const AbortEventPolicy& policy) { CurrentAbortEvent() = &policy; }

}  // namespace KM::Application
