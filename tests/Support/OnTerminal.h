#pragma once

#include <functional>
#include <optional>
#include <string>

namespace KM::Test {

/// Runs the work in a process of its own, whose terminal is ours. The keys wait there before it begins; nothing hangs up
/// instead.
/// @return  what the work returned, and behind it a line "terminal left in disorder" if its settings are not what they
///          were before the work
std::string OnTerminal(const std::optional<std::string>& keys, const std::function<std::string()>& work);

}  // namespace KM::Test
