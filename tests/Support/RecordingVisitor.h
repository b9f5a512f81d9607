#pragma once

#include <string>
#include <vector>

#include "Mesh/Core/PinVisitor.h"
#include "Support/CallLine.h"

namespace KM::Test {

/// Keeps each report as a line of text, in the order of the calls.
template <class Mesh>
class RecordingVisitor : public VisitorOf<Mesh> {
public:
    using Point = typename Mesh::PointType;

    std::vector<std::string> reports;

    void CreateNode(int node) override { Add("CreateNode", node); }
    void CreateEdge(int edge) override { Add("CreateEdge", edge); }
    void PopEdge(const Edge& e) override { Add("PopEdge", e.NE, e.TE, e.P0); }
    void MoveEdge(const Edge& e, int from, int to) override { Add("MoveEdge", e.NE, e.TE, e.P0, from, to); }
    void MoveNode(const Point& p, int from, int to) override { Add("MoveNode", p.X, p.Y, p.Z, from, to); }
    void MergeNodes(int a, int b) override { Add("MergeNodes", a, b); }
    void SetTE(int edge, int oldValue, int newValue) override { Add("SetTE", edge, oldValue, newValue); }
    void SetNE(int edge, int oldValue, int newValue) override { Add("SetNE", edge, oldValue, newValue); }
    void SetP0(int edge, int oldValue, int newValue) override { Add("SetP0", edge, oldValue, newValue); }
    void Invalidate(const Edge& e, int index) override { Add("Invalidate", e.NE, e.TE, e.P0, index); }

private:
    template <class... Values>
    void Add(const char* what, Values... values) {
        reports.push_back(CallLine(what, values...));
    }
};

}  // namespace KM::Test
