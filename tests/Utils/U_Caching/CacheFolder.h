#pragma once

#include <gtest/gtest.h>

#include <bit>
#include <cstdint>
#include <string>

#include "Support/LogCapture.h"
#include "Support/TempFolder.h"
#include "Utils/U_Caching/Caching.h"

namespace KM::Test {

/// The bytes of a state file, put together here by hand.
inline std::string CacheInfoBytes(std::uint32_t format, double between, double last, double size, double factor) {
    std::string bytes;
    for (int shift = 0; shift < 32; shift += 8) bytes += static_cast<char>(format >> shift);
    for (const double value : {between, last, size, factor})
        for (int shift = 0; shift < 64; shift += 8)
            bytes += static_cast<char>(std::bit_cast<std::uint64_t>(value) >> shift);
    return bytes;
}

/// An empty cache folder with the limits that a process has at start, and the log turned on. The folder of the user is
/// never touched.
class CacheFolder : public testing::Test {
protected:
    CacheFolder() {
        Caching::Path(temp / "cache");
        Caching::CleaningSize(2000.0);
        Caching::DeleteFactor(0.5);
        Caching::TimeBetweenAnalysis(900.0);
        Caching::LastAnalysisTime(0.0);
        Caching::CleaningEnabled(false);
        Caching::InfoNeedsReading(true);
    }

    std::string Info() const { return temp.Bytes("cache/Cache.Info"); }
    void Info(const std::string& bytes) const { temp.Write("cache/Cache.Info", bytes); }
    /// The bytes that stand for the present values.
    static std::string PresentInfo() {
        return CacheInfoBytes(4, Caching::TimeBetweenAnalysis(), Caching::LastAnalysisTime(), Caching::CleaningSize(),
                              Caching::DeleteFactor());
    }

    const TempFolder temp;
    const LogCapture log;
};

}  // namespace KM::Test
