#include <string>

#include "Digest.h"
#include "Km.h"
#include "Support/HostilePoints.h"

namespace KM::Test {
namespace {

/// The results of one function.
class Results {
public:
    explicit Results(const char* name) : name_(name) {}
    ~Results() { Print(std::string("lines: ") + name_, digest_); }
    Results(const Results&) = delete;
    Results& operator=(const Results&) = delete;

    template <class... Result>
    void Add(const Result&... results) {
        (digest_.Add(results), ...);
    }

private:
    const char* name_;
    Digest digest_;
};

/// What a function is called with.
struct Input {
    P a, b, c, d;
    double number;
};

/// Calls `function(results, input)` on points that try guards, and prints what came of it.
template <class Function>
void PrintResults(const char* name, Function function) {
    Results results(name);
    for (unsigned seed = 0; seed < 20000; ++seed) {
        HostilePoints next(seed);
        // In braces, since the arguments of a call are evaluated in an order that the compiler chooses.
        function(results, Input{next(), next(), next(), next(), next.Number()});
    }
}

void PrintDistances() {
    PrintResults("DistPtLn", [](Results& r, const Input& i) {
        double flat = 0.0, t = 0.0;
        r.Add(DistPtLn(i.a, i.b, i.c, flat, false), DistPtLn(i.a, i.b, i.c, t, true), flat, t);
    });
    PrintResults("DistPtSegm", [](Results& r, const Input& i) {
        double flat = 0.0, t = 0.0;
        r.Add(DistPtSegm(i.a, i.b, i.c, flat, false, 0.0), DistPtSegm(i.a, i.b, i.c, t, true, 0.0), flat, t);
    });
    PrintResults("distances from planes and segments", [](Results& r, const Input& i) {
        r.Add(DistToPlane(i.a, i.b, i.c, i.d), DistPointToPlan(i.a, i.b, i.c, i.d),
              DistPointAboveSegment(i.a, i.b, i.c));
    });
    PrintResults("points", [](Results& r, const Input& i) {
        r.Add(NearestPtOnLn(i.a, i.b, i.c), FindNearestPointOnLine(i.a, SafeUnit(i.b), i.c),
              BisectorPoint(i.a, i.b, i.c), AreCollinears(i.a, i.b, i.c, 1e-6) ? 1.0 : 0.0);
        P a = i.a, b = i.b;
        for (int axis = 0; axis < 3; ++axis) ClipSegmentToPlane(&a, &b, i.number, axis, axis == 1);
        r.Add(a, b);
    });
}

void PrintCrossings() {
    using Function = bool(double&, double&, const P&, const P&, const P&, const P&);
    const struct {
        const char* name;
        Function* function;
    } functions[] = {{"IntLineLine", IntLineLine}, {"IntLineLine2", IntLineLine2}, {"IntSegmSegm", IntSegmSegm}};
    for (const auto& f : functions)
        PrintResults(f.name, [&f](Results& r, const Input& i) {
            double t = 0.0, u = 0.0;
            const bool isFound = f.function(t, u, i.a, i.b, i.c, i.d);
            r.Add(isFound ? 1.0 : 0.0, t, u);
        });
    PrintResults("MinSegmentBetweenTwoLines", [](Results& r, const Input& i) {
        P onAB, onCD;
        MinSegmentBetweenTwoLines(onAB, onCD, i.a, i.b, i.c, i.d);
        r.Add(onAB, onCD);
    });
}

void PrintSolidsAndCurves() {
    using Function = int (*)(double[], const Input&);
    const struct {
        const char* name;
        Function function;
    } functions[] = {
        {"IntSegmSphere", [](double t[], const Input& i) { return IntSegmSphere(t, i.a, i.b, i.c, i.number); }},
        {"IntSegmCylinder",
         [](double t[], const Input& i) { return IntSegmCylinder(t, i.a, i.b, i.c, i.d, i.number); }},
        {"IntSegmCylinderFinite",
         [](double t[], const Input& i) { return IntSegmCylinderFinite(t, i.a, i.b, i.c, i.d, i.number); }}};
    for (const auto& f : functions)
        PrintResults(f.name, [&f](Results& r, const Input& i) {
            double t[4] = {};
            const int count = f.function(t, i);
            r.Add(static_cast<double>(count), t[0], t[1]);
        });
    PrintResults("circles",
                 [](Results& r, const Input& i) { r.Add(Circle3P2D(i.a, i.b, i.c), Circle3P3D(i.a, i.b, i.c)); });
    PrintResults("curves", [](Results& r, const Input& i) {
        const Tuple2<double, P> simple = Simplify(i.a, i.b, i.c, i.d, i.number);
        r.Add(GetSplinePoint(i.a, i.b, i.c, i.d, i.number), simple.First, simple.Second);
    });
}

}  // namespace

void PrintLineDigests() {
    PrintDistances();
    PrintCrossings();
    PrintSolidsAndCurves();
}

}  // namespace KM::Test
