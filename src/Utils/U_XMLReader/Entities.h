#pragma once

#include <string>

namespace KM::XML {

/// Puts the characters in the place of "&lt;", "&gt;", "&amp;", "&apos;" and "&quot;". Any other "&" stays, and what
/// comes out is not looked at again.
void DecodeEntities(std::string& text);

/// The text with these five characters as entities.
std::string WithEntities(const std::string& text);

}  // namespace KM::XML
