#pragma once

#include <functional>
#include <string>

namespace KM::Test {

/// Runs the work in a process of its own whose terminal is ours. The keys wait there before it looks; an empty text hangs
/// up instead.
/// @return  what the work returned, and a line "terminal left in disorder" if it has changed the way keys come in
std::string OnTerminal(const std::string& keys, const std::function<std::string()>& work);

}  // namespace KM::Test
