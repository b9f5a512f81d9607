#pragma once

#include <string>

#include "CommandLine.h"

namespace KM::Tool {

/// The configuration that a request stands for, as XML: the action, and those of its settings that were given. Paths are
/// absolute, so that it means the same in any folder; so is a path that was left to its default.
/// @throws Misuse  for a value that a configuration cannot hold, such as a name with a line feed
std::string ConfigurationOf(const Request& request);

/// A file for the length of a run.
class TemporaryConfiguration {
public:
    explicit TemporaryConfiguration(const std::string& text);
    TemporaryConfiguration(const TemporaryConfiguration&) = delete;
    TemporaryConfiguration& operator=(const TemporaryConfiguration&) = delete;
    ~TemporaryConfiguration();

    const std::string& Name() const { return name_; }

private:
    std::string name_;
};

}  // namespace KM::Tool
