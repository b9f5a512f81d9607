#pragma once

#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>
#include <string>

namespace KM::Test {

/// A file name in the temporary folder that nobody else uses; the file goes when the object does. It can be written
/// anew as often as a test likes.
class TempFile {
public:
    TempFile() {
        std::random_device random;
        const std::string name = "km-test-" + std::to_string(random()) + std::to_string(random());
        name_ = (std::filesystem::temp_directory_path() / name).string();
    }
    explicit TempFile(const std::string& bytes) : TempFile() { Write(bytes); }
    ~TempFile() {
        std::error_code ignored;
        std::filesystem::remove(name_, ignored);
    }
    TempFile(const TempFile&) = delete;
    TempFile& operator=(const TempFile&) = delete;

    const std::string& Name() const { return name_; }

    void Write(const std::string& bytes) const {
        // Some file systems wait for the disk when a file is emptied and written anew.
        std::filesystem::remove(name_);
        std::ofstream(name_, std::ios::binary).write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    }

    std::string Bytes() const {
        std::ifstream stream(name_, std::ios::binary);
        return std::string(std::istreambuf_iterator<char>(stream), {});
    }

private:
    std::string name_;
};

}  // namespace KM::Test
