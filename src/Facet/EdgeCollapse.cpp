#include "Facet/EdgeCollapse.h"

#include "Mesh/Core/Loops.h"

namespace KM {
namespace {

//          X                Collapsing e: S -> E kills the triangles (e, e1, e2) and (t, t1, t2).
//        /   \              Beyond them stand o1 (twin of e1), o2 (of e2), p1 (of t1) and p2 (of t2):
//    o2 /e2 e1\ o1          o1 and o2 become twins, and so do p1 and p2.
//      /   e   \            (TE of a boundary edge is -1, and then t, t1, t2, p1, p2 are -1 too.)
//     S ------- E
//      \   t   /            A surface that is folded onto itself can have t = e2 (the triangle is folded along its own
//    p1 \t1 t2/ p2          edges), t1 = o2 (nothing but the two triangles round S) or o1 = t2 (the same round E).
//        \   /
//          Y
class Surgery {
public:
    Surgery(PIN& mesh, int edge, bool keepsStart)
        : edges_(mesh.edges),
          keepsStart_(keepsStart),
          e(edge),
          e1(edges_[e].NE),
          e2(PrevEdge(mesh, e)),
          t(edges_[e].TE),
          t1(t == -1 ? -1 : edges_[t].NE),
          t2(t == -1 ? -1 : PrevEdge(mesh, t)),
          o1(Beyond(e1)),
          o2(Beyond(e2)),
          p1(Beyond(t1)),
          p2(Beyond(t2)),
          isFolded_(t == e2),
          isTwoRoundStart_(t1 != -1 && t1 == o2),
          isTwoRoundEnd_(t2 != -1 && t2 == o1) {}

    CollapsedEdge Perform(CollapseQueue& queue) {
        CollapsedEdge result{edges_[keepsStart_ ? e : e1].P0, -1, -1, -1};
        JoinTwins();
        FindSector(result);
        result.anchor = Anchor();
        for (const int x : {e2, e1, e, t2, t1, t}) Kill(x, queue);
        return result;
    }

private:
    /// The twin; -1 if that is the edge itself, as on a surface that has been folded along the edge.
    int Beyond(int x) const { return x == -1 || edges_[x].TE == x ? -1 : edges_[x].TE; }

    bool IsDying(int x) const { return x == e || x == e1 || x == e2 || (t != -1 && (x == t || x == t1 || x == t2)); }
    int Alive(int x) const { return IsDying(x) ? -1 : x; }

    void SetTwin(int x, int twin) {
        if (x != -1) edges_[x].TE = Alive(twin);
    }
    void Join(int x, int y) {
        SetTwin(x, y);
        SetTwin(y, x);
    }

    void JoinTwins() {
        if (isFolded_) return SetTwin(o1, -1);
        if (isTwoRoundStart_) return Join(o1, p2);
        if (isTwoRoundEnd_) return Join(o2, p1);
        Join(o1, o2);
        Join(p1, p2);
    }

    /// Only a boundary edge keeps its start, so whatever is folded can be met with the start going only.
    void FindSector(CollapsedEdge& result) const {
        if (isFolded_ || isTwoRoundStart_) return;
        if (isTwoRoundEnd_) {
            result.sectorFirst = p1 == -1 ? -1 : edges_[p1].NE;
            result.sectorLast = o2;
        } else if (keepsStart_) {
            result.sectorFirst = o2 == e1 ? -1 : o2;
        } else {
            result.sectorFirst = p2 == t1 ? -1 : p2;
            // Read behind the joined twins, where the walk will come by.
            if (o2 != -1 && o2 != e1) result.sectorLast = edges_[Previous(o2)].TE;
        }
    }

    int Anchor() const {
        if (Alive(p2) != -1) return p2;
        if (Alive(o2) != -1) return o2;
        if (Alive(o1) != -1) return edges_[o1].NE;
        if (Alive(p1) != -1) return edges_[p1].NE;
        return -1;
    }

    int Previous(int x) const { return edges_[edges_[x].NE].NE; }

    void Kill(int x, CollapseQueue& queue) {
        if (x == -1) return;
        queue.Remove(x);
        edges_[x].NE = -1;
        edges_[x].P0 = -1;
    }

    std::vector<Edge>& edges_;
    const bool keepsStart_;
    const int e, e1, e2, t, t1, t2, o1, o2, p1, p2;
    const bool isFolded_, isTwoRoundStart_, isTwoRoundEnd_;
};

}  // namespace

CollapsedEdge CollapseEdge(PIN& mesh, CollapseQueue& queue, int edge, bool keepsStart) {
    return Surgery(mesh, edge, keepsStart).Perform(queue);
}

}  // namespace KM
