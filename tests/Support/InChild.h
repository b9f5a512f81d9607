#pragma once

#include <functional>
#include <string>

namespace KM::Test {

/// Runs the work in a copy of this process, and waits for its end. So a test can limit, confuse or kill a process, and
/// sees module state as it is at start.
/// @return  what the work returned; the text "exception" if it threw; empty if the process died before
std::string InChild(const std::function<std::string()>& work);

}  // namespace KM::Test
