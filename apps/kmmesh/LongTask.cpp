#include "LongTask.h"

#include <algorithm>

#include "Utils/U_App/Services.h"
#include "Utils/U_Debug/Exceptions.h"

namespace KM::Tool {

LongTask::LongTask(const std::string& name, double steps) : progress_(name), steps_(std::max(steps, 1.0)) {}

void LongTask::At(double share) {
    // Asked for here as well: of the reports of a second only the first goes on.
    if (Application::Services::AbortEvent()()) throw XUserAbort();
    progress_(share);
}

}  // namespace KM::Tool
