#include "Mesh/Editing/RectangleFilling.h"

#include <cmath>
#include <utility>
#include <vector>

#include "Geometry/Planar.h"
#include "Mesh/Core/Loops.h"
#include "Mesh/Editing/EdgeSplits.h"
#include "Mesh/Editing/PolygonFilling.h"
#include "Mesh/Editing/StartPoints.h"

namespace KM {
namespace {

/// One loop, and the patterns for those of four to eight edges. Positions count from its first edge, and wrap round.
class RectangleFilling {
public:
    RectangleFilling(PIN& mesh, const std::vector<int>& loop, const std::vector<TPoint<double>>& outline)
        : mesh_(mesh), loop_(loop), outline_(outline) {}

    /// False if no pattern fits; nothing has changed then.
    bool Run() {
        switch (loop_.size()) {
            case 4:
                FillFour();
                return true;
            case 5:
                FillFive(NextSideNode(0));
                return true;
            case 6:
                return FillSix();
            case 7:
                FillSeven(NextAfterBareSide());
                return true;
            case 8:
                FillEight();
                return true;
            default:
                return false;
        }
    }

private:
    int At(int position) const { return loop_[position % Count()]; }
    int Count() const { return static_cast<int>(loop_.size()); }
    int Split(int e1, int e2) { return SplitLoop(mesh_, e1, e2); }

    double Direction(int position) const {
        return DirectionInXY(outline_[position], outline_[(position + 1) % Count()]);
    }

    /// The next position up to the last one where the outline goes on rather than turns; `start` if there is none.
    int NextSideNode(int start) const {
        for (int i = start + 1; i < Count(); ++i)
            if (std::cos(Direction(i) - Direction(i - 1)) > 0.2) return i;
        return start;
    }

    void FillFour() { Split(At(0), At(2)); }

    //  +-----+      k is the side node
    //  |\   /|
    //  | \ / |
    //  +--k--+
    void FillFive(int k) {
        Split(At(k), At(k + 3));
        Split(At(k), At(k + 2));
    }

    bool FillSix() {
        const int a = NextSideNode(0);
        const int b = NextSideNode(a);
        // The chord between the two would lead from an edge to itself.
        if (a == b) return false;
        if (b == a + 3) FillSixAcross(a, b);
        else if (b == a + 4) FillSixRoundCorner(b, a);
        else FillSixRoundCorner(a, b);
        return true;
    }

    //  +--b--+
    //  |\ |\ |      a and b are on opposite sides
    //  | \| \|      .
    //  +--a--+
    void FillSixAcross(int a, int b) {
        Split(At(a), At(a + 4));
        Split(At(b), At(b + 4));
        Split(At(a), At(b));
    }

    //  +-----+
    //  |\ `. |      b comes next after a, round one corner
    //  | \  `b
    //  |  \ /|      .
    //  +---a-+
    void FillSixRoundCorner(int a, int b) {
        const int c = Split(At(a), At(b));
        Split(At(b), At(b + 2));
        Split(c, At(b + 2));
    }

    /// Of three side nodes the one that comes next after the side without.
    int NextAfterBareSide() const {
        const int a = NextSideNode(0);
        const int b = NextSideNode(a);
        const int c = NextSideNode(b);
        if (b != a + 2) return b;
        return c == b + 2 ? a : c;
    }

    //  +---+---+
    //  |\  |`. |
    //  | \ |  `+      p comes next after the side without a node
    //  |  \| ,'|
    //  +---p---+
    void FillSeven(int p) {
        Split(At(p + 5), At(p));
        const int x = Split(At(p + 4), At(p));
        const int y = Split(At(p + 2), x);
        Split(At(p), y);
    }

    //  +--5--+
    //  | /|\ |      the corners are cut off first
    //  7  |  3
    //  | \|/ |      .
    //  +--1--+
    void FillEight() {
        const int f = Split(At(1), At(3));
        Split(At(3), At(5));
        const int g = Split(At(5), At(7));
        Split(At(7), f);
        Split(f, g);
    }

    PIN& mesh_;
    const std::vector<int>& loop_;
    const std::vector<TPoint<double>>& outline_;
};

}  // namespace

void TriangulateRectangle(PIN& mesh, int clockwise, int e) {
    const std::vector<int> loop = Loop(mesh, e);
    if (loop.size() <= 3) return;
    const std::vector<TPoint<double>> outline = StartPoints(mesh, loop);
    if (outline.empty()) return;
    if (!RectangleFilling(mesh, loop, outline).Run()) TriangulatePolygon(mesh, clockwise, e);
}

}  // namespace KM
