#pragma once

#include "Mesh/Core/Pin.h"

namespace KM {

/// Is told of each elementary change of a mesh just before it is made, so that data keyed by index can follow a
/// renumbering, and a recorder can take the change back. The plain class does nothing.
///
/// The slots stand in the order that recorders of the family rely on.
template <class Point>
class TPinManipulationVisitor {
public:
    TPinManipulationVisitor() = default;
    TPinManipulationVisitor(const TPinManipulationVisitor&) = default;
    TPinManipulationVisitor& operator=(const TPinManipulationVisitor&) = default;

    /// A hook for extensions; the library never calls it.
    virtual void CreateNode(int /*node*/) {}
    /// A hook for extensions; the library never calls it.
    virtual void CreateEdge(int /*edge*/) {}
    /// The last record of `edges`, which is `edge`, is about to be removed.
    virtual void PopEdge(const Edge& /*edge*/) {}
    /// `edges[to]`, which is `overwritten`, is about to become `edges[from]`.
    virtual void MoveEdge(const Edge& /*overwritten*/, int /*from*/, int /*to*/) {}
    /// `points[to]`, which is `overwritten`, is about to become `points[from]`.
    virtual void MoveNode(const Point& /*overwritten*/, int /*from*/, int /*to*/) {}
    /// A hook for extensions; the library never calls it.
    virtual void MergeNodes(int /*a*/, int /*b*/) {}
    virtual void SetTE(int /*edge*/, int /*oldValue*/, int /*newValue*/) {}
    virtual void SetNE(int /*edge*/, int /*oldValue*/, int /*newValue*/) {}
    virtual void SetP0(int /*edge*/, int /*oldValue*/, int /*newValue*/) {}
    /// The record `index`, which is `edge`, is about to be marked dead.
    virtual void Invalidate(const Edge& /*edge*/, int /*index*/) {}

    // Last, so that the slots above keep their order.
    virtual ~TPinManipulationVisitor() = default;
};

/// The visitor that fits a mesh type.
template <class Mesh>
using VisitorOf = TPinManipulationVisitor<typename Mesh::PointType>;

}  // namespace KM
