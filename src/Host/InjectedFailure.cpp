#include "InjectedFailure.h"

#include <algorithm>
#include <array>

namespace {

constexpr int NoOrder = -1;

using Orders = std::array<int, KM_HOST_SERVICE_COUNT>;

constexpr Orders NoOrders() {
    Orders orders{};
    orders.fill(NoOrder);
    return orders;
}

/// Per service, the calls that still work before the one that fails. One set a thread, because hosts work on several meshes
/// in several threads, and a failure must hit the call that was meant.
thread_local constinit Orders callsLeft = NoOrders();

}  // namespace

bool KM::Host::FailsNow(KmHostService service) {
    int& left = callsLeft[service];
    if (left == NoOrder) return false;
    return left-- == 0;
}

void KmHostFailAfter(KmHostService service, int calls) {
    if (service < 0 || service >= KM_HOST_SERVICE_COUNT) return;
    callsLeft[service] = std::max(calls, NoOrder);
}

int KmHostFailNever() {
    const auto idle = std::count(callsLeft.begin(), callsLeft.end(), NoOrder);
    callsLeft = NoOrders();
    return KM_HOST_SERVICE_COUNT - static_cast<int>(idle);
}
