#pragma once

#include <cstdint>
#include <vector>

#include "Geometry/Point.h"
#include "KmApi.h"

namespace KM {

/// A place on a polyline.
struct ParametricPoint {
    std::uint32_t path = 0;     ///< 0: there is one polyline
    std::uint32_t segment = 0;  ///< the segment from point `segment` to the one after it
    double t = 0.0;             ///< where in the segment: 0 is its start, 1 its end

    friend bool operator==(const ParametricPoint&, const ParametricPoint&) = default;
};

/// Finds places on a polyline by the share of its length: 0 is its start, 1 its end.
///
/// The polyline is referred to: it must outlive this object and stay as it is. Calls move a cursor, whose lengths are added
/// up and taken off on the way; so nearby calls one after the other are cheap, any other costs the segments between, and
/// the last bits of a result can depend on the calls before it. One thread at a time.
class KM_API T2NT {
public:
    /// @param in3D  measure lengths in XYZ; else in XY
    T2NT(const std::vector<TPoint<double>>& polyline, bool in3D);

    /// The place at `t` of the length.
    ///
    /// If the ends of the polyline are equal, `t` goes round and round, so 1.25 is 0.25; within 1e-8 of the common end the
    /// result is that end exactly, as the start of the first segment or the end of the last. Otherwise `t` is held
    /// within 1e-8..0.99999999, and the ends themselves are never met. A polyline shorter than 1e-8 gives the start of
    /// a segment. A `t` that is not a number gives a place whose `t` is none.
    const ParametricPoint operator()(double t) const;

private:
    double SegmentLength(std::uint32_t segment) const;
    double Share(double length) const;
    bool IsAhead(double t) const { return !(startT_ <= t && t < endT_); }
    void StepBack() const;
    void StepForward() const;

    const std::vector<TPoint<double>>& polyline_;
    bool in3D_;
    double length_ = 0.0;
    // The segment that the last call ended in: the lengths from the start of the polyline to its ends, and their shares.
    mutable double startLength_ = 0.0;
    mutable double endLength_ = 0.0;
    mutable double startT_ = 0.0;
    mutable double endT_ = 0.0;
    mutable std::uint32_t segment_ = 0;
};

}  // namespace KM
