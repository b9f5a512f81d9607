// What a recording costs: thinning and compaction of a bumpy sphere that nobody watches, that a recorder watches, and that
// a list of heap objects watches; then replay. Times and bytes are per reported change.
// Usage: RecorderBench [segments along an edge of the octahedron; 354 gives a million triangles]

#include <cstdio>
#include <cstdlib>
#include <memory>
#include <random>
#include <string>
#include <vector>

#include "Km.h"
#include "Support/Meshes.h"
#include "Support/Report.h"

namespace KM::Bench {
namespace {

/// Counts the reports.
struct Counter : VisitorOf<PIN> {
    long long count = 0;
    void PopEdge(const Edge&) override { ++count; }
    void MoveEdge(const Edge&, int, int) override { ++count; }
    void MoveNode(const TPoint<double>&, int, int) override { ++count; }
    void SetTE(int, int, int) override { ++count; }
    void SetNE(int, int, int) override { ++count; }
    void SetP0(int, int, int) override { ++count; }
    void Invalidate(const Edge&, int) override { ++count; }
};

/// The obvious recorder: each change is an object with an owner of its own.
class HeapObjects : public VisitorOf<PIN> {
public:
    void PopEdge(const Edge& e) override { Add<KsPinPopEdge>(e); }
    void MoveEdge(const Edge& e, int from, int to) override { Add<KsPinMoveEdge>(e, from, to); }
    void MoveNode(const TPoint<double>& p, int from, int to) override { Add<KsPinMoveNode>(p, from, to); }
    void SetTE(int e, int a, int b) override { Add<KsPinSetTE>(e, a, b); }
    void SetNE(int e, int a, int b) override { Add<KsPinSetNE>(e, a, b); }
    void SetP0(int e, int a, int b) override { Add<KsPinSetP0>(e, a, b); }
    void Invalidate(const Edge& e, int index) override { Add<KsPinEdgeInvalidate>(e, index); }

    void Undo(PIN& mesh) const {
        for (auto action = actions_.rbegin(); action != actions_.rend(); ++action) (*action)->Undo(mesh);
    }

private:
    template <class Action, class... Values>
    void Add(const Values&... values) {
        actions_.push_back(std::make_shared<Action>(values...));
    }

    std::vector<std::shared_ptr<KsPinAction>> actions_;
};

struct Nobody : KsPinActionVisitor {
    void MoveNodeUndo(int, int) override {}
    void MoveNodeRedo(int, int) override {}
    void MoveEdgeUndo(int, int) override {}
    void MoveEdgeRedo(int, int) override {}
    void SetTEUndo(int, int, int) override {}
    void SetTERedo(int, int, int) override {}
    void SetNEUndo(int, int, int) override {}
    void SetNERedo(int, int, int) override {}
    void SetP0Undo(int, int, int) override {}
    void SetP0Redo(int, int, int) override {}
    void EdgeInvalidateUndo(int) override {}
    void EdgeInvalidateRedo(int) override {}
    void MergeNodeUndo(int, int) override {}
    void MergeNodeRedo(int, int) override {}
    void PopEdgeUndo() override {}
    void PopEdgeRedo() override {}
};

/// Half of the triangles are dead, as decimation leaves them.
PIN HalfDead(PIN mesh) {
    std::mt19937 random(1);
    for (int e = 0; e < static_cast<int>(mesh.edges.size()); e += 3)
        if (random() % 2 == 0) DeleteTriangle(mesh, e);
    return mesh;
}

template <class Visitor>
void MeasureCompact(Report& report, const std::string& name, const PIN& mesh, double changes) {
    report.Measure(
        {name, changes, 0.0, "floor: nobody watches"}, [&] { return mesh; },
        [](PIN& input) {
            Visitor visitor;
            Compact(input, visitor);
            return visitor;
        });
}

void MeasureAll(int n) {
    const PIN start = HalfDead(Test::BumpySphere(n));
    PIN end = start;
    Counter counter;
    Compact(end, counter);
    const double changes = static_cast<double>(counter.count);

    Report report("one change reported by Compact (not triangle)");
    MeasureCompact<VisitorOf<PIN>>(report, "floor: nobody watches", start, changes);
    MeasureCompact<Counter>(report, "counted", start, changes);
    MeasureCompact<PINTransactionRecorder>(report, "recorded", start, changes);
    MeasureCompact<HeapObjects>(report, "recorded as heap objects", start, changes);
    {
        PIN mesh = start;
        PINTransactionRecorder recorder;
        const std::size_t before = LiveBytes();
        Compact(mesh, recorder);
        const PINTransactionRecorder exact = recorder;
        const std::size_t both = LiveBytes() - before;
        recorder = PINTransactionRecorder();
        const std::size_t fitted = LiveBytes() - before;
        char text[96];
        std::snprintf(text, sizeof text, "bytes per change: %.1f, with the spare room of growth %.1f",
                      static_cast<double>(fitted) / changes, static_cast<double>(both - fitted) / changes);
        report.Remark(text);
    }

    PINTransactionRecorder recorder;
    HeapObjects objects;
    {
        PIN mesh = start;
        Compact(mesh, recorder);
        mesh = start;
        Compact(mesh, objects);
    }
    Nobody listener;
    const auto fromEnd = [&] { return end; };
    report.Measure({"Undo", changes, 0.0, ""}, fromEnd, [&](PIN& mesh) { return recorder.Undo(mesh, listener), 0; });
    report.Measure({"Undo of heap objects", changes, 0.0, "Undo"}, fromEnd,
                   [&](PIN& mesh) { return objects.Undo(mesh), 0; });
    report.Measure(
        {"Redo", changes, 0.0, "Undo"},
        [&] {
            PIN mesh = end;
            recorder.Undo(mesh, listener);
            return mesh;
        },
        [&](PIN& mesh) { return recorder.Redo(mesh, listener), 0; });
    report.Measure({"UndoVisitor", changes, 0.0, "Undo"}, [&] { return recorder.UndoVisitor(listener), 0; });
}

}  // namespace
}  // namespace KM::Bench

int main(int argc, char** argv) {
    const int n = argc > 1 ? std::atoi(argv[1]) : 354;
    KM::Bench::MeasureAll(n > 0 ? n : 354);
}
