#pragma once

#include <string>

#include "Utils/U_Console/DumpingDevice.h"

namespace KM {

/// The code that begins a foreground colour.
std::string ColorCode(int color);

/// Hands a line to the device, its codes turned into calls.
void WriteMarkedUp(DumpingDevice& device, const std::string& text);

}  // namespace KM
