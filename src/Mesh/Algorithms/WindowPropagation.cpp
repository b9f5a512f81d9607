#include "WindowPropagation.h"

#include "Geometry/Lines.h"

namespace KM {
namespace {

constexpr double Tiny = 1e-12;

bool IsInRange(double parameter) { return parameter >= -1e-12 && parameter <= 1.000000000001; }

/// One of the two edges by which light leaves the face. Parameters run from the start of the canonical edge, 0, to its
/// end, 1.
struct Exit {
    std::int32_t edge = -1;  ///< canonical
    int sign = 1;            ///< +1 if the canonical edge belongs to the face, -1 if its twin does
    double length = 0.0;     ///< in space
    bool hangsAtB0 = true;   ///< the end of the window's edge at which it hangs: that of B0, or that of B1
    double apexAt = 0.0;     ///< the parameter of the apex, 0 or 1
    FlatPoint start, end;    ///< in the plane of the window's edge
    double u[2] = {0, 0};    ///< where the two rays hit its line
    bool found[2] = {0, 0};  ///< a ray that is parallel to it hits nothing
    bool isUnseen = false;   ///< the pseudo-source lies on its line
    bool isReached = false;  ///< one of the rays hits the edge itself
    int side = -1;           ///< the side of the edge on which the pseudo-source lies: +1 left

    bool IsFound() const { return found[0] && found[1]; }
    double Least() const { return std::min(u[0], u[1]); }
    double Greatest() const { return std::max(u[0], u[1]); }
};

//                 PS
//                /  \           tau = +1: the face lies below. E1 hangs at the start of the edge, E2 at its end. With
//    O --------B0----B1---- E   tau = -1 the figure is turned upside down, and the two change places.
//      \ E1   /        \ / E2
//        \  /         / \       n = NE(h) becomes E1, the edge before h becomes E2; h is the half-edge of this face.
//          \       /
//            apex
class Propagation {
public:
    Propagation(const SurfaceEdges& surface, const GeodesicWindow& window, WindowLists& lists)
        : surface_(surface), lists_(lists), W_(window), length_(surface.Length(window.edge)) {}

    void Run() {
        const std::int32_t h = W_.tau == 1 ? surface_.Twin(W_.edge) : W_.edge;
        if (h == -1) return;
        source_ = PseudoSource(W_);
        begin_ = {W_.b0, 0.0};
        end_ = {W_.b1, 0.0};
        const FlatPoint apex = Apex(surface_.Start(surface_.Previous(h)));
        E1_ = ExitAt(surface_.Next(h), apex, W_.tau == 1, 1.0);
        E2_ = ExitAt(surface_.Previous(h), apex, W_.tau != 1, 0.0);
        CastRays();
        Clamp(E1_);
        Clamp(E2_);
        InsertChild(E1_);
        InsertChild(E2_);
        LightFromCorner(E2_, E1_);
        LightFromCorner(E1_, E2_);
    }

private:
    /// The third corner of the face, turned into the plane of the edge, away from the pseudo-source.
    FlatPoint Apex(const TPoint<double>& apex) const {
        const TPoint<double>& start = surface_.Start(W_.edge);
        const TPoint<double> u = (surface_.End(W_.edge) - start) / length_;
        const TPoint<double> v = apex - start;
        const double along = Dot(u, v);
        return {along, -W_.tau * Length(v - u * along)};
    }

    Exit ExitAt(std::int32_t e, const FlatPoint& apex, bool hangsAtB0, double apexAlongFace) const {
        Exit exit;
        exit.edge = surface_.Canonical(e);
        exit.sign = exit.edge == e ? 1 : -1;
        exit.length = surface_.Length(exit.edge);
        exit.hangsAtB0 = hangsAtB0;
        exit.apexAt = exit.sign == 1 ? apexAlongFace : 1.0 - apexAlongFace;
        const FlatPoint foot{hangsAtB0 ? 0.0 : length_, 0.0};
        exit.start = exit.apexAt == 0.0 ? apex : foot;
        exit.end = exit.apexAt == 0.0 ? foot : apex;
        exit.side = Cross(exit.end - exit.start, source_ - exit.start) > 0.0 ? 1 : -1;
        return exit;
    }

    void CastRays() {
        const double r0 = Length(source_ - begin_);
        const double r1 = Length(source_ - end_);
        // A pseudo-source on an end of its window lights the whole face.
        isSourceOnEnd_ = r0 < 1e-10 || r1 < 1e-10;
        for (Exit* exit : {&E1_, &E2_}) {
            if (isSourceOnEnd_) {
                exit->u[0] = exit->apexAt;
                exit->u[1] = 1.0 - exit->apexAt;
                exit->found[0] = exit->found[1] = true;
                continue;
            }
            CastRays(*exit);
            if (!exit->IsFound() && TouchesFootOf(*exit)) {
                // The rays run along the edge, and the window touches its corner.
                exit->u[0] = 0.0;
                exit->u[1] = 1.0;
                exit->found[0] = exit->found[1] = true;
            }
        }
    }

    void CastRays(Exit& exit) const {
        const auto cast = [&](const FlatPoint& through, int which) {
            double alongRay = 0.0;
            exit.found[which] = IntLineLine2(alongRay, exit.u[which], InSpace(source_), InSpace(through),
                                             InSpace(exit.start), InSpace(exit.end));
        };
        cast(begin_, 0);
        cast(end_, 1);
        if (exit.IsFound()) return;
        // The ray through the end of the window at which the edge hangs tells whether the pseudo-source is on its line; a
        // ray that is parallel to it anywhere else hits it at infinity.
        const FlatPoint ray = Unit((exit.hangsAtB0 ? begin_ : end_) - source_);
        exit.isUnseen = std::fabs(Cross(ray, Unit(exit.end - exit.start))) < 1e-10;
        if (exit.isUnseen) return;
        for (int i = 0; i < 2; ++i)
            if (!exit.found[i]) exit.u[i] = 1e20;
        exit.found[0] = exit.found[1] = true;
    }

    static TPoint<double> InSpace(const FlatPoint& p) { return {p.x, p.y, 0.0}; }

    /// Whether the window reaches to the corner at which the edge hangs.
    bool TouchesFootOf(const Exit& exit) const { return exit.hangsAtB0 ? W_.b0 == 0.0 : W_.b1 > length_ - Tiny; }

    /// Where only one ray hits the edge, the light ends at a corner: at the apex if the edge is seen from within the face,
    /// else the edge lies in the shadow of the corner at which it hangs.
    static void Clamp(Exit& exit) {
        const bool isIn[2] = {IsInRange(exit.u[0]), IsInRange(exit.u[1])};
        exit.isReached = isIn[0] || isIn[1];
        if (isIn[0] == isIn[1]) return;
        const bool isFromWithin = exit.side * exit.sign == 1;
        exit.u[isIn[0] ? 1 : 0] = isFromWithin ? exit.apexAt : 1.0 - exit.apexAt;
    }

    void InsertChild(const Exit& exit) {
        if (!exit.IsFound() || !exit.isReached || !(std::fabs(exit.u[0] - exit.u[1]) > Tiny)) return;
        const int tau = isSourceOnEnd_ || exit.isUnseen ? exit.sign : exit.side;
        Insert(exit, exit.Least() * exit.length, exit.Greatest() * exit.length, source_, W_.sigma, tau);
    }

    /// An edge in the shadow gets a pseudo-source at the corner at which it hangs. That may be more than is needed, but no
    /// way that it lights is shorter than the surface allows.
    void LightFromCorner(const Exit& shadowed, const Exit& other) {
        if (!(std::fabs(shadowed.u[0] - shadowed.u[1]) <= Tiny) || !TouchesFootOf(shadowed)) return;
        const FlatPoint corner = shadowed.hangsAtB0 ? begin_ : end_;
        const double sigma = W_.sigma + (shadowed.hangsAtB0 ? W_.d0 : W_.d1);
        Insert(shadowed, 0.0, shadowed.length, corner, sigma, shadowed.sign);
        // Of the other edge, what the window does not light itself: the part at the apex.
        if (other.apexAt == 1.0 && other.Greatest() < 1.0)
            Insert(other, other.Greatest() * other.length, other.length, corner, sigma, other.sign);
        if (other.apexAt == 0.0 && other.Least() > 0.0)
            Insert(other, 0.0, other.Least() * other.length, corner, sigma, other.sign);
    }

    void Insert(const Exit& exit, double b0, double b1, const FlatPoint& source, double sigma, int tau) {
        const FlatPoint direction = Unit(exit.end - exit.start);
        const double d0 = Length(source - (exit.start + direction * b0));
        const double d1 = Length(source - (exit.start + direction * b1));
        lists_.InsertWindow({b0, b1, d0, d1, sigma, static_cast<std::int8_t>(tau), exit.edge}, true);
    }

    const SurfaceEdges& surface_;
    WindowLists& lists_;
    const GeodesicWindow& W_;
    double length_;
    FlatPoint source_, begin_, end_;
    bool isSourceOnEnd_ = false;
    Exit E1_, E2_;
};

}  // namespace

void PropagateWindow(const SurfaceEdges& surface, const GeodesicWindow& window, WindowLists& lists) {
    Propagation(surface, window, lists).Run();
}

}  // namespace KM
