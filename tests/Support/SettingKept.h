#pragma once

#include <string>

#include "Utils/U_Settings/Settings.h"
#include "Utils/U_XMLReader/Element.h"

namespace KM::Test {

/// Gives a setting another value for its life time.
class SettingKept {
public:
    SettingKept(const std::string& key, const std::string& value)
        : element_(Settings::ToXMLElement(key)), former_(element_.V()) {
        element_.V(value);
    }
    SettingKept(const SettingKept&) = delete;
    SettingKept& operator=(const SettingKept&) = delete;
    ~SettingKept() { element_.V(former_); }

private:
    XML::Element& element_;
    std::string former_;
};

}  // namespace KM::Test
