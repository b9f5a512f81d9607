#pragma once

#include <string>

#include "KmApi.h"
#include "Utils/U_XMLReader/Element.h"

/// The registry of settings: one tree for the whole process, in which each configurable value has a dotted key. A key
/// is declared where it is used, by a static `Add` object; configuration files then change values. All values are
/// texts, and are converted when they are read.
///
/// Reading is safe beside other readers, since it makes nothing. The tree is destroyed at exit.
namespace KM::Settings {

/// Declares a key while it is constructed: makes the element at the key, describes it by attributes, and sets its value
/// to the default. The library's own keys come first, in one fixed order with every linker; static `Add` objects of a
/// program that uses the library add theirs behind.
class KM_API Add {
public:
    /// @param key            dotted path from the root; groups on the way are made as needed
    /// @param defaultValue   value of the key; also kept as attribute "Default" if `exportDefault` is true
    /// @param type           "Bool", "Int32", "Real64", "AutoReal64", "Real32", "AutoReal32", "String",
    ///                       "Enum", "EnumValue", "Flag", "FlagValue", "Descriptor"; empty for a group
    /// @param policy         "Developer" or empty
    /// @param boundLower     the bounds describe, no value is tested against them
    /// @param file, line     place of the declaration
    ///
    /// An empty text adds no attribute. Of a key that is declared again, attributes and value are overwritten.
    Add(const std::string& key, const std::string& defaultValue, const std::string& type, const std::string& help,
        const std::string& policy, const std::string& boundLower, const std::string& boundUpper,
        const std::string& file, const std::string& line, bool exportDefault);
};

/// The element at the key, made if there is none. An empty key gives the root, whose name is "Settings".
KM_API XML::Element& ToXMLElement(const std::string& key);

/// The value of the key; empty for an unknown key.
///
/// A value that begins with "%" stands for an argument of the command line: the rest is a number, counted from
/// `Application::RedirectionShifting()`, so "%1" is the first argument behind the last configuration file. It is not
/// looked at again, whatever it says. If there is no such argument, the result is empty, with one `Error` in the log. (A
/// reference that is met while this very message is written is not told again.)
KM_API std::string ToString(const std::string& key);

/// The value as integer, by the rules of `XML::Element::ToInt`: an unknown key gives 1.
KM_API int ToInt(const std::string& key);

/// Whether the integer is not zero: an unknown key is on.
KM_API bool ToBool(const std::string& key);

/// The decimal number at the start of the value; an unknown key gives 0.0.
KM_API double ToDouble(const std::string& key);

/// The switch "Behavior.IsParallel".
KM_API bool IsParallel();

}  // namespace KM::Settings
