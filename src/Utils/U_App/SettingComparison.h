#pragma once

#include <string>

#include "Utils/U_XMLReader/Element.h"

namespace KM::Application {

/// How a setting stands to its default.
enum class Comparison { Same, Changed, HasNoType, HasUnknownType };

/// Compares the value of a setting with its attribute "Default", by the attribute "Type":
///
///   none                              Same if there is no value, else HasNoType
///   Bool, Int32, Enum, Flag           as integers
///   Real64, AutoReal64                as numbers
///   String                            as texts
///   EnumValue, FlagValue, Descriptor  Same
///   any other                         HasUnknownType
Comparison CompareWithDefault(const XML::Element& setting);

/// A value of the setting, or its default, for people: "Yes" or "No" for a Bool, the names of values for an Enum and a
/// Flag. All else as it is.
std::string Shown(const XML::Element& setting, const std::string& value);

}  // namespace KM::Application
