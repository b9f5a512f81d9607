#pragma once

#include <string>
#include <vector>

#include "Mesh/Core/PinActions.h"
#include "Support/CallLine.h"

namespace KM::Test {

/// Keeps each announcement of a replay as a line of text, in the order of the calls.
class ReplayLog : public KsPinActionVisitor {
public:
    std::vector<std::string> lines;

    void MoveNodeUndo(int from, int to) override { Add("MoveNodeUndo", from, to); }
    void MoveNodeRedo(int from, int to) override { Add("MoveNodeRedo", from, to); }
    void MoveEdgeUndo(int from, int to) override { Add("MoveEdgeUndo", from, to); }
    void MoveEdgeRedo(int from, int to) override { Add("MoveEdgeRedo", from, to); }
    void SetTEUndo(int edge, int oldValue, int newValue) override { Add("SetTEUndo", edge, oldValue, newValue); }
    void SetTERedo(int edge, int oldValue, int newValue) override { Add("SetTERedo", edge, oldValue, newValue); }
    void SetNEUndo(int edge, int oldValue, int newValue) override { Add("SetNEUndo", edge, oldValue, newValue); }
    void SetNERedo(int edge, int oldValue, int newValue) override { Add("SetNERedo", edge, oldValue, newValue); }
    void SetP0Undo(int edge, int oldValue, int newValue) override { Add("SetP0Undo", edge, oldValue, newValue); }
    void SetP0Redo(int edge, int oldValue, int newValue) override { Add("SetP0Redo", edge, oldValue, newValue); }
    void EdgeInvalidateUndo(int index) override { Add("EdgeInvalidateUndo", index); }
    void EdgeInvalidateRedo(int index) override { Add("EdgeInvalidateRedo", index); }
    void MergeNodeUndo(int a, int b) override { Add("MergeNodeUndo", a, b); }
    void MergeNodeRedo(int a, int b) override { Add("MergeNodeRedo", a, b); }
    void PopEdgeUndo() override { Add("PopEdgeUndo"); }
    void PopEdgeRedo() override { Add("PopEdgeRedo"); }

private:
    template <class... Values>
    void Add(const char* what, Values... values) {
        lines.push_back(CallLine(what, values...));
    }
};

}  // namespace KM::Test
