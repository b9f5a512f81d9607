#pragma once

#include <clocale>
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>

#include "Support/TempFile.h"

namespace KM::Test {

/// Gives the process a decimal comma while it lives, also on a machine without any locale data: it makes the locale
/// itself, in the form that glibc reads. Another C library may not know that form; the locale then stays as it was, and
/// a point is what it should print anyway.
class CommaLocale {
public:
    CommaLocale() : before_(std::setlocale(LC_NUMERIC, nullptr)) {
        const std::filesystem::path folder = std::filesystem::path(folder_.Name()) / "comma";
        std::filesystem::create_directories(folder);
        std::ofstream(folder / "LC_NUMERIC", std::ios::binary) << Data();
        setenv("LOCPATH", folder_.Name().c_str(), 1);
        std::setlocale(LC_NUMERIC, "comma");
        unsetenv("LOCPATH");
    }
    ~CommaLocale() {
        std::setlocale(LC_NUMERIC, before_.c_str());
        std::error_code ignored;
        std::filesystem::remove_all(folder_.Name(), ignored);
    }
    CommaLocale(const CommaLocale&) = delete;
    CommaLocale& operator=(const CommaLocale&) = delete;

private:
    // A magic number, the number of items, where each begins, and the items: decimal point, separator of thousands,
    // grouping, the first two once more as wide characters, and the name of the character set.
    static std::string Data() {
        const std::uint32_t head[] = {0x20031115u ^ LC_NUMERIC, 6, 32, 34, 35, 36, 40, 44};
        const std::uint32_t wide[] = {0, ','};
        return std::string(reinterpret_cast<const char*>(head), sizeof head) + std::string(",\0\0\0", 4) +
               std::string(reinterpret_cast<const char*>(wide), sizeof wide) + std::string("ANSI_X3.4-1968", 15);
    }

    const TempFile folder_;
    const std::string before_;
};

}  // namespace KM::Test
