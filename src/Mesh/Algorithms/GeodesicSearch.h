#pragma once

#include "WindowLists.h"

namespace KM {

/// The spread of light from some nodes over a surface, window by window, the nearest first.
class GeodesicSearch {
public:
    /// The mesh must live, and stay as it is, for as long as this object.
    explicit GeodesicSearch(const PIN& mesh) : mesh_(mesh), surface_(mesh), lists_(surface_) {}

    /// Lights the triangles of the fan of a node; nothing happens for one that does not exist. All sources come before the
    /// first step.
    void Seed(int source);

    /// Propagates one window.
    /// @return  false once there is none
    bool Step();

    /// How far from the sources the last step was.
    double Reached() const { return reached_; }

    /// From the nearest source to a node, as the edge knows it that `p2e` names; 0 if nothing has reached that edge.
    double DistanceOf(int node) const;

    const WindowLists& Lists() const { return lists_; }

private:
    void SeedWindows(int source, std::int32_t e);
    void SeedSpoke(int source, std::int32_t c);

    const PIN& mesh_;
    SurfaceEdges surface_;
    WindowLists lists_;
    double reached_ = 0.0;
};

}  // namespace KM
