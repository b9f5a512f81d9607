#pragma once

#include <cstdint>
#include <vector>

#include "KmTools.h"
#include "Mesh/Core/Pin.h"
#include "Utils/U_Debug/Exceptions.h"

namespace KM {

/// What of a mesh is drawn.
struct DrawSwitches {
    bool nodes = false;
    bool nodeLabels = false;  ///< only beside nodes that are drawn
    bool boundaryEdges = false;
    bool innerEdges = false;  ///< both edges of a twin pair, one on the other
    bool edgeLabels = false;  ///< only beside edges that are drawn
};

/// Draws a mesh through the host's drawing services.
class PinDrawing {
public:
    PinDrawing(const PIN& mesh, const std::vector<TPoint<double>>& points) : mesh_(mesh), points_(points) {}

    /// @throws KmException when the host cannot show the label of an edge
    void Draw(const DrawSwitches& show) const {
        if (show.nodes)
            for (int node = 0; node < static_cast<int>(points_.size()); ++node) DrawNode(node, show.nodeLabels);
        for (int edge = 0; edge < static_cast<int>(mesh_.edges.size()); ++edge) {
            const Edge& record = mesh_.edges[edge];
            const bool isShown = record.TE == -1 ? show.boundaryEdges : show.innerEdges;
            if (isShown && HasEnds(record)) DrawEdge(edge, show.edgeLabels);
        }
    }

private:
    static constexpr int NodeColour = 2;
    static constexpr int NodeMarker = 6;
    static constexpr int InnerColour = 6;
    static constexpr int BoundaryColour = 5;

    void DrawNode(int node, bool withLabel) const {
        const Place place(points_[node]);
        KmDbSetPntCol(NodeColour);
        KmDbSetPntType(NodeMarker);
        KmDbPntAdd(place.xyz);
        // Unlike an edge, a node without its label is still of use.
        if (withLabel) WriteLabel(place, "v%d", node);
    }

    void DrawEdge(int edge, bool withLabel) const {
        const TPoint<double>& start = points_[mesh_.edges[edge].P0];
        const TPoint<double>& end = points_[mesh_.edges[mesh_.edges[edge].NE].P0];
        KmDbSetLineCol(mesh_.edges[edge].TE == -1 ? BoundaryColour : InnerColour);
        KmDbLineDisp(Place(start).xyz, Place(end).xyz);
        if (!withLabel) return;
        // Nearer to the start than to the end, so that the labels of twins do not lie on each other.
        const Place place(start * 0.75 + end * 0.25);
        // Hosts match file and line of this failure, so they are fixed.
        if (WriteLabel(place, "e%d", edge) != 0) throw KmException("pin/inc/Tools/KmPinDraw", 127);
    }

    bool HasEnds(const Edge& edge) const {
        const auto hasPlace = [&](std::int32_t node) { return Has(points_, node); };
        return Has(mesh_.edges, edge.NE) && hasPlace(edge.P0) && hasPlace(mesh_.edges[edge.NE].P0);
    }

    template <class Vector>
    static bool Has(const Vector& items, std::int32_t index) {
        return index >= 0 && static_cast<std::size_t>(index) < items.size();
    }

    /// A point as the host's services take it.
    struct Place {
        explicit Place(const TPoint<double>& at) : xyz{at.X, at.Y, at.Z} {}
        double xyz[3];
    };

    static int WriteLabel(const Place& place, const char* format, int number) {
        constexpr double height = 0.014999999664723873;
        constexpr int colour = 2;
        char text[256];
        KmSprintf(text, static_cast<int>(sizeof text), format, number);
        return KmDbAnnoDisp(place.xyz, text, height, colour);
    }

    const PIN& mesh_;
    const std::vector<TPoint<double>>& points_;
};

}  // namespace KM
