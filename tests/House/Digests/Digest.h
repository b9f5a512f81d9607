#pragma once

#include <cmath>
#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "Support/Numbers.h"

namespace KM::Test {

/// FNV-1a, 64 bits, over the bytes of what it is given.
class Digest {
public:
    template <class T>
    void Add(const T* items, std::size_t count) {
        const auto* bytes = reinterpret_cast<const unsigned char*>(items);
        for (std::size_t i = 0; i < count * sizeof(T); ++i) value_ = (value_ ^ bytes[i]) * 0x100000001b3u;
    }
    template <class T>
    void Add(const std::vector<T>& items) {
        Add(items.data(), items.size());
    }

    /// NaNs all count as one: their bits depend on the order in which a compiler takes operands.
    void Add(double x) {
        const double alike = std::isnan(x) ? NaN : x;
        Add(&alike, 1);
    }
    void Add(const TPoint<double>& p) {
        for (const double x : {p.X, p.Y, p.Z}) Add(x);
    }

    std::uint64_t Value() const { return value_; }

private:
    std::uint64_t value_ = 0xcbf29ce484222325u;
};

/// Prints a line of the list that two builds are compared by.
void Print(const std::string& what, const Digest& digest);

// One function a subsystem. Each prints a line for each of its results on each of its inputs.

void PrintAnalysisDigests();
void PrintCachingDigests();
void PrintDecimationDigests();
void PrintDecompositionDigests();
void PrintEditingDigests();
void PrintFaceDigests();
void PrintGeodesicDigests();
void PrintHoleDigests();
void PrintHostRoadDigests(const std::string& samples);
void PrintLineDigests();
void PrintPlaneAndSolverDigests();
void PrintPolygonDigests();
void PrintRefinementDigests();

}  // namespace KM::Test
