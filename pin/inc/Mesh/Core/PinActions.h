#pragma once

#include "Mesh/Core/Pin.h"

namespace KM {

/// Listens to the replay of a recording, so that data keyed by node or edge index can follow. Nothing is to be done to
/// the mesh. Each recorded change has one operation for its undo and one for its redo; both name the indices as they
/// were when it was recorded, so an undo tells of `from` and `to` in this order as well.
///
/// Hosts bring the only implementations; the operations stand in the order that these rely on.
class KM_API KsPinActionVisitor {
public:
    KsPinActionVisitor() = default;
    KsPinActionVisitor(const KsPinActionVisitor&) = default;
    KsPinActionVisitor& operator=(const KsPinActionVisitor&) = default;

    /// The node `to` went back to index `from`; at `to` the node that had been overwritten stands again.
    virtual void MoveNodeUndo(int from, int to) = 0;
    /// The node `from` now has the index `to`.
    virtual void MoveNodeRedo(int from, int to) = 0;
    /// The edge `to` went back to index `from`; at `to` the record that had been overwritten stands again.
    virtual void MoveEdgeUndo(int from, int to) = 0;
    /// The edge `from` now has the index `to`.
    virtual void MoveEdgeRedo(int from, int to) = 0;
    virtual void SetTEUndo(int edge, int oldValue, int newValue) = 0;
    virtual void SetTERedo(int edge, int oldValue, int newValue) = 0;
    virtual void SetNEUndo(int edge, int oldValue, int newValue) = 0;
    virtual void SetNERedo(int edge, int oldValue, int newValue) = 0;
    virtual void SetP0Undo(int edge, int oldValue, int newValue) = 0;
    virtual void SetP0Redo(int edge, int oldValue, int newValue) = 0;
    /// The edge `index` is alive again.
    virtual void EdgeInvalidateUndo(int index) = 0;
    /// The edge `index` is dead.
    virtual void EdgeInvalidateRedo(int index) = 0;
    virtual void MergeNodeUndo(int a, int b) = 0;
    virtual void MergeNodeRedo(int a, int b) = 0;
    /// A dead record stands at the end of `edges` again.
    virtual void PopEdgeUndo() = 0;
    /// The last record of `edges` is gone.
    virtual void PopEdgeRedo() = 0;

    // Last, so that the slots above keep their order.
    virtual ~KsPinActionVisitor() = default;
};

/// One elementary change of a mesh, as plain values. `Undo` and `Redo` change the mesh; `VisitorUndo` and `VisitorRedo`
/// only tell a listener what such a call does.
///
/// An action fits the mesh in the state that recording, or the replay of its neighbours, left. On another mesh it does
/// what it can: a change of which an index is out of range is left out, and nothing else is written. The undo of a move
/// grows the vector instead, and throws what the growth of a vector throws. `p2e` is not touched by any of them.
class KM_API KsPinAction {
public:
    virtual void Undo(PIN& mesh) const = 0;
    virtual void Redo(PIN& mesh) const = 0;
    virtual void VisitorUndo(KsPinActionVisitor& listener) const = 0;
    virtual void VisitorRedo(KsPinActionVisitor& listener) const = 0;

protected:
    // Not virtual: subclasses hold plain values, and who owns one knows its class or holds a shared owner.
    ~KsPinAction() = default;
};

/// `points[to]`, which was `overwritten`, became `points[from]`. Undo grows `points` with (0, 0, 0) until both are there,
/// and leaves `points[from]` as it is if `to` was not. Redo removes the last point if it is `from`.
class KM_API KsPinMoveNode final : public KsPinAction {
public:
    KsPinMoveNode(const TPoint<double>& point, int fromNode, int toNode)
        : overwritten(point), from(fromNode), to(toNode) {}

    void Undo(PIN& mesh) const override;
    void Redo(PIN& mesh) const override;
    void VisitorUndo(KsPinActionVisitor& listener) const override { listener.MoveNodeUndo(from, to); }
    void VisitorRedo(KsPinActionVisitor& listener) const override { listener.MoveNodeRedo(from, to); }

    TPoint<double> overwritten;
    int from;
    int to;
};

/// `edges[to]`, which was `overwritten`, became `edges[from]`. Undo grows `edges` with dead records until both are there,
/// and leaves `edges[from]` as it is if `to` was not. Redo removes the last record if it is `from`.
class KM_API KsPinMoveEdge final : public KsPinAction {
public:
    KsPinMoveEdge(const Edge& record, int fromEdge, int toEdge) : overwritten(record), from(fromEdge), to(toEdge) {}

    void Undo(PIN& mesh) const override;
    void Redo(PIN& mesh) const override;
    void VisitorUndo(KsPinActionVisitor& listener) const override { listener.MoveEdgeUndo(from, to); }
    void VisitorRedo(KsPinActionVisitor& listener) const override { listener.MoveEdgeRedo(from, to); }

    Edge overwritten;
    int from;
    int to;
};

/// The last record, which was `edge`, was removed.
class KM_API KsPinPopEdge final : public KsPinAction {
public:
    explicit KsPinPopEdge(const Edge& record) : edge(record) {}

    void Undo(PIN& mesh) const override;
    void Redo(PIN& mesh) const override;
    void VisitorUndo(KsPinActionVisitor& listener) const override { listener.PopEdgeUndo(); }
    void VisitorRedo(KsPinActionVisitor& listener) const override { listener.PopEdgeRedo(); }

    Edge edge;
};

class KM_API KsPinSetTE final : public KsPinAction {
public:
    KsPinSetTE(int ofEdge, int before, int after) : edge(ofEdge), oldValue(before), newValue(after) {}

    void Undo(PIN& mesh) const override;
    void Redo(PIN& mesh) const override;
    void VisitorUndo(KsPinActionVisitor& listener) const override { listener.SetTEUndo(edge, oldValue, newValue); }
    void VisitorRedo(KsPinActionVisitor& listener) const override { listener.SetTERedo(edge, oldValue, newValue); }

    int edge;
    int oldValue;
    int newValue;
};

class KM_API KsPinSetNE final : public KsPinAction {
public:
    KsPinSetNE(int ofEdge, int before, int after) : edge(ofEdge), oldValue(before), newValue(after) {}

    void Undo(PIN& mesh) const override;
    void Redo(PIN& mesh) const override;
    void VisitorUndo(KsPinActionVisitor& listener) const override { listener.SetNEUndo(edge, oldValue, newValue); }
    void VisitorRedo(KsPinActionVisitor& listener) const override { listener.SetNERedo(edge, oldValue, newValue); }

    int edge;
    int oldValue;
    int newValue;
};

class KM_API KsPinSetP0 final : public KsPinAction {
public:
    KsPinSetP0(int ofEdge, int before, int after) : edge(ofEdge), oldValue(before), newValue(after) {}

    void Undo(PIN& mesh) const override;
    void Redo(PIN& mesh) const override;
    void VisitorUndo(KsPinActionVisitor& listener) const override { listener.SetP0Undo(edge, oldValue, newValue); }
    void VisitorRedo(KsPinActionVisitor& listener) const override { listener.SetP0Redo(edge, oldValue, newValue); }

    int edge;
    int oldValue;
    int newValue;
};

/// The record `index`, which was `edge`, was marked dead. Redo writes `NE` and `P0`, as the original does; `TE` stays.
class KM_API KsPinEdgeInvalidate final : public KsPinAction {
public:
    KsPinEdgeInvalidate(const Edge& record, int ofRecord) : edge(record), index(ofRecord) {}

    void Undo(PIN& mesh) const override;
    void Redo(PIN& mesh) const override;
    void VisitorUndo(KsPinActionVisitor& listener) const override { listener.EdgeInvalidateUndo(index); }
    void VisitorRedo(KsPinActionVisitor& listener) const override { listener.EdgeInvalidateRedo(index); }

    Edge edge;
    int index;
};

/// Node `a` was merged into `b`. Undo puts `a` where `b` is, growing `points` with (0, 0, 0) until `a` is there; redo
/// has nothing to do, since the links of the edges are actions of their own.
class KM_API KsPinMergeNode final : public KsPinAction {
public:
    KsPinMergeNode(int merged, int kept) : a(merged), b(kept) {}

    void Undo(PIN& mesh) const override;
    void Redo(PIN&) const override {}
    void VisitorUndo(KsPinActionVisitor& listener) const override { listener.MergeNodeUndo(a, b); }
    void VisitorRedo(KsPinActionVisitor& listener) const override { listener.MergeNodeRedo(a, b); }

    int a;
    int b;
};

}  // namespace KM
