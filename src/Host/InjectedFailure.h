#pragma once

#include "KmHost.h"

namespace KM::Host {

/// True when this call of the service was ordered to fail. Each service that can fail asks once a call, behind its
/// refusals: a call that would come to nothing anyway does not count.
bool FailsNow(KmHostService service);

}  // namespace KM::Host
