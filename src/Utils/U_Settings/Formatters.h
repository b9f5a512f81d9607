#pragma once

#include <string>

namespace KM::Settings {

/// The address of a stylesheet that shows our XML in a browser, on the example server of the default configuration.
inline std::string FormatterAddress(const std::string& path) { return "http://formatters.example.com" + path; }

/// The one for configurations.
inline std::string ConfigurationFormatterAddress() { return FormatterAddress("/KMHS/Formatters/Config.xsl"); }

}  // namespace KM::Settings
