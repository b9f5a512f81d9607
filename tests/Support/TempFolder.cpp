#include "Support/TempFolder.h"

#include <algorithm>
#include <fstream>
#include <iterator>
#include <random>

namespace KM::Test {

namespace fs = std::filesystem;

TempFolder::TempFolder() {
    std::random_device random;
    folder_ = fs::temp_directory_path() / ("km-test-" + std::to_string(random()) + std::to_string(random()));
    fs::create_directory(folder_);
}

TempFolder::~TempFolder() {
    std::error_code ignored;
    fs::remove_all(folder_, ignored);
}

void TempFolder::Write(const std::string& name, const std::string& bytes) const {
    std::ofstream(folder_ / name, std::ios::binary).write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
}

std::string TempFolder::Bytes(const std::string& name) const {
    std::ifstream stream(folder_ / name, std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(stream), {});
}

bool TempFolder::Has(const std::string& name) const { return fs::exists(fs::symlink_status(folder_ / name)); }

std::vector<std::string> TempFolder::Names() const {
    std::vector<std::string> names;
    for (const fs::directory_entry& entry : fs::directory_iterator(folder_))
        names.push_back(entry.path().filename().string());
    std::sort(names.begin(), names.end());
    return names;
}

}  // namespace KM::Test
