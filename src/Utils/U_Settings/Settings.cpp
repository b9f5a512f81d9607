#include "Utils/U_Settings/Settings.h"

#include "Utils/U_App/Arguments.h"
#include "Utils/U_Debug/Verbose.h"
#include "Utils/U_XMLReader/Conversions.h"

namespace KM::Settings {
namespace {

// Made on first use: static objects of many files reach it during load.
XML::Element& Root() {
    static XML::Element root("Settings");
    return root;
}

// A message passes check points and devices, which read settings too: what they find wrong meanwhile is not told, or
// telling it would never end.
class Telling {
public:
    Telling() { isUnderWay = true; }
    Telling(const Telling&) = delete;
    Telling& operator=(const Telling&) = delete;
    ~Telling() { isUnderWay = false; }

    static bool IsUnderWay() { return isUnderWay; }

private:
    static thread_local bool isUnderWay;
};

thread_local bool Telling::isUnderWay = false;

void TellBadReference() {
    if (Telling::IsUnderWay()) return;
    const Telling telling;
    Verbose::WriteMessage_1(Verbose::EMessageType::Error, "Found an invalide indirerection. Return void!");
}

std::string ArgumentOf(const std::string& reference) {
    const auto& arguments = Application::Arguments();
    const long long index =
        static_cast<long long>(XML::ToInteger(reference.substr(1))) + Application::RedirectionShifting();
    if (index >= 0 && index < static_cast<long long>(arguments.size()))
        return arguments[static_cast<std::size_t>(index)];
    TellBadReference();
    return {};
}

}  // namespace

Add::Add(const std::string& key, const std::string& defaultValue, const std::string& type, const std::string& help,
         const std::string& policy, const std::string& boundLower, const std::string& boundUpper,
         const std::string& file, const std::string& line, bool exportDefault) {
    XML::Element& element = ToXMLElement(key);
    const auto describe = [&element](const char* name, const std::string& text) {
        if (!text.empty()) element += XML::Attribute(name, text);
    };
    if (exportDefault) describe("Default", defaultValue);
    describe("File", file);
    describe("Type", type);
    describe("Line", line);
    describe("Help", help);
    describe("Policy", policy);
    describe("BoundLower", boundLower);
    describe("BoundUpper", boundUpper);
    element.V(defaultValue);
}

XML::Element& ToXMLElement(const std::string& key) { return Root()[key]; }

std::string ToString(const std::string& key) {
    // A value in quotes keeps them: hosts that give quoted names count on it.
    std::string value = Root().ToString(key);
    return value.starts_with('%') ? ArgumentOf(value) : value;
}

int ToInt(const std::string& key) { return XML::ToInteger(ToString(key)); }

bool ToBool(const std::string& key) { return ToInt(key) != 0; }

double ToDouble(const std::string& key) { return XML::ToReal(ToString(key)); }

bool IsParallel() { return ToBool("Behavior.IsParallel"); }

}  // namespace KM::Settings
