#include "Geometry/EarClipper.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "Geometry/IndexSet.h"
#include "Geometry/Planar.h"
#include "Geometry/VertexTree.h"

namespace KM {

namespace {

using P = TPoint<double>;
using Triangles = std::vector<std::vector<int>>;

/// Who waits for which point: an ear that a point blocks need not be looked at again before that point is cut off.
class Waiters {
public:
    explicit Waiters(std::size_t count) : links_(count) {}

    /// The point that blocked the ear last; -1 before any has.
    int Blocker(int ear) const { return links_[ear].blocker; }

    void Wait(int ear, int blocker) {
        Link& link = links_[ear];
        link = {blocker, links_[blocker].first, -1, link.first, true};
        if (link.next != -1) links_[link.next].previous = ear;
        links_[blocker].first = ear;
    }

    void Leave(int ear) {
        Link& link = links_[ear];
        if (!link.isWaiting) return;
        link.isWaiting = false;
        (link.previous != -1 ? links_[link.previous].next : links_[link.blocker].first) = link.next;
        if (link.next != -1) links_[link.next].previous = link.previous;
    }

    int FirstFor(int blocker) const { return links_[blocker].first; }

private:
    struct Link {
        int blocker = -1;
        int next = -1;
        int previous = -1;
        int first = -1;  // of those that wait for this one
        bool isWaiting = false;
    };

    std::vector<Link> links_;
};

/// The outline: a ring of those of its points that have not been cut off yet.
class Outline {
public:
    struct Vertex {
        double X, Y;
        int next;  ///< -1 for one that has been cut off
        int previous;
    };

    Outline(const std::vector<P>& polygon, bool isReversed)
        : isReversed_(isReversed), count_(static_cast<int>(polygon.size())) {
        vertices_.reserve(polygon.size());
        for (int i = 0; i < count_; ++i) {
            const P& p = polygon[isReversed ? count_ - 1 - i : i];
            vertices_.push_back({p.X, p.Y, i + 1, i - 1});
        }
        vertices_.front().previous = count_ - 1;
        vertices_.back().next = 0;
    }

    int Bound() const { return static_cast<int>(vertices_.size()); }
    int Count() const { return count_; }
    int Next(int i) const { return vertices_[i].next; }
    int Previous(int i) const { return vertices_[i].previous; }
    bool IsAlive(int i) const { return vertices_[i].next != -1; }
    const Vertex& At(int i) const { return vertices_[i]; }
    const std::vector<Vertex>& Vertices() const { return vertices_; }
    /// The place of a vertex in the polygon.
    int Place(int i) const { return isReversed_ ? Bound() - 1 - i : i; }

    void Remove(int i) {
        Vertex& vertex = vertices_[i];
        vertices_[vertex.previous].next = vertex.next;
        vertices_[vertex.next].previous = vertex.previous;
        vertex.next = -1;
        --count_;
    }

private:
    bool isReversed_;
    int count_;
    std::vector<Vertex> vertices_;
};

/// True where no product of differences can overflow, so that no test gives a NaN.
bool IsTame(const Outline::Vertex& p) { return IsWithin(p, 1e150); }

/// True if all coordinates, where they are tame, are multiples of one step, and so few of it that differences, products
/// and areas are exact: outlines on a grid of pixels, or of quarters of a millimetre.
bool LiesOnGrid(const Outline& outline) {
    double most = 0.0;
    for (const Outline::Vertex& p : outline.Vertices())
        if (IsTame(p)) most = std::max({most, std::fabs(p.X), std::fabs(p.Y)});
    if (most < 1e-100 || most > 1e100) return most == 0.0;
    const double perStep = std::ldexp(1.0, 24 - std::ilogb(most));  // 25 bits: a product of two differences has 52
    const auto isOnGrid = [&](double v) { return v * perStep == static_cast<double>(static_cast<int>(v * perStep)); };
    return std::all_of(outline.Vertices().begin(), outline.Vertices().end(),
                       [&](const Outline::Vertex& p) { return !IsTame(p) || (isOnGrid(p.X) && isOnGrid(p.Y)); });
}

/// Walks round the outline, again and again, and cuts off what it meets that can be cut. Corners are named by the point A
/// before them. A walk that went to each would take many rounds, and a round for nothing at the end; so corners that are
/// known not to be free are left out of a set, until something changes for them, and the walk goes from member to
/// member. It meets the same corners in the same order.
class Walk {
public:
    Walk(Outline& outline, Triangles& triangles) : outline_(outline), triangles_(triangles), open_(outline.Bound()) {}

    /// @param isFree  tells whether the corner behind A can be cut
    /// @param onCut   is told of A and B after B has been cut off
    /// @return        the next A
    template <class IsFree, class OnCut>
    void Run(IsFree isFree, OnCut onCut, bool staysOnCut) {
        for (int a = open_.FindRound(0); a != -1 && outline_.Count() >= 3;) {
            const int b = outline_.Next(a);
            int cursor = b;
            if (isFree(a)) {
                cursor = staysOnCut ? a : outline_.Next(b);
                Cut(a, b);
                onCut(b);
            } else {
                open_.Erase(a);
            }
            a = open_.FindRound(cursor);
        }
    }

    void Open(int a) { open_.Insert(a); }

private:
    void Cut(int a, int b) {
        const int c = outline_.Next(b);
        triangles_.push_back({outline_.Place(a), outline_.Place(b), outline_.Place(c)});
        outline_.Remove(b);
        open_.Erase(b);
        // Only these two corners have another shape now.
        open_.Insert(a);
        open_.Insert(outline_.Previous(a));
    }

    Outline& outline_;
    Triangles& triangles_;
    IndexSet open_;
};

/// Cuts off the middle points of straight corners, each with a triangle of no area: so every point is used by some triangle.
void CutStraightCorners(Outline& outline, Triangles& triangles) {
    const auto isStraight = [&](int a) {
        const int b = outline.Next(a);
        return std::fabs(TurnAt(outline.At(a), outline.At(b), outline.At(outline.Next(b)))) < 1e-7;
    };
    Walk walk(outline, triangles);
    for (int a = 0; a < outline.Bound(); ++a)
        if (isStraight(a)) walk.Open(a);
    walk.Run(
        isStraight, [](int) {}, false);
}

/// Cuts off ears: corners that turn left and that no point of the outline blocks.
class EarFinder {
public:
    explicit EarFinder(const Outline& outline)
        : outline_(outline),
          isOnGrid_(LiesOnGrid(outline)),
          waiters_(outline.Vertices().size()),
          tree_(Tame(), outline.Bound()) {}

    bool IsEar(int a) {
        waiters_.Leave(a);
        const int b = outline_.Next(a);
        const int c = outline_.Next(b);
        const double turn = TurnAt(outline_.At(a), outline_.At(b), outline_.At(c));
        if (turn > 0.0) return false;
        const int blocker = FindBlocker(a, b, c, turn);
        if (blocker != -1) waiters_.Wait(a, blocker);
        return blocker == -1;
    }

    /// Takes a point that was cut off out of all books, and opens the corners that waited for that.
    void Forget(int b, Walk& walk) {
        waiters_.Leave(b);
        tree_.Remove(b);
        for (int ear = waiters_.FirstFor(b); ear != -1; ear = waiters_.FirstFor(b)) {
            waiters_.Leave(ear);
            walk.Open(ear);
        }
    }

private:
    /// The points for the tree; what remains goes to `wild_`.
    std::vector<VertexTree::Vertex> Tame() {
        std::vector<VertexTree::Vertex> tame;
        tame.reserve(static_cast<std::size_t>(outline_.Count()));
        for (int i = 0; i < outline_.Bound(); ++i) {
            if (!outline_.IsAlive(i)) continue;
            const Outline::Vertex& p = outline_.At(i);
            if (IsTame(p)) {
                tame.push_back({p.X, p.Y, i});
            } else {
                wild_.push_back(i);
            }
        }
        return tame;
    }

    int FindBlocker(int a, int b, int c, double turn) const {
        const Outline::Vertex& A = outline_.At(a);
        const Outline::Vertex& B = outline_.At(b);
        const Outline::Vertex& C = outline_.At(c);
        const EarRegion region(A, B, C);
        const auto blocks = [&](int v) {
            return v != a && v != b && v != c && outline_.IsAlive(v) &&
                   region.Contains(outline_.At(v).X, outline_.At(v).Y);
        };
        // What was in the way of the ear before often is in the way of the one that took its place.
        const int last = waiters_.Blocker(a);
        if (last != -1 && blocks(last)) return last;
        if (!wild_.empty()) {
            if (!IsTame(A) || !IsTame(B) || !IsTame(C)) {
                int v = outline_.Next(c);
                while (v != a && !blocks(v)) v = outline_.Next(v);
                return v == a ? -1 : v;
            }
            const auto wild = std::find_if(wild_.begin(), wild_.end(), blocks);
            if (wild != wild_.end()) return *wild;
        }
        // Without rounding the three tests cannot all hold in a triangle of no area.
        if (isOnGrid_ && turn == 0.0) return -1;
        return tree_.FindBlocker({region, BoxOf(A, B, C, -turn), b});
    }

    /// Beyond this box no point passes for one inside the triangle.
    ///
    /// Rounding can let one pass that lies far out on the line of a needle. The offset of a point from some side is at least
    /// area * e / size, for a point that is e outside the box of a triangle of that size, and is computed with an error
    /// below 20 u * size * (size + e), u being 2^-53. So with a thousandth of the size for e, triangles thicker than
    /// 1e-11 are safe by a good margin; for needles no box is drawn.
    PlaneBox BoxOf(const Outline::Vertex& A, const Outline::Vertex& B, const Outline::Vertex& C, double area) const {
        constexpr double all = std::numeric_limits<double>::max();
        const PlaneBox box = Union(At(A), Union(At(B), At(C)));
        if (isOnGrid_) return box;
        const double size = std::max(box.maxX - box.minX, box.maxY - box.minY);
        if (!(area > 1e-11 * size * size && area > 1e-250)) return {-all, -all, all, all};
        const double margin = size / 1024.0;
        return {box.minX - margin, box.minY - margin, box.maxX + margin, box.maxY + margin};
    }

    const Outline& outline_;
    bool isOnGrid_;
    Waiters waiters_;
    std::vector<int> wild_;
    VertexTree tree_;
};

void CutEars(Outline& outline, Triangles& triangles) {
    Walk walk(outline, triangles);
    for (int a = 0; a < outline.Bound(); ++a)
        if (outline.IsAlive(a)) walk.Open(a);
    EarFinder ears(outline);
    walk.Run([&](int a) { return ears.IsEar(a); }, [&](int b) { ears.Forget(b, walk); }, true);
}

}  // namespace

void ClipEars(const std::vector<P>& polygon, bool isReversed, Triangles& triangles) {
    // Twice what is there already, so that callers may add polygon after polygon.
    triangles.reserve(std::max(triangles.size() + polygon.size() - 2, 2 * triangles.size()));
    Outline outline(polygon, isReversed);
    CutStraightCorners(outline, triangles);
    if (outline.Count() >= 3) CutEars(outline, triangles);
}

}  // namespace KM
