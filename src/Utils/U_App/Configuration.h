#pragma once

#include <string>
#include <vector>

namespace KM::Application {

/// The configuration files of a run, read into the settings one over the other.
/// @throws "Bad XML File", std::length_error, IO::XFileIOError  as `XML::ReadElement` does; what was read stays
class Configuration {
public:
    /// Reads all XML files on the command line, in their order. An argument that is no file, or no XML file, leaves a
    /// line in the log. If the action to run is then the redirector, reads the file that it names, so that a small file
    /// on the command line can point at the real configuration.
    ///
    /// References to arguments ("%1") count from the last file on the command line when all are read.
    void Read();
    /// Logs the names of the files.
    void Tell() const;

private:
    void ReadArguments();
    void Redirect();
    void ReadFile(const std::string& fileName);

    std::vector<std::string> files_;
    int shifting_ = 0;  // argument of the last file on the command line
};

}  // namespace KM::Application
