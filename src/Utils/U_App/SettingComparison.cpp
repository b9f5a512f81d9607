#include "Utils/U_App/SettingComparison.h"

#include <algorithm>
#include <cmath>
#include <string_view>

#include "Utils/U_XMLReader/Conversions.h"

namespace KM::Application {
namespace {

bool IsOneOf(std::string_view type, std::initializer_list<std::string_view> types) {
    return std::find(types.begin(), types.end(), type) != types.end();
}

bool AreSameNumber(double a, double b) { return a == b || (std::isnan(a) && std::isnan(b)); }

/// Calls `use` with the name and the number of each value that the setting can take.
template <typename Use>
void ForEachValue(const XML::Element& setting, const Use& use) {
    for (const XML::Base* child : setting.Children())
        if (child->N() != XML::CommentName) use(child->N(), XML::ToInteger(child->V()));
}

std::string NameOfEnum(const XML::Element& setting, int number) {
    std::string found;
    ForEachValue(setting, [&](const std::string& name, int value) {
        if (found.empty() && value == number) found = name;
    });
    return found;
}

std::string NamesOfFlags(const XML::Element& setting, int mask) {
    std::string names;
    ForEachValue(setting, [&](const std::string& name, int bit) {
        if ((mask & bit) == 0) return;
        if (!names.empty()) names += " | ";
        names += name;
    });
    return names;
}

}  // namespace

Comparison CompareWithDefault(const XML::Element& setting) {
    const std::string& type = setting.AttributeValue("Type");
    const std::string& value = setting.V();
    const std::string& standard = setting.AttributeValue("Default");
    const auto changedUnless = [](bool isSame) { return isSame ? Comparison::Same : Comparison::Changed; };
    if (type.empty()) return value.empty() ? Comparison::Same : Comparison::HasNoType;
    if (IsOneOf(type, {"Bool", "Int32", "Enum", "Flag"}))
        return changedUnless(XML::ToInteger(value) == XML::ToInteger(standard));
    if (IsOneOf(type, {"Real64", "AutoReal64"}))
        return changedUnless(AreSameNumber(XML::ToReal(value), XML::ToReal(standard)));
    if (type == "String") return changedUnless(value == standard);
    if (IsOneOf(type, {"EnumValue", "FlagValue", "Descriptor"})) return Comparison::Same;
    return Comparison::HasUnknownType;
}

std::string Shown(const XML::Element& setting, const std::string& value) {
    const std::string& type = setting.AttributeValue("Type");
    const int number = XML::ToInteger(value);
    if (type == "Bool") return number != 0 ? "Yes" : "No";
    if (type == "Enum") return NameOfEnum(setting, number) + " (EnumValue = " + std::to_string(number) + ")";
    if (type == "Flag") return NamesOfFlags(setting, number) + " (FlagValue = " + std::to_string(number) + ")";
    return value;
}

}  // namespace KM::Application
