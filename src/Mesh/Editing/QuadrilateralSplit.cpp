#include "Mesh/Editing/QuadrilateralSplit.h"

#include <cmath>

#include "Geometry/Distances.h"
#include "Geometry/Lines.h"
#include "Geometry/Planar.h"
#include "Geometry/Points.h"
#include "Mesh/Editing/EdgeSplits.h"
#include "Mesh/Editing/StartPoints.h"
#include "Mesh/Editing/Surroundings.h"
#include "Utils/U_Debug/Verbose.h"

namespace KM {
namespace {

using P = TPoint<double>;

/// A corner of the quadrilateral, and a second point of its bisector.
struct Corner {
    Corner(const P& corner, const P& one, const P& other) : at(corner), inside(BisectorPoint(corner, one, other)) {}

    P at;
    P inside;
};

/// Where the bisector of `tip` first meets that of A or B; that of B if they meet it at the same distance.
P CentreAt(const Corner& tip, const Corner& A, const Corner& B) {
    const P withA = IntLineLine(tip.at, tip.inside, A.at, A.inside);
    const P withB = IntLineLine(tip.at, tip.inside, B.at, B.inside);
    return DistanceSquaredInXY(tip.at, withA) < DistanceSquaredInXY(tip.at, withB) ? withA : withB;
}

double Radius(const Corner& tip, const Corner& A, const P& centre) {
    return std::fabs(DistPtLn(tip.at, A.at, centre, false));
}

}  // namespace

void SplitQuadrilateral(PIN& mesh, std::vector<double>& values, int e) {
    if (IsAliveEdge(mesh, e) && IsOrphan(mesh, e)) {
        Verbose::WriteMessage_1(Verbose::EMessageType::Error, "Try to insert on an orphan edge!");
        return;
    }
    const auto at = TrianglesAt(mesh, e);
    if (!at) return;
    const int edges[] = {e, at->own.ne, at->own.pe, at->other.pe};
    const std::vector<P> corners = StartPoints(mesh, edges);
    if (corners.empty()) return;
    const Corner A(corners[0], corners[2], corners[3]);
    const Corner B(corners[1], corners[2], corners[3]);
    const Corner C(corners[2], corners[0], corners[1]);
    const Corner D(corners[3], corners[0], corners[1]);
    const P centre = CentreAt(C, A, B);
    const P centreOfTwin = CentreAt(D, A, B);

    SplitFace(mesh, e, centre);
    SplitFace(mesh, mesh.edges[e].TE, centreOfTwin);
    values.push_back(Radius(C, A, centre));
    values.push_back(Radius(D, A, centreOfTwin));
    // Edge 0 whichever edge `e` was: hosts compare what they stored with this very split.
    SplitEdge(mesh, values, 0);
}

}  // namespace KM
