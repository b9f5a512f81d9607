#pragma once

#include <string_view>

#include "Utils/U_XMLReader/Processor.h"

namespace KM::XML {

/// Drives the processor with what the text holds; Reader.h has the grammar and the refusals.
void Parse(std::string_view text, Processor& processor, bool translate);

}  // namespace KM::XML
