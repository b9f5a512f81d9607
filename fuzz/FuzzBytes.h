#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cstring>

namespace KM::Fuzz {

/// Takes numbers from the input as long as there are any, and zeros after that.
class Bytes {
public:
    Bytes(const std::uint8_t* data, std::size_t size) : data_(data), left_(size) {}

    std::uint8_t Byte() {
        if (left_ == 0) return 0;
        --left_;
        return *data_++;
    }

    /// A small grid makes ties and degenerate triangles; now and then any bit pattern.
    double Coordinate() {
        const std::uint8_t kind = Byte();
        if (kind < 250) return (kind % 16) * 0.25;
        double any = 0.0;
        std::uint8_t raw[sizeof any];
        for (std::uint8_t& byte : raw) byte = Byte();
        std::memcpy(&any, raw, sizeof any);
        return any;
    }

    std::size_t Left() const { return left_; }

private:
    const std::uint8_t* data_;
    std::size_t left_;
};

inline void Require(bool condition) {
    if (!condition) std::abort();
}

}  // namespace KM::Fuzz
