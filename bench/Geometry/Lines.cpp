#include <string>
#include <vector>

#include "Geometry/Calls.h"
#include "Geometry/GeometryBench.h"
#include "Km.h"
#include "Support/HostilePoints.h"

namespace KM::Bench {
namespace {

using Test::P;

struct Input {
    P a, b, c, d;
    double radius;
};

/// Points in a cube of 20.
std::vector<Input> RandomInputs() {
    std::vector<Input> inputs;
    for (unsigned i = 0; i < InputCount; ++i) {
        Test::HostilePoints next(4 * i);  // each fourth seed gives points without any trap
        inputs.push_back({next(), next(), next(), next(), next.Between(1.0, 8.0)});
    }
    return inputs;
}

/// Measures function after function against the floor that was measured last.
class Table {
public:
    Table(Report& report, const std::vector<Input>& inputs) : report_(report), inputs_(inputs) {}

    template <class Call>
    void Floor(const std::string& name, Call call) {
        floor_ = "floor: " + name;
        MeasureCalls(report_, floor_, inputs_, call);
    }

    /// `call(input)` gives a number.
    template <class Call>
    void Number(const std::string& name, Call call) {
        MeasureCalls(report_, name, inputs_, call, floor_);
    }

    /// `call(input)` gives a point.
    template <class Call>
    void Point(const std::string& name, Call call) {
        Number(name, [call](const Input& i) {
            const P p = call(i);
            return p.X + p.Y + p.Z;
        });
    }

    /// `call(input, t, u)` gives a number, and writes two parameters.
    template <class Call>
    void Parameters(const std::string& name, Call call) {
        Number(name, [call](const Input& i) {
            double t[4] = {};
            return call(i, t[0], t[1]) + t[0] + t[1];
        });
    }

private:
    Report& report_;
    const std::vector<Input>& inputs_;
    std::string floor_;
};

void MeasureDistances(Table table) {
    for (const bool in3D : {false, true}) {
        const std::string dimension = in3D ? ", 3D" : ", 2D";
        table.Number("DistPtLn" + dimension, [in3D](const Input& i) { return DistPtLn(i.a, i.b, i.c, in3D); });
        table.Parameters("DistPtSegm" + dimension, [in3D](const Input& i, double& t, double&) {
            return DistPtSegm(i.a, i.b, i.c, t, in3D, 0.0);
        });
    }
    table.Number("DistToPlane", [](const Input& i) { return DistToPlane(i.a, i.b, i.c, i.d); });
    table.Number("DistPointToPlan", [](const Input& i) { return DistPointToPlan(i.a, i.b, i.c, i.d); });
    table.Number("DistPointAboveSegment", [](const Input& i) { return DistPointAboveSegment(i.a, i.b, i.c); });
    table.Point("NearestPtOnLn", [](const Input& i) { return NearestPtOnLn(i.a, i.b, i.c); });
    table.Point("FindNearestPointOnLine", [](const Input& i) { return FindNearestPointOnLine(i.a, i.b, i.c); });
    table.Number("AreCollinears", [](const Input& i) { return AreCollinears(i.a, i.b, i.c, 1e-6); });
    table.Point("BisectorPoint", [](const Input& i) { return BisectorPoint(i.a, i.b, i.c); });
    table.Point("ClipSegmentToPlane", [](const Input& i) {
        P a = i.a, b = i.b;
        ClipSegmentToPlane(&a, &b, i.radius, 0, true);
        return b;
    });
}

double Side(const P& a, const P& b, const P& p) { return (b.X - a.X) * (p.Y - a.Y) - (b.Y - a.Y) * (p.X - a.X); }

/// On which sides of one line the ends of the other lie.
bool AreCrossing(const Input& i) {
    return Side(i.a, i.b, i.c) * Side(i.a, i.b, i.d) < 0.0 && Side(i.c, i.d, i.a) * Side(i.c, i.d, i.b) < 0.0;
}

void MeasureCrossings(Table table) {
    table.Floor("sides of four points", AreCrossing);
    table.Parameters("IntLineLine",
                     [](const Input& i, double& t, double& u) { return IntLineLine(t, u, i.a, i.b, i.c, i.d); });
    table.Parameters("IntLineLine2",
                     [](const Input& i, double& t, double& u) { return IntLineLine2(t, u, i.a, i.b, i.c, i.d); });
    table.Parameters("IntSegmSegm",
                     [](const Input& i, double& t, double& u) { return IntSegmSegm(t, u, i.a, i.b, i.c, i.d); });
    table.Parameters("IntSegmSegm, boxes apart", [](const Input& i, double& t, double& u) {
        const P away(20, 0, 0);
        return IntSegmSegm(t, u, i.a, i.b, i.c + away, i.d + away);
    });
    table.Point("MidOfMinSegmentBetweenTwoLines",
                [](const Input& i) { return MidOfMinSegmentBetweenTwoLines(i.a, i.b, i.c, i.d); });
}

void MeasureSolidsAndCurves(Table table) {
    const auto roots = [&table](const std::string& name, auto call) {
        table.Number(name, [call](const Input& i) {
            double t[4] = {};
            return call(t, i) + t[0] + t[1];
        });
    };
    roots("IntSegmSphere", [](double* t, const Input& i) { return IntSegmSphere(t, i.a, i.b, i.c, i.radius); });
    roots("IntSegmCylinder",
          [](double* t, const Input& i) { return IntSegmCylinder(t, i.a, i.b, i.c, i.d, i.radius); });
    roots("IntSegmCylinderFinite",
          [](double* t, const Input& i) { return IntSegmCylinderFinite(t, i.a, i.b, i.c, i.d, i.radius); });
    table.Point("Circle3P2D", [](const Input& i) { return Circle3P2D(i.a, i.b, i.c); });
    table.Point("Circle3P3D", [](const Input& i) { return Circle3P3D(i.a, i.b, i.c); });
    table.Point("GetSplinePoint", [](const Input& i) { return GetSplinePoint(i.a, i.b, i.c, i.d, 0.3); });
    table.Number("Simplify", [](const Input& i) { return Simplify(i.a, i.b, i.c, i.d, 0.1).First; });
}

}  // namespace

void MeasureLines() {
    Report report("points, lines and segments (read \"triangle\" as call)");
    const std::vector<Input> inputs = RandomInputs();
    Table table(report, inputs);
    table.Floor("length of a difference", [](const Input& i) { return Length(i.b - i.a); });
    MeasureDistances(table);
    MeasureSolidsAndCurves(table);
    MeasureCrossings(table);
}

}  // namespace KM::Bench
