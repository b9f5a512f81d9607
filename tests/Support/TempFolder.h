#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace KM::Test {

/// An empty folder that nobody else uses; it goes with all that is in it when the object does.
class TempFolder {
public:
    TempFolder();
    TempFolder(const TempFolder&) = delete;
    TempFolder& operator=(const TempFolder&) = delete;
    ~TempFolder();

    /// Full name of an entry. With an empty name, the folder with a slash at its end.
    std::string operator/(const std::string& name) const { return (folder_ / name).string(); }

    void Write(const std::string& name, const std::string& bytes) const;
    std::string Bytes(const std::string& name) const;
    bool Has(const std::string& name) const;
    /// All names directly in it, sorted.
    std::vector<std::string> Names() const;

private:
    std::filesystem::path folder_;
};

}  // namespace KM::Test
