#include "Geometry/PolylineParameter.h"

#include <algorithm>
#include <cmath>

namespace KM {

namespace {

constexpr double NearStart = 1e-8;
constexpr double NearEnd = 0.99999999;

/// Brings `t` into 0..1 by whole turns. Ten turns are added first, so that the few negative values in use come out as
/// their positive fellows do, with the same rounding.
double Wrapped(double t) {
    const double turns = t + 10.0;
    const double rest = turns - std::trunc(turns);
    return rest < 0.0 ? rest + 1.0 : rest;
}

}  // namespace

T2NT::T2NT(const std::vector<TPoint<double>>& polyline, bool in3D) : polyline_(polyline), in3D_(in3D) {
    for (std::uint32_t i = 0; i + 1 < polyline.size(); ++i) length_ += SegmentLength(i);
    if (polyline.size() >= 2) endLength_ = SegmentLength(0);
    endT_ = Share(endLength_);
}

const ParametricPoint T2NT::operator()(double t) const {
    if (length_ < 1e-8 || polyline_.size() < 2) return {0, segment_, 0.0};
    const auto lastSegment = static_cast<std::uint32_t>(polyline_.size() - 2);
    if (polyline_.front() == polyline_.back()) {
        t = Wrapped(t);
        if (t < NearStart) return {0, 0, 0.0};
        if (t > NearEnd) return {0, lastSegment, 1.0};
    } else {
        t = std::clamp(t, NearStart, NearEnd);
    }
    // Both walks end at the ends of the polyline, where rounding, or a length that is not a number, would lead beyond.
    while (t < startT_ && segment_ > 0) StepBack();
    while (IsAhead(t) && segment_ < lastSegment) StepForward();
    return {0, segment_, (t - startT_) / (endT_ - startT_)};
}

double T2NT::SegmentLength(std::uint32_t segment) const {
    TPoint<double> along = polyline_[segment + 1] - polyline_[segment];
    if (!in3D_) along.Z = 0.0;
    return Length(along);
}

double T2NT::Share(double length) const { return length_ == 0.0 ? 0.0 : length / length_; }

void T2NT::StepBack() const {
    --segment_;
    endLength_ = startLength_;
    startLength_ -= SegmentLength(segment_);
    startT_ = Share(startLength_);
    endT_ = Share(endLength_);
}

void T2NT::StepForward() const {
    ++segment_;
    startLength_ = endLength_;
    endLength_ += SegmentLength(segment_);
    startT_ = Share(startLength_);
    endT_ = Share(endLength_);
}

}  // namespace KM
