#pragma once

#include "KmHost.h"

namespace KM::Host {

/// True when this call of the service was ordered to fail. Each service that can fail asks exactly once a call.
bool FailsNow(KmHostService service);

}  // namespace KM::Host
